// Draws the pictures of the handbook: handbuchbilder BEISPIELE ORDNER
// They are as large as the scale factor of the screen makes them (QT_SCALE_FACTOR).
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "pdf/pdf_printer.h"
#include "picture_file.h"
#include "windows/forms/frmStrichst.h"
#include "windows/frmTorvel.h"
#include "windows/qt/qt_user_interface.h"
#include "windows/qt/sample_picture.h"

using namespace veldra;

namespace {

constexpr QSize window_size(760, 580);
constexpr int widest_picture = 760;  // logical pixels that a page of the handbook has room for

/// Nothing is printed here.
class NoPrintDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

/// A message that nobody answers would hold the tool up for ever.
void give_up_on_messages(QTimer& look) {
    QObject::connect(&look, &QTimer::timeout, &look, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            std::fprintf(stderr, "%s\n", qPrintable(box->text()));
            std::exit(1);
        }
    });
    look.start(100);
}

/// The program with one graphic file, and what is made of its windows.
class Photographer {
 public:
    Photographer(const QString& samples, const QString& target)
        : target_(target),
          printer_([] { return std::nullopt; }),
          window_(session_, make_folders(samples), "", 0) {
        window_.use_printer(printer_, print_dialog_);
        window_.resize(window_size);
        window_.load();
        dialog("frmLogo").accept();
        window_.choose_file = [this] { return file_; };
        trigger("m_datei_beliebig");
    }

    void trigger(const char* name) {
        auto* action = window_.findChild<QAction*>(QString::fromUtf8(name));
        if (action == nullptr || !action->isEnabled()) {
            throw std::runtime_error(std::string(name) + " is not to be chosen");
        }
        action->trigger();
        settle();
    }

    void take_window(const char* file) { take(window_, file); }

    /// A dialog that is open already.
    void take_open(const char* name, const char* file) { take(dialog(name), file); }

    /// A dialog that a menu entry opens; it is left as by Abbrechen.
    void take_dialog(const char* action, const char* name, const char* file) {
        trigger(action);
        take_open(name, file);
        dialog(name).reject();
        settle();
    }

    /// The tabs of the display options, one picture each.
    void take_display_options() {
        constexpr const char* files[] = {"darstellungen-punkte-bildschirm",
                                         "darstellungen-punkte-plott",
                                         "darstellungen-beobachtungen-bildschirm",
                                         "darstellungen-beobachtungen-plott",
                                         "darstellungen-vektoren-lage",
                                         "darstellungen-vektoren-hoehe",
                                         "darstellungen-test",
                                         "darstellungen-grenzen"};
        trigger("m_optionen_darstellungen");
        QDialog& options = dialog("frmDarstellungen");
        auto* tabs = options.findChild<QTabWidget*>(QStringLiteral("tab_darstellungen"));
        if (tabs == nullptr || tabs->count() != static_cast<int>(std::size(files))) {
            throw std::runtime_error("the display options have other tabs");
        }
        for (int tab = 0; const char* file : files) {
            tabs->setCurrentIndex(tab++);
            take(options, file);
        }
        options.reject();
        settle();
    }

    /// The list of parts, with one marked for plotting.
    void take_network_parts() {
        QDialog& parts = dialog("frmNetzteile");
        parts.findChild<QPushButton*>(QStringLiteral("cmd_plotten"))->click();
        take(parts, "netzteile");
    }

    void take_line_width() {
        LineWidthChoice choice{2, 1, picture_background_colour()};
        FrmStrichst picker(&window_, choice, QStringLiteral("Strichstärke"));
        picker.show();
        take(picker, "strich");
    }

