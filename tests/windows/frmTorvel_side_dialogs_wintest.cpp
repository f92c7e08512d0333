#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <memory>

#include "dialog_driver.h"
#include "dialog_keys.h"
#include "drawing/pipeline.h"
#include "recording_interface.h"
#include "windows/forms/frmLegende.h"
#include "windows/forms/frmMassstab.h"
#include "windows/forms/frmVerwopt.h"
#include "windows/frmTorvel.h"

using namespace veldra;
using namespace veldra_test;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

constexpr const char* network =
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  0  0 1 \"2\"\r\n";

}  // namespace

/// Legend, boundaries and scale bars as the main window opens them.
class FrmTorvelSideDialogsTest : public QObject {
    Q_OBJECT

 private:
    [[nodiscard]] QString path(const char* name) const { return root_->filePath(text(name)); }
    [[nodiscard]] QAction& action(const char* name) const {
        return *window_->findChild<QAction*>(text(name));
    }
    [[nodiscard]] FrmMassstab* scale_bars() const {
        return window_->findChild<FrmMassstab*>(text("frmMaßstab"));
    }
    [[nodiscard]] WindowState& state() const { return session_->window; }

    void start() {
        window_.reset();
        session_ = std::make_unique<Session>();
        const SystemFolders folders{system_path(path("dokumente")), system_path(path("windows")),
                                    system_path(path("programm"))};
        window_ = std::make_unique<FrmTorvel>(*session_, folders, "", 10);
        window_->load();
        window_->findChild<FrmLogo*>(text("frmLogo"))->accept();
    }

    /// Leaves the program and starts it again with the same file.
    void leave_and_start_again() {
        window_->close();
        start();
        open_file();
    }

    QDialog& open_dialog(const char* entry, const char* name) {
        action(entry).trigger();
        return control<QDialog>(*window_, name);
    }

