// What is set in the dialogs is there again after leaving and starting anew.
#include <QCheckBox>
#include <QRadioButton>

#include "dialog_keys.h"
#include "restart_fixture.h"
#include "scripted_printer.h"
#include "windows/forms/frmDrucker.h"
#include "windows/forms/frmLegende.h"
#include "windows/forms/frmMassstab.h"
#include "windows/forms/frmObjekte.h"
#include "windows/forms/frmPlotten.h"
#include "windows/forms/frmVerwopt.h"

using namespace veldra;
using namespace veldra::test;
using namespace veldra_test;

namespace {

class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

/// Letters that the tests' keyboard lacks.
void paste(QLineEdit& box, const char* utf8) {
    type(box, "");
    box.insert(text(utf8));
}

}  // namespace

class RestartTest : public RestartFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void a_run_without_a_change_writes_the_defaults() {
        start_with_network();
        leave();
        expect_profile(settings_with({}));
    }

    void legend_survives() {
        start_with_network(windows_1252(sheet_network));
        auto& dialog = open_dialog<FrmLegende>("m_optionen_legende");
        FontSpec answer;
        dialog.choose_font = [&answer](QWidget*, const QString&, const FontSpec&, bool) {
            return std::optional<FontSpec>(answer);
        };
        paste(control<QLineEdit>(dialog, "txt_legende_1"), "Grundnetz Süd");
        for (const char* check : {"chk_standard_2", "chk_standard_3"}) {
            click_mark(control<QCheckBox>(dialog, check));
        }
        paste(control<QLineEdit>(dialog, "txt_legende_2"), "Höhe über NN");
        type(control<QLineEdit>(dialog, "txt_legende_3"), "Stand 2026");
        const char* const heights[] = {"5", "2,5", "10", "1.25"};
        for (int i = 1; i <= 4; ++i) {
            type_and_enter(control<QLineEdit>(dialog, numbered("txt_schrift_", i).constData()),
                           heights[i - 1]);
        }
        answer = {"Courier", 12, -1, 0, -1};
        press(dialog, "cmd_schrift_1");
        answer = {"B\xFCro Sans", 12, 0, -1, 0};
        press(dialog, "cmd_schrift_4");
        click_mark(control<QRadioButton>(dialog, "opt_posi_1"));
        press(dialog, "cmd_ok");
        leave();
        // Without a printer a height counts 1.68 times: 8.4, 4.2, 16.8, 2.1.
        expect_profile(settings_with(
            {{default_legende,
              windows_1252("[LEGENDE]\r\n"
                           "TitelSize_1=8.4\r\nTitelFont_1=Courier\r\nTitelBold_1=True\r\n"
                           "TitelItal_1=False\r\nTitelUndr_1=True\r\n"
                           "TitelSize_2=4.2\r\nTitelFont_2=Arial\r\nTitelBold_2=False\r\n"
                           "TitelItal_2=False\r\nTitelUndr_2=False\r\n"
                           "TitelSize_3=16.8\r\nTitelFont_3=Arial\r\nTitelBold_3=False\r\n"
                           "TitelItal_3=False\r\nTitelUndr_3=False\r\n"
                           "TitelSize_4=2.1\r\nTitelFont_4=Büro Sans\r\nTitelBold_4=False\r\n"
                           "TitelItal_4=True\r\nTitelUndr_4=False\r\n")}}));
        QCOMPARE(record("VerfahrenLegende"), windows_1252("VerfahrenLegende Grundnetz Süd"));
        QCOMPARE(record("Titel2"), windows_1252("Titel2 Höhe über NN"));
        QCOMPARE(record("Titel3"), QByteArray("Titel3 Stand 2026"));
        QCOMPARE(record("Titel4"), QByteArray("none"));  // the standard text
        // Lying 2, margin above 4 * 1, legend upper left 16 * 1.
        QCOMPARE(record("MaßstabGrundriss"),
                 windows_1252("MaßstabGrundriss 1000    3499990.000    5599990.000    22"));
        start_again();
        auto& again = open_dialog<FrmLegende>("m_optionen_legende");
        FontSpec offered;
        again.choose_font = [&offered](QWidget*, const QString&, const FontSpec& font, bool) {
            offered = font;
            return std::optional<FontSpec>();
        };
        QCOMPARE(box_text(again, "txt_legende_1"), text("Grundnetz Süd"));
        QCOMPARE(box_text(again, "txt_legende_2"), text("Höhe über NN"));
        QCOMPARE(box_text(again, "txt_legende_3"), text("Stand 2026"));
        QVERIFY(!is_checked(again, "chk_standard_2"));
        QVERIFY(!is_checked(again, "chk_standard_3"));
        QVERIFY(is_checked(again, "chk_standard_4"));
        const char* const shown[] = {"5.0", "2.5", "10.0", "1.3"};  // 2.1 / 1.68 = 1.25
        for (int i = 1; i <= 4; ++i) {
            QCOMPARE(box_text(again, numbered("txt_schrift_", i).constData()), text(shown[i - 1]));
        }
        QVERIFY(is_checked(again, "opt_posi_1"));
        press(again, "cmd_schrift_1");
        QCOMPARE(offered.face, std::string("Courier"));
        QVERIFY(offered.bold == -1 && offered.italic == 0 && offered.underline == -1);
        press(again, "cmd_schrift_4");
        QCOMPARE(offered.face, std::string("B\xFCro Sans"));
        QVERIFY(offered.bold == 0 && offered.italic == -1 && offered.underline == 0);
    }

    void boundaries_survive() {
        start_with_network();
        write("grün.dat", "");
        auto& dialog = open_dialog<FrmVerwopt>("m_optionen_grenzen");
        paste(control<QLineEdit>(dialog, "txt_grendatei"), path("grün.dat").toUtf8().constData());
        for (const auto& [combo, steps] :
             {std::pair("cbo_gren_elli", 4), std::pair("cbo_gren_abbi", 1)}) {
            auto& list = control<QComboBox>(dialog, combo);
            list.setFocus();
            for (int i = 0; i < steps; ++i) {
                QTest::keyClick(&list, Qt::Key_Down);
            }
        }
        const std::pair<const char*, const char*> typed[] = {
            {"txt_gren_tr_1", "1 2,5 -3 0.1234 7"}, {"txt_gren_tr_2", "0 0 0 0 0"},
            {"txt_gren_tr_3", "123456 0 0 0 -0,1"}, {"txt_numb_tr_1", "0.00004 1 1 1 1"},
            {"txt_numb_tr_2", "-4 1 0 -1 -2.5"},    {"txt_numb_tr_3", "5,5 4 3 2 1"}};
        for (const auto& [name, row] : typed) {
            type_and_enter(control<QLineEdit>(dialog, name), row);
        }
        press(dialog, "cmd_ok");
        leave();
        expect_profile(settings_with(
            {{default_verwgr_file,
              "[VERWGR]\r\nDatei=" +
                  QByteArray::fromStdString(from_utf8(path("grün.dat").toStdString())) +
                  "\r\nEllipsoid=5\r\nAbbildung=2\r\n"
                  "DHDN=1.0 2.5 -3.0 0.1234 7.0\r\n"
                  "ETRS 89=0.0 0.0 0.0 0.0 0.0\r\n"
                  "Andere=123456.0 0.0 0.0 0.0 -0.1\r\n"},
             {default_numbez,
              "[NUMBEZ]\r\n"
              "DHDN=0.0 1.0 1.0 1.0 1.0\r\n"
              "ETRS 89=-4.0 1.0 0.0 -1.0 -2.5\r\n"
              "Andere=5.5 4.0 3.0 2.0 1.0\r\n"}}));
        start_again();
        auto& again = open_dialog<FrmVerwopt>("m_optionen_grenzen");
        QCOMPARE(box_text(again, "txt_grendatei"), path("grün.dat"));
        QCOMPARE(combo_text(again, "cbo_gren_elli"), text("Krassowsky"));
        QCOMPARE(combo_text(again, "cbo_gren_abbi"), text("UTM"));
        QCOMPARE(box_text(again, "txt_gren_tr_1"), text("1.0 2.5 -3.0 0.1234 7.0"));
        QCOMPARE(box_text(again, "txt_gren_tr_2"), text("0.0 0.0 0.0 0.0 0.0"));
        QCOMPARE(box_text(again, "txt_gren_tr_3"), text("123456.0 0.0 0.0 0.0 -0.1"));
        QCOMPARE(box_text(again, "txt_numb_tr_1"), text("0.0 1.0 1.0 1.0 1.0"));
        QCOMPARE(box_text(again, "txt_numb_tr_2"), text("-4.0 1.0 0.0 -1.0 -2.5"));
        QCOMPARE(box_text(again, "txt_numb_tr_3"), text("5.5 4.0 3.0 2.0 1.0"));
    }

    void plot_settings_survive() {
        start_with_network(windows_1252(sheet_network));
        action("m_plotten_ein")->trigger();
        auto& dialog = open_dialog<FrmPlotten>("m_plotten_einstellungen");
        type_and_enter(control<QComboBox>(dialog, "cbo_grundriss_mass"), "750,4");
        click_mark(control<QRadioButton>(dialog, "opt_format_0"));
        click_mark(control<QRadioButton>(dialog, "opt_rand_3"));
        click_mark(control<QCheckBox>(dialog, "chk_format_blatt"));
        type(control<QLineEdit>(dialog, "txt_format_rechts"), "2");
        type(control<QLineEdit>(dialog, "txt_format_hoch"), "12");
        press(dialog, "cmd_ok");
        leave();
        expect_profile(settings_with({}));
        // Upright 1, no margin 4 * 3, legend lower right 16 * 4; sheets by hand.
        QCOMPARE(record("MaßstabGrundriss"),
                 windows_1252("MaßstabGrundriss 750    3499990.000    5599990.000    77"
                              " 1     2    12"));
        start_again();
        action("m_plotten_ein")->trigger();
        auto& again = open_dialog<FrmPlotten>("m_plotten_einstellungen");
        QCOMPARE(combo_text(again, "cbo_grundriss_mass"), text("750"));
        QVERIFY(is_checked(again, "opt_format_0"));
        QVERIFY(is_checked(again, "opt_rand_3"));
        QVERIFY(!is_checked(again, "chk_format_blatt"));
        QCOMPARE(box_text(again, "txt_format_rechts"), text("2"));
        QCOMPARE(box_text(again, "txt_format_hoch"), text("12"));
    }

    void selection_survives() {
        start_with_network();
        auto& dialog = open_dialog<FrmObjekte>("m_torvel_objekte");
        for (const char* option :
             {"opt_pube_0", "opt_puwe_5", "opt_nube_2", "opt_nbez_2", "opt_verw_4", "opt_beob_3"}) {
            click_mark(control<QRadioButton>(dialog, option));
        }
        for (const char* check : {"chk_test_restkl", "chk_test_beob"}) {
            click_mark(control<QCheckBox>(dialog, check));
        }
        click_mark(control<QRadioButton>(dialog, "opt_test_2"));
        click_mark(control<QRadioButton>(dialog, "opt_bezu_3"));
        auto& ellipsoids = control<QComboBox>(dialog, "cbo_bezu_elli");
        ellipsoids.setFocus();
        QTest::keyClick(&ellipsoids, Qt::Key_Down);
        QTest::keyClick(&ellipsoids, Qt::Key_Down);
        type(control<QLineEdit>(dialog, "txt_nubemerit"), "7");
        press(dialog, "cmd_ok");
        leave();
        expect_profile(settings_with({}));
        // Labels 0, signatures 1, values 5 tested; districts 2, numbers 2, boundaries 4,
        // observations 3 tested by 2; system 3, ellipsoid 3, mapping 1; strip 7; no epochs.
        QCOMPARE(record("Objekte"), QByteArray("Objekte 0 1 5 1 2 2 4 3 1 2 3 3 1 7 0"));
        start_again();
        auto& again = open_dialog<FrmObjekte>("m_torvel_objekte");
        for (const char* name :
             {"opt_pube_0", "opt_pusi_1", "opt_puwe_5", "opt_nube_2", "opt_nbez_2", "opt_verw_4",
              "opt_beob_3", "chk_test_restkl", "chk_test_beob", "opt_test_2", "opt_bezu_3"}) {
            QVERIFY2(is_checked(again, name), name);
        }
        QVERIFY(!is_checked(again, "chk_epbe"));
        QCOMPARE(combo_text(again, "cbo_bezu_elli"), text("WGS 72"));
        QCOMPARE(combo_text(again, "cbo_bezu_abbi"), text("Gauß-Krüger (3°-Streifen)"));
        QCOMPARE(box_text(again, "txt_nubemerit"), text("7"));
    }

    void scale_bars_leave_nothing_behind() {
        start_with_network();
        action("m_ansicht_maßstab")->trigger();
        auto* const bars = window_->findChild<FrmMassstab*>();
        QVERIFY(bars != nullptr && bars->isVisible());
        bars->resize(bars->width() + 100, bars->height());
        QTest::qWait(50);
        leave();
        expect_profile(settings_with({}));
        start_again();
        QVERIFY(window_->findChild<FrmMassstab*>() == nullptr);
    }

    void printer_settings_hold_for_their_run_only() {
        ScriptedDevice laser;
        laser.name = "Laser";
        ScriptedPrinter printer({ScriptedDevice(), laser});
        NoDialog print_dialog;
        write(network_file, square_network);
        const auto start_with_printer = [&] {
            create();
            window_->use_printer(printer, print_dialog);
            window_->load();
            logo()->accept();
            window_->choose_file = [this] { return path(network_file); };
            action("m_datei_beliebig")->trigger();
        };
        start_with_printer();
        auto& dialog = open_dialog<FrmDrucker>("m_optionen_drucker");
        auto& list = control<QComboBox>(dialog, "cbo_drucker");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Down);
        type(control<QLineEdit>(dialog, "txt_exemplare"), "7");
        click_mark(control<QCheckBox>(dialog, "chk_farbdrucker"));
        click_mark(control<QCheckBox>(dialog, "chk_druckindatei"));
        press(dialog, "cmd_ok");
        QCOMPARE(session_.printer.exemplare, std::int16_t{7});
        QCOMPARE(printer.DeviceName(), std::string("Laser"));
        MessageBoxes boxes;
        leave();
        expect_profile(settings_with({}));
        window_.reset();
        session_ = Session();
        printer.set_TrackDefault(true);  // another process begins with the system's default
        start_with_printer();
        auto& again = open_dialog<FrmDrucker>("m_optionen_drucker");
        QCOMPARE(combo_text(again, "cbo_drucker"), text("Plotter"));
        QCOMPARE(box_text(again, "txt_exemplare"), text("1"));
        QVERIFY(is_checked(again, "chk_farbdrucker"));
        QVERIFY(!is_checked(again, "chk_druckindatei"));
    }

    void logo_that_needs_no_confirmation_survives() {
        write(network_file, square_network);
        start();
        click_mark(*of_logo<QCheckBox>("chk_bestaetigen"));
        logo()->accept();
        window_->choose_file = [this] { return path(network_file); };
        action("m_datei_beliebig")->trigger();
        leave();
        expect_profile(settings_with({}), "N");
        window_.reset();
        session_ = Session();
        start();
        QVERIFY(of_logo<QCheckBox>("chk_bestaetigen")->isChecked());
        QVERIFY(!of_logo<QPushButton>("cmd_ok")->isEnabled());
        QTRY_VERIFY(logo() == nullptr || !logo()->isVisible());
    }
};

QTEST_MAIN(RestartTest)
#include "frmTorvel_neustart_wintest.moc"
