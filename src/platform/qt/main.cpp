#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <exception>
#include <string>

#include "platform/qt/qt_user_interface.h"
#include "platform/qt/system_paths.h"
#include "shell/frmTorvel.h"
#include "shell/session.h"

namespace {

/// The application object. A failure in the handler of any event is shown once and ends the
/// program with exit code 1.
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
    veldra::FrmTorvel window(session, veldra::system_folders(), command_line());
    try {
        window.load();
    } catch (const std::exception& failure) {
        application.fail(failure.what());
    }
    return application.failed() ? 1 : QApplication::exec();
}

}  // namespace

int main(int argc, char* argv[]) {
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