 private:
    /// Folders of its own, with the sample, its boundaries and its settings.
    SystemFolders make_folders(const QString& samples) {
        for (const char* folder : {"dokumente/Kelvara", "windows", "programm"}) {
            QDir(root_.path()).mkpath(QString::fromLatin1(folder));
        }
        file_ = root_.filePath(QStringLiteral("ve_dhdn.dat"));
        copy(samples + QStringLiteral("/ve_dhdn.dat"), file_);
        copy(samples + QStringLiteral("/verwgrenz_dhdn.dat"),
             root_.filePath(QStringLiteral("verwgrenz_dhdn.dat")));
        copy(samples + QStringLiteral("/veldra_dhdn.ini"),
             root_.filePath(QStringLiteral("dokumente/Kelvara/VELDRA.INI")));
        return {.documents = system_path(root_.filePath(QStringLiteral("dokumente"))),
                .windows = system_path(root_.filePath(QStringLiteral("windows"))),
                .program = system_path(root_.filePath(QStringLiteral("programm")))};
    }

    static void copy(const QString& from, const QString& to) {
        if (!QFile::copy(from, to)) {
            throw std::runtime_error(from.toStdString() + " cannot be copied");
        }
        QFile(to).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }

    /// The open dialog of a name.
    static QDialog& dialog(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* found = qobject_cast<QDialog*>(window);
            if (found != nullptr && found->isVisible() &&
                found->objectName() == QString::fromUtf8(name)) {
                return *found;
            }
        }
        throw std::runtime_error(std::string(name) + " is not open");
    }

    /// Sizes and layouts come a moment after their window.
    static void settle() {
        constexpr int milliseconds = 150;
        QElapsedTimer since;
        since.start();
        while (since.elapsed() < milliseconds) {
            QApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// A dialog that the screen was too small for shows the whole of its scrolled contents.
    static void make_room(QWidget& shown) {
        for (const auto* area : shown.findChildren<QScrollArea*>()) {
            const QSize missing = area->widget()->sizeHint() - area->viewport()->size();
            shown.resize(shown.size() + missing.expandedTo(QSize(0, 0)));
        }
        settle();
    }

    void take(QWidget& shown, const char* file) {
        settle();
        make_room(shown);
        QImage picture = shown.grab().toImage();
        const int widest = qRound(widest_picture * picture.devicePixelRatio());
        if (picture.width() > widest) {
            picture = picture.scaledToWidth(widest, Qt::SmoothTransformation);
        }
        write_picture(picture,
                      target_.filePath(QString::fromLatin1(file) + QStringLiteral(".png")));
    }

    QDir target_;
    QTemporaryDir root_;
    QString file_;
    Session session_;
    PdfPrinter printer_;
    NoPrintDialog print_dialog_;
    FrmTorvel window_;
};

void take_all(const QString& samples, const QString& target) {
    Photographer photographer(samples, target);
    photographer.take_window("hauptfenster");
    photographer.take_network_parts();
    photographer.trigger("m_ansicht_netzteile");
    photographer.trigger("m_ansicht_maßstab");
    photographer.take_open("frmMaßstab", "massstab");
    photographer.take_dialog("m_torvel_objekte", "frmObjekte", "objekte");
    photographer.take_display_options();
    photographer.take_line_width();
    photographer.take_dialog("m_optionen_legende", "frmLegende", "legende");
    photographer.take_dialog("m_optionen_grenzen", "frmVerwopt", "grenzen");
    photographer.take_dialog("m_optionen_drucker", "frmDrucker", "drucker");
    photographer.take_dialog("m_hilfe_proginfo", "frmLogo", "programminfo");
    photographer.take_dialog("m_hilfe_handbuch", "frmHandbuch", "handbuch");
    photographer.trigger("m_plotten_ein");
    photographer.trigger("m_ansicht_halb");  // so that whole sheets are to be seen
    photographer.take_window("plotmodus");
    photographer.take_dialog("m_plotten_einstellungen", "frmPlotten", "plotten");
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VELDRA"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setCursorFlashTime(0);  // two runs give the same pictures
    QTranslator german;
    if (german.load(QStringLiteral("qtbase_de"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&german);
    }
    const QStringList words = QApplication::arguments();
    if (words.size() != 3) {
        std::fputs("usage: handbuchbilder BEISPIELE ORDNER\n", stderr);
        return 2;
    }
    QTimer look;
    give_up_on_messages(look);
    try {
        take_all(words[1], words[2]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
