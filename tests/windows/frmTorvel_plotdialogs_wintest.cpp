#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "dialog_driver.h"
#include "dialog_keys.h"
#include "scripted_printer.h"
#include "windows/forms/frmDrucker.h"
#include "windows/forms/frmPlotten.h"
#include "windows/frmTorvel.h"

using namespace veldra;
using namespace veldra_test;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

constexpr const char* network =
    "NETZTEIL A\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n"
    "NETZTEIL B\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"3\"\r\n";

class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

}  // namespace

/// The dialogs of the plot as the menu of the main window opens them.
class FrmTorvelPlotDialogsTest : public QObject {
    Q_OBJECT

 private:
    void trigger(const char* name) const { window_->findChild<QAction*>(text(name))->trigger(); }
    template <typename Dialog>
    [[nodiscard]] Dialog* dialog() const {
        return window_->findChild<Dialog*>();
    }
    void open_plot_settings() {
        if (session_->plotmodus == 0) {
            trigger("m_plotten_ein");
        }
        trigger("m_plotten_einstellungen");
        QVERIFY(dialog<FrmPlotten>() != nullptr);
        QVERIFY(dialog<FrmPlotten>()->isVisible());
    }

    std::unique_ptr<QTemporaryDir> root_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<test::ScriptedPrinter> printer_;
    NoDialog print_dialog_;
    std::unique_ptr<FrmTorvel> window_;

 private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        const QString path = root_->filePath(text("ve_netz.dat"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(network);
        file.close();
        test::ScriptedDevice laser;
        laser.name = "Laser & Co";
        printer_ = std::make_unique<test::ScriptedPrinter>(
            std::vector<test::ScriptedDevice>{test::ScriptedDevice(), laser});
        session_ = std::make_unique<Session>();
        const std::string folder = system_path(root_->path());
        window_ =
            std::make_unique<FrmTorvel>(*session_, SystemFolders{folder, folder, folder}, "", 10);
        window_->use_printer(*printer_, print_dialog_);
        window_->load();
        window_->findChild<FrmLogo*>(text("frmLogo"))->accept();
        window_->choose_file = [path] { return path; };
        // The window's first size has come and is followed before anything is compared.
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QTest::qWait(150);
        trigger("m_datei_beliebig");
        QCOMPARE(session_->datei_geladen, std::int16_t{1});
    }

    void cleanup() {
        window_.reset();
        session_.reset();
        printer_.reset();
        root_.reset();
    }

    void plot_settings_wait_for_the_plot_mode() {
        QVERIFY(!window_->findChild<QAction*>(text("m_plotten_einstellungen"))->isEnabled());
        trigger("m_plotten_einstellungen");
        QVERIFY(dialog<FrmPlotten>() == nullptr);
    }

    void plot_settings_take_the_undo_away() {
        session_->window.undo = {4, 0, {}, "Rückgängig: Vergrößern"};
        open_plot_settings();
        QVERIFY(!window_->findChild<QAction*>(text("m_ansicht_undo"))->isEnabled());
        QCOMPARE(window_->findChild<QAction*>(text("m_ansicht_undo"))->text(), text("Rückgängig:"));
    }

    void ok_of_the_plot_settings_draws_and_marks() {
        auto& list = control<QListWidget>(*window_, "lst_netzteile");
        open_plot_settings();
        const qint64 drawn = window_->picture().shown().cacheKey();
        click_mark(control<QRadioButton>(*dialog<FrmPlotten>(), "opt_netzteil_1"));
        click(control<QPushButton>(*dialog<FrmPlotten>(), "cmd_ok"));
        QVERIFY(window_->picture().shown().cacheKey() != drawn);
        QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{0});
        QCOMPARE(list.item(0)->checkState(), Qt::Unchecked);
        QVERIFY(control<QPushButton>(*window_, "cmd_plotten").isEnabled());
        QCOMPARE(session_->window.mouse_pointer, 0);
        QTRY_VERIFY(dialog<FrmPlotten>() == nullptr);
        // A mark also selects the row of the part that is shown.
        list.setCurrentRow(1);
        open_plot_settings();
        click_mark(control<QRadioButton>(*dialog<FrmPlotten>(), "opt_netzteil_0"));
        click(control<QPushButton>(*dialog<FrmPlotten>(), "cmd_ok"));
        QCOMPARE(list.item(0)->checkState(), Qt::Checked);
        QCOMPARE(list.currentRow(), 0);
        QVERIFY(control<QPushButton>(*window_, "cmd_nicht_plotten").isEnabled());
        QTRY_VERIFY(dialog<FrmPlotten>() == nullptr);
    }