    /// Lines of the profile, without their ends.
    [[nodiscard]] QList<QByteArray> profile_lines() const {
        QFile file(path("dokumente/Kelvara/VELDRA.INI"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().replace("\r\n", "\n").split('\n')
                                              : QList<QByteArray>();
    }

    void open_file() {
        window_->choose_file = [this] { return path("ve_netz.dat"); };
        action("m_datei_beliebig").trigger();
        QCOMPARE(session_->datei_geladen, std::int16_t{1});
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
        start();
    }

    void cleanup() {
        window_.reset();
        session_.reset();
        root_.reset();
    }

    void nothing_is_offered_without_a_file() {
        QVERIFY(!action("m_ansicht_maßstab").isEnabled());
        QVERIFY(!action("maßstäbe").isEnabled());
        QVERIFY(!window_->findChild<QMenu*>(text("m_torvel_optionen"))->menuAction()->isEnabled());
        QVERIFY(scale_bars() == nullptr);
    }

    void entry_and_button_open_the_scale_bars() {
        open_file();
        for (const char* way : {"m_ansicht_maßstab", "maßstäbe"}) {
            action(way).trigger();
            QVERIFY(scale_bars() != nullptr);
            QVERIFY(scale_bars()->isVisible());
            QVERIFY(action("m_ansicht_maßstab").isChecked());
            QVERIFY(action("m_ansicht_maßstab").isEnabled());
            QVERIFY(!action("maßstäbe").isEnabled());
            QVERIFY(state().frm_massstab_shown);
            scale_bars()->close();
            QTRY_VERIFY(scale_bars() == nullptr);
            QVERIFY(!action("m_ansicht_maßstab").isChecked());
            QVERIFY(action("maßstäbe").isEnabled());
            QVERIFY(!state().frm_massstab_shown);
        }
    }

    void the_checked_entry_closes_the_scale_bars() {
        open_file();
        action("m_ansicht_maßstab").trigger();
        action("m_ansicht_maßstab").trigger();
        QVERIFY(scale_bars() == nullptr);
        QVERIFY(!action("m_ansicht_maßstab").isChecked());
        QVERIFY(action("maßstäbe").isEnabled());
    }

    void the_scale_bars_stand_in_the_middle_of_the_window() {
        open_file();
        window_->move(120, 90);
        action("m_ansicht_maßstab").trigger();
        const QPoint middle = window_->frameGeometry().center();
        const QRect frame = scale_bars()->frameGeometry();
        QVERIFY(std::abs(frame.center().x() - middle.x()) <= 2);
        QVERIFY(std::abs(frame.center().y() - middle.y()) <= 2);
        QVERIFY(!scale_bars()->isModal());
    }

    void the_scale_bars_follow_the_picture() {
        open_file();
        action("m_ansicht_maßstab").trigger();
        const auto& label = control<QLabel>(*scale_bars(), "lblEinheitGrundriss");
        session_->view.ansicht_masseinheit = 1e6;
        window_->synchronise();
        const QString far_away = label.text();
        QVERIFY(far_away.endsWith(text(" km")));
        session_->view.ansicht_masseinheit = 1e-4;
        window_->synchronise();
        QCOMPARE(label.text(), text("0.1 m"));
    }

    void a_file_with_nothing_to_draw_closes_the_scale_bars() {
        open_file();
        action("m_ansicht_maßstab").trigger();
        QVERIFY(scale_bars() != nullptr);
        session_->pu.clear();
        session_->lin.clear();
        MessageBoxes boxes;
        window_->redraw();
        window_->synchronise();
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QVERIFY(scale_bars() == nullptr);
        QVERIFY(!action("m_ansicht_maßstab").isChecked());
        QVERIFY(!action("m_ansicht_maßstab").isEnabled());
        QVERIFY(!action("maßstäbe").isEnabled());
    }

    void the_plot_mode_disables_entry_and_button() {
        open_file();
        veldra::test::RecordingInterface ui;
        end_picture(*session_, ui, PictureMode::preview);
        window_->synchronise();
        QVERIFY(!action("m_ansicht_maßstab").isEnabled());
        QVERIFY(!action("maßstäbe").isEnabled());
    }

    void the_legend_is_taken_over_and_the_picture_drawn_anew() {
        open_file();
        action("m_optionen_legende").trigger();
        auto* dialog = window_->findChild<FrmLegende*>(text("frmLegende"));
        QVERIFY(dialog != nullptr && dialog->isVisible() && dialog->isModal());
        type(control<QLineEdit>(*dialog, "txt_legende_1"), "Lagenetz");
        session_->window.caption = "alt";
        click(control<QPushButton>(*dialog, "cmd_ok"));
        QCOMPARE(session_->titel[0].getTitelText(), std::string("Lagenetz"));
        QVERIFY(session_->window.caption != "alt");  // drawing sets the caption
        QTRY_VERIFY(window_->findChild<FrmLegende*>(text("frmLegende")) == nullptr);
    }

    void legend_fonts_stand_in_the_profile_in_their_masks() {
        open_file();
        QDialog& legend = open_dialog("m_optionen_legende", "frmLegende");
        dynamic_cast<FrmLegende&>(legend).choose_font = [](QWidget*, const QString&,
                                                           const FontSpec&, bool) {
            return std::optional<FontSpec>({"Courier", 12, -1, 0, -1});
        };
        click(control<QPushButton>(legend, "cmd_schrift_2"));
        type_and_enter(control<QLineEdit>(legend, "txt_schrift_1"), "2,5");  // 4.2 mm are kept
        click(control<QPushButton>(legend, "cmd_ok"));
        leave_and_start_again();
        const QList<QByteArray> lines = profile_lines();
        for (const char* line :
             {"TitelSize_1=4.2", "TitelSize_2=3.0", "TitelFont_1=Arial", "TitelFont_2=Courier",
              "TitelBold_1=False", "TitelBold_2=True", "TitelItal_2=False", "TitelUndr_2=True"}) {
            QVERIFY2(lines.contains(QByteArray(line)), line);
        }
        QCOMPARE(session_->titel[1].getTitelFont(), std::string("Courier"));
        QDialog& again = open_dialog("m_optionen_legende", "frmLegende");
        QCOMPARE(control<QLineEdit>(again, "txt_schrift_1").text(), text("2.5"));
    }

    void legend_texts_and_place_stand_in_the_file() {
        open_file();
        QDialog& legend = open_dialog("m_optionen_legende", "frmLegende");
        type(control<QLineEdit>(legend, "txt_legende_1"), "Höhennetz");
        click_mark(control<QCheckBox>(legend, "chk_standard_3"));
        type(control<QLineEdit>(legend, "txt_legende_3"), "Dritte");
        click_mark(control<QRadioButton>(legend, "opt_posi_1"));
        click(control<QPushButton>(legend, "cmd_ok"));
        leave_and_start_again();
        QDialog& again = open_dialog("m_optionen_legende", "frmLegende");
        QCOMPARE(control<QLineEdit>(again, "txt_legende_1").text(), text("Höhennetz"));
        QCOMPARE(control<QLineEdit>(again, "txt_legende_3").text(), text("Dritte"));
        QVERIFY(!control<QCheckBox>(again, "chk_standard_3").isChecked());
        QVERIFY(control<QCheckBox>(again, "chk_standard_4").isChecked());
        QVERIFY(control<QRadioButton>(again, "opt_posi_1").isChecked());
    }

    void boundaries_and_transitions_stand_in_the_profile_in_their_masks() {
        open_file();
        QDialog& options = open_dialog("m_optionen_grenzen", "frmVerwopt");
        type(control<QLineEdit>(options, "txt_grendatei"), "/daten/grün.dat");
        QTest::keyClick(&control<QComboBox>(options, "cbo_gren_elli"), Qt::Key_Down);
        QTest::keyClick(&control<QComboBox>(options, "cbo_gren_abbi"), Qt::Key_Down);
        const MessageBoxes boxes;  // tells that the file is missing
        type_and_enter(control<QLineEdit>(options, "txt_gren_tr_1"), "1 2,5 -3 0.12345 70000");
        type_and_enter(control<QLineEdit>(options, "txt_numb_tr_3"), "0 0 0 0 1");
        click(control<QPushButton>(options, "cmd_ok"));
        leave_and_start_again();
        const QList<QByteArray> lines = profile_lines();
        for (const char* line : {"Datei=/daten/gr\xFCn.dat", "Ellipsoid=2", "Abbildung=2",
                                 "DHDN=1.0 2.5 -3.0 0.1235 70000.0", "DHDN=0.0 0.0 0.0 0.0 0.0",
                                 "Andere=0.0 0.0 0.0 0.0 0.0", "Andere=0.0 0.0 0.0 0.0 1.0"}) {
            QVERIFY2(lines.contains(QByteArray(line)), line);
        }
        QDialog& again = open_dialog("m_optionen_grenzen", "frmVerwopt");
        QCOMPARE(control<QLineEdit>(again, "txt_grendatei").text(), text("/daten/grün.dat"));
        QCOMPARE(control<QComboBox>(again, "cbo_gren_elli").currentIndex(), 1);
        QCOMPARE(control<QComboBox>(again, "cbo_gren_abbi").currentText(), text("UTM"));
        QCOMPARE(control<QLineEdit>(again, "txt_gren_tr_1").text(),
                 text("1.0 2.5 -3.0 0.1235 70000.0"));
        QCOMPARE(control<QLineEdit>(again, "txt_numb_tr_3").text(), text("0.0 0.0 0.0 0.0 1.0"));
    }

    void the_system_may_end_the_program_while_boundaries_are_reduced() {
        QFile boundaries(path("grenzen.dat"));
        QVERIFY(boundaries.open(QIODevice::WriteOnly));
        for (int i = 0; i < 200000; ++i) {
            boundaries.write("1 " + QByteArray::number(i) + "\r\n");
        }
        boundaries.close();
        open_file();
        QDialog& options = open_dialog("m_optionen_grenzen", "frmVerwopt");
        control<QLineEdit>(options, "txt_grendatei").setText(path("grenzen.dat"));
        bool ended = false;
        connect(&control<QProgressBar>(options, "pgb_gren_opti"), &QProgressBar::valueChanged, this,
                [&](int value) {
                    if (value > 0 && !ended) {
                        ended = true;
                        window_->end_by_system();
                    }
                });
        click(control<QPushButton>(options, "cmd_gren_opti"));
        QVERIFY(ended);
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(!QFile::exists(path("grenzen.dat_neu")));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(window_->findChild<QDialog*>(text("frmVerwopt")) == nullptr);
        QCOMPARE(session_->datei_geladen, std::int16_t{0});  // written and closed
    }

    void the_system_may_end_the_program_behind_a_message() {
        open_file();
        QDialog& options = open_dialog("m_optionen_grenzen", "frmVerwopt");
        auto& row = control<QLineEdit>(options, "txt_gren_tr_1");
        when_shown<QMessageBox>([this](QMessageBox&) { window_->end_by_system(); });
        type_and_enter(row, "keine Zahlen");
        QTRY_VERIFY(!window_->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(window_->findChild<QDialog*>(text("frmVerwopt")) == nullptr);
        QCOMPARE(session_->datei_geladen, std::int16_t{0});
    }

    void new_boundaries_draw_the_picture_anew() {
        open_file();
        for (const bool accepted : {true, false}) {
            action("m_optionen_grenzen").trigger();
            auto* dialog = window_->findChild<FrmVerwopt*>(text("frmVerwopt"));
            QVERIFY(dialog != nullptr && dialog->isVisible());
            session_->window.caption = "alt";
            click(control<QPushButton>(*dialog, accepted ? "cmd_ok" : "cmd_abbrechen"));
            QCOMPARE(session_->window.caption != "alt", accepted);
            QTRY_VERIFY(window_->findChild<FrmVerwopt*>(text("frmVerwopt")) == nullptr);
        }
    }

    void keys_reach_the_main_window_while_the_scale_bars_have_the_focus() {
        open_file();
        action("m_ansicht_maßstab").trigger();
        scale_bars()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(scale_bars()));
        const double before = session_->view.ansicht_masseinheit;
        QTest::keyClick(scale_bars(), Qt::Key_Minus);
        QCOMPARE(session_->view.ansicht_masseinheit, 2 * before);
        QTest::keyClick(scale_bars(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(std::abs(session_->view.ansicht_masseinheit - before) < 1e-9);
        QTest::keyClick(scale_bars(), Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(session_->plotmodus, std::int16_t{1});
    }
};

QTEST_MAIN(FrmTorvelSideDialogsTest)
#include "frmTorvel_side_dialogs_wintest.moc"
