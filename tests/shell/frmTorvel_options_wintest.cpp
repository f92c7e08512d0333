#include <QAction>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "dialog_driver.h"
#include "settings/frmDarstellungen.h"
#include "shell/frmTorvel.h"

using namespace veldra;
using namespace veldra_test;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

/// Two control points and an observation whose test value EV is 20.
constexpr const char* network =
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n"
    "RICHTUNG  3500000.000  5600000.000  3500100.000  5600000.000    20.0\r\n";

}  // namespace

/// The display options as the main window's menu opens them.
class FrmTorvelOptionsTest : public QObject {
    Q_OBJECT

 private:
    [[nodiscard]] QString path(const char* name) const { return root_->filePath(text(name)); }
    void open_dialog() const {
        window_->findChild<QAction*>(text("m_optionen_darstellungen"))->trigger();
    }
    [[nodiscard]] FrmDarstellungen* dialog() const {
        return window_->findChild<FrmDarstellungen*>(text("frmDarstellungen"));
    }
    [[nodiscard]] bool picture_has(QRgb colour) const {
        const QImage& image = window_->picture().shown();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    }

    std::unique_ptr<QTemporaryDir> root_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<FrmTorvel> window_;

 private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        for (const char* folder : {"dokumente", "windows", "programm"}) {
            QVERIFY(QDir().mkpath(path(folder)));
        }
        QFile file(path("ve_netz.dat"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(network);
        file.close();
        session_ = std::make_unique<Session>();
        const SystemFolders folders{system_path(path("dokumente")), system_path(path("windows")),
                                    system_path(path("programm"))};
        window_ = std::make_unique<FrmTorvel>(*session_, folders, "", 10);
        window_->load();
        window_->findChild<FrmLogo*>(text("frmLogo"))->accept();
        window_->choose_file = [this] { return path("ve_netz.dat"); };
        window_->findChild<QAction*>(text("m_datei_beliebig"))->trigger();
        QCOMPARE(session_->datei_geladen, std::int16_t{1});
    }

    void cleanup() {
        window_.reset();
        session_.reset();
        root_.reset();
    }

    void the_menu_opens_the_dialog_over_the_window() {
        window_->move(300, 200);
        open_dialog();
        QVERIFY(dialog() != nullptr);
        QVERIFY(dialog()->isVisible());
        QVERIFY(dialog()->isModal());
        const QPoint middle = window_->frameGeometry().center();
        const QRect frame = dialog()->frameGeometry();
        QVERIFY(std::abs(frame.center().x() - middle.x()) <= 2);
        QVERIFY(frame.top() >= 0);
    }

    void ok_draws_the_picture_anew_without_reading_the_file() {
        session_->obj.obj_test_beob = table_true;
        session_->obj.obj_test = 1;
        const QRgb above = qRgb(0, 200, 77);
        const QRgb below = qRgb(200, 0, 77);
        session_->settings.stevrgb[1] = rgb(0, 200, 77);
        session_->settings.stevrgb[2] = rgb(200, 0, 77);
        window_->redraw();
        QVERIFY(picture_has(above));
        QVERIFY(!picture_has(below));
        const std::uint64_t tables = session_->tables_revision;
        // Reading would fail: there is nothing left to read.
        QVERIFY(QFile::remove(path("ve_netz.dat")));
        open_dialog();
        dialog()->page(DisplayTab::tests).refresh();
        type_and_enter(control<QLineEdit>(*dialog(), "txt_ev_wert"), "30");
        click(control<QPushButton>(*dialog(), "cmd_ok"));
        QVERIFY(picture_has(below));
        QVERIFY(!picture_has(above));
        QCOMPARE(session_->tables_revision, tables);
        QCOMPARE(session_->window.mouse_pointer, 0);
    }

    void colours_show_in_the_picture() {
        session_->obj.obj_test_beob = table_true;
        session_->obj.obj_test = 1;
        window_->redraw();
        open_dialog();
        dialog()->choosers().colour = [](QWidget*, const QString&, std::int32_t) {
            return std::optional<std::int32_t>(rgb(1, 99, 199));
        };
        click(control<QWidget>(*dialog(), "pic_testwert_1"));
        control<QPushButton>(*dialog(), "cmd_test_farbe").click();
        QVERIFY(!picture_has(qRgb(1, 99, 199)));
        click(control<QPushButton>(*dialog(), "cmd_ok"));
        QVERIFY(picture_has(qRgb(1, 99, 199)));
    }

    void abbrechen_draws_the_picture_as_it_was() {
        open_dialog();
        control<QPushButton>(*dialog(), "cmd_standard_test").click();
        type_and_enter(control<QLineEdit>(*dialog(), "txt_punktradius_screen"), "300");
        window_->redraw();
        const QImage changed = window_->picture().shown();
        click(control<QPushButton>(*dialog(), "cmd_abbrechen"));
        QVERIFY(window_->picture().shown() != changed);
        QCOMPARE(session_->settings.punsigscr[0], 60.0F);
        QTRY_VERIFY(dialog() == nullptr);
        open_dialog();
        QVERIFY(dialog()->isVisible());
    }

    void ok_moves_the_extents_with_the_sizes_in_the_plot() {
        open_dialog();
        const double before = session_->extents.gesamt_hw_max;
        type_and_enter(control<QLineEdit>(*dialog(), "txt_punktradius_plott"), "50");
        click(control<QPushButton>(*dialog(), "cmd_ok"));
        QVERIFY(session_->extents.gesamt_hw_max > before);
    }
};

QTEST_MAIN(FrmTorvelOptionsTest)
#include "frmTorvel_options_wintest.moc"