    void plot_settings_mark_a_part_also_while_the_list_is_closed() {
        trigger("m_ansicht_netzteile");
        open_plot_settings();
        click_mark(control<QRadioButton>(*dialog<FrmPlotten>(), "opt_netzteil_1"));
        click(control<QPushButton>(*dialog<FrmPlotten>(), "cmd_ok"));
        QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{0});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        trigger("m_ansicht_netzteile");
        QCOMPARE(control<QListWidget>(*window_, "lst_netzteile").item(0)->checkState(),
                 Qt::Unchecked);
    }

    void abbrechen_of_the_plot_settings_leaves_the_picture() {
        open_plot_settings();
        const qint64 drawn = window_->picture().shown().cacheKey();
        const double scale = session_->part.plot.plot_massstab;
        type_and_enter(control<QComboBox>(*dialog<FrmPlotten>(), "cbo_grundriss_mass"), "5000");
        QCOMPARE(session_->part.plot.plot_massstab, 1.0 / 5000);
        click(control<QPushButton>(*dialog<FrmPlotten>(), "cmd_abbrechen"));
        QCOMPARE(session_->part.plot.plot_massstab, scale);
        QCOMPARE(window_->picture().shown().cacheKey(), drawn);
    }

    void settings_of_ok_stand_in_the_file() {
        open_plot_settings();
        type_and_enter(control<QComboBox>(*dialog<FrmPlotten>(), "cbo_grundriss_mass"), "5000");
        click_mark(control<QRadioButton>(*dialog<FrmPlotten>(), "opt_rand_3"));
        click(control<QPushButton>(*dialog<FrmPlotten>(), "cmd_ok"));
        trigger("m_datei_beliebig");  // writes the file and reads it again
        QCOMPARE(session_->part.plot.plot_massstab, 1.0 / 5000);
        QCOMPARE(session_->part.plot.plot_heftrand, std::int16_t{3});
    }

    void extreme_entries_end_nothing() {
        for (const char* denominator : {"0,5", "1", "1e20", "1e300"}) {
            open_plot_settings();
            FrmPlotten& settings = *dialog<FrmPlotten>();
            if (control<QCheckBox>(settings, "chk_format_blatt").isChecked()) {
                click_mark(control<QCheckBox>(settings, "chk_format_blatt"));
            }
            type(control<QLineEdit>(settings, "txt_format_rechts"), "99999");
            type(control<QLineEdit>(settings, "txt_format_hoch"), "99999");
            type_and_enter(control<QComboBox>(settings, "cbo_grundriss_mass"), denominator);
            click(control<QPushButton>(settings, "cmd_ok"));
            QTRY_VERIFY(dialog<FrmPlotten>() == nullptr);
            QCOMPARE(session_->part.plot.plot_blatt_rechts, std::int16_t{32767});
            QCOMPARE(session_->plotmodus, std::int16_t{1});
        }
    }

    void chosen_printer_stands_in_the_menu() {
        QAction* const entry = window_->findChild<QAction*>(text("m_optionen_drucker"));
        QCOMPARE(entry->text(), text("&Anwendungsdrucker: Plotter"));
        trigger("m_optionen_drucker");
        QVERIFY(dialog<FrmDrucker>() != nullptr);
        QVERIFY(dialog<FrmDrucker>()->isVisible());
        QComboBox& printers = control<QComboBox>(*dialog<FrmDrucker>(), "cbo_drucker");
        printers.setFocus();
        QTest::keyClick(&printers, Qt::Key_Down);
        QCOMPARE(entry->text(), text("&Anwendungsdrucker: Plotter"));
        click(control<QPushButton>(*dialog<FrmDrucker>(), "cmd_ok"));
        QCOMPARE(entry->text(), text("&Anwendungsdrucker: Laser && Co"));
        QCOMPARE(printer_->DeviceName(), std::string("Laser & Co"));
    }

    void new_paper_shows_in_the_plot_mode_only() {
        for (const std::int16_t plotmodus : {std::int16_t{0}, std::int16_t{1}}) {
            if (plotmodus == 1) {
                trigger("m_plotten_ein");
            }
            QCOMPARE(session_->plotmodus, plotmodus);
            const qint64 drawn = window_->picture().shown().cacheKey();
            trigger("m_optionen_drucker");
            click(control<QPushButton>(*dialog<FrmDrucker>(), "cmd_ok"));
            QTRY_VERIFY(dialog<FrmDrucker>() == nullptr);
            QCOMPARE(window_->picture().shown().cacheKey() != drawn, plotmodus == 1);
        }
    }

    void printer_dialog_is_centred_on_the_window() {
        // With room on both sides: a dialog that would leave the screen is moved back onto it.
        const QRect room = window_->screen()->availableGeometry();
        window_->move(room.center().x() - window_->frameGeometry().width() / 2, 150);
        trigger("m_optionen_drucker");
        const QPoint middle = window_->frameGeometry().center();
        const QRect frame = dialog<FrmDrucker>()->frameGeometry();
        QVERIFY(std::abs(frame.center().x() - middle.x()) <= 2);
        QVERIFY(frame.top() >= 0);
    }

    void window_may_go_while_a_dialog_is_open() {
        open_plot_settings();
        window_.reset();
        QCOMPARE(session_->part.plot.plot_ausrichtung, session_->part.plot_merk.plot_ausrichtung);
    }
};

QTEST_MAIN(FrmTorvelPlotDialogsTest)
#include "frmTorvel_plotdialogs_wintest.moc"
