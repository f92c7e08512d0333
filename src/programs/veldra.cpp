#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "model/session.h"
#include "os/process.h"
#include "pdf/pdf_printer.h"
#include "pdf/single_faces.h"
#include "windows/frmTorvel.h"
#include "windows/qt/display_loss.h"
#include "windows/qt/qt_print_dialog.h"
#include "windows/qt/qt_printers.h"
#include "windows/qt/qt_text_measurer.h"
#include "windows/qt/qt_user_interface.h"
#include "windows/qt/session_end.h"
#include "windows/qt/system_paths.h"
#include "windows/qt/termination_notifier.h"

namespace {

/// The application object. The failure of a command is shown once and ends the program with exit
/// code 1; so does one that gets out of the handler of an event.
class VeldraApplication final : public QApplication {
 public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& failure) {
            fail(failure.what());
        }
        return true;
    }

    /// Shows the reason, for the first failure only, and leaves the event loop.
    void fail(const std::string& reason) {
        if (!failed_) {
            failed_ = true;
            veldra::show_fatal_error(activeWindow(), reason);
            exit(1);
        }
    }

    [[nodiscard]] bool failed() const { return failed_; }

 private:
    bool failed_ = false;
};

std::string command_line() {
    QStringList words = QCoreApplication::arguments();
    words.removeFirst();
    return veldra::system_path(words.join(QLatin1Char(' ')));
}

int run(VeldraApplication& application) {
    veldra::Session session;
    veldra::QtTextMeasurer measurer;
    const auto folder = std::make_shared<QString>();  // of all file dialogs
    const auto output_file = [&session, folder](QWidget* parent) {
        return veldra::ask_for_output_file(
            parent, veldra::proposed_name(session.graphikdatei, QStringLiteral("pdf")), *folder);
    };
    const auto document_file = [output_file]() -> std::optional<std::string> {
        const QString file = output_file(QApplication::activeWindow());
        return file.isEmpty() ? std::nullopt : std::optional(veldra::system_path(file));
    };
    veldra::QtPrinters printers(std::make_unique<veldra::PdfPrinter>(document_file), measurer);
    veldra::FrmTorvel window(session, veldra::system_folders(), command_line());
    window.last_folder = folder;
    veldra::QtPrintDialog print_dialog(printers, &window);
    print_dialog.choose_file = output_file;
    window.use_printer(printers, print_dialog);
    window.on_failure = [&application](const std::exception& failure) {
        application.fail(failure.what());
    };
    const veldra::TerminationNotifier termination([&window] { window.end_by_system(); });
    // A logout that is called off finds the program ended, with nothing lost.
    veldra::follow_session_end(application, window, [&window] { return window.end_by_system(); });
    const veldra::DisplayLossNotifier loss([&window] { window.end_without_display(); });
    window.load();
    if (application.failed()) {
        return 1;
    }
    const int code = QApplication::exec();
    return code != 0 ? code : window.exit_code();
}

}  // namespace

int main(int argc, char* argv[]) {
    veldra::prepare_process();
    veldra::keep_one_file_of_each_face();
    VeldraApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VELDRA"));
    QApplication::setApplicationVersion(QStringLiteral(VELDRA_VERSION));
    // Texts of the toolkit's own dialogs, where the system has them.
    QTranslator german;
    if (german.load(QStringLiteral("qtbase_de"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&german);
    }
    return run(application);
}
