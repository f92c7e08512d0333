// The display options are there again after leaving and starting anew.
#include "restart_fixture.h"
#include "windows/forms/display_dialog_fixture.h"

using namespace veldra;
using namespace veldra::test;
using namespace veldra_test;

namespace {

constexpr int colour_of_class(int i) {
    return rgb(i, 100 + i, 200 + i);
}

}  // namespace

class DisplayRestartTest : public RestartFixture {
    Q_OBJECT

 private:
    FrmDarstellungen& open_display_options() {
        auto& dialog = open_dialog<FrmDarstellungen>("m_optionen_darstellungen");
        answers_ = ChooserAnswers();
        answers_.put_into(dialog);
        return dialog;
    }

    // The steps of the display options.
    void set_point_tabs(FrmDarstellungen& dialog);
    void set_observation_tabs(FrmDarstellungen& dialog);
    void set_vector_tab(FrmDarstellungen& dialog, DisplayTab tab);
    void set_test_tab(FrmDarstellungen& dialog);
    void set_boundary_tab(FrmDarstellungen& dialog);
    void expect_point_tabs(FrmDarstellungen& dialog);
    void expect_observation_tabs(FrmDarstellungen& dialog);
    void expect_vector_tab(FrmDarstellungen& dialog, DisplayTab tab);
    void expect_test_tab(FrmDarstellungen& dialog);
    void expect_boundary_tab(FrmDarstellungen& dialog);

    ChooserAnswers answers_;

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void display_options_survive() {
        start_with_network(windows_1252(sheet_network));
        FrmDarstellungen& dialog = open_display_options();
        const QByteArray before = read(ini);
        set_point_tabs(dialog);
        set_observation_tabs(dialog);
        set_vector_tab(dialog, DisplayTab::vectors_position);
        set_vector_tab(dialog, DisplayTab::vectors_height);
        set_test_tab(dialog);
        set_boundary_tab(dialog);
        type_and_enter(control<QComboBox>(dialog, "cbo_grundriss_mass"), "2500");
        type_and_enter(control<QComboBox>(dialog, "cbo_überhöhung"), "3");
        press(dialog, "cmd_ok");
        QCOMPARE(read(ini), before);  // nothing is written before the end of the program
        leave();
        expect_profile(settings_with({
            {default_bezpun,
             // 3 + 2 * 256 + 1 * 65536 = 66051, 255 + 128 * 256 = 33023.
             windows_1252(
                 "[BEZPUN]\r\n"
                 "punsigscr_0=44\r\npunsigscr_1=51\r\npunsigscr_2=0\r\npunsigscr_3=-3\r\n"
                 "pubgrascr=14\r\n"
                 "punsigplo_0=1.2\r\npunsigplo_1=2.3\r\npunsigplo_2=10.0\r\npunsigplo_3=0.1\r\n"
                 "pubsizplo=3.1\r\npubfon=Courier\r\npubbol=False\r\npubita=True\r\n"
                 "pubund=False\r\npubcolor=0000066051\r\nstanplt=75.3\r\nstanptp=-12.5\r\n"
                 "nubgrascr=8\r\nnubsizplo=4.4\r\nnubfon=Büro Sans\r\nnubbol=True\r\n"
                 "nubita=False\r\nnubund=True\r\nnubcolor=0000033023\r\n")},
            {default_beobac,
             "[BEOBAC]\r\n"
             "Stquerscr=210\r\nStkreuscr=220\r\nlenoriscr=1500\r\n"
             "Stquerplo=6.5\r\nStkreuplo=7.0\r\nlenoriplo=40.2\r\nfaktorStrich=3\r\n"},
            {default_states,
             // Class i has the colour i + 256 * (100 + i) + 65536 * (200 + i) = 13132800 + 65793 i.
             "[STATES]\r\n"
             "stnddrw=1\r\nstndrgb=0013132800\r\nstndwert=0.7\r\n"
             "stevdrw_1=2\r\nstevrgb_1=0013198593\r\nstevwert_1=12.5\r\n"
             "stevdrw_2=3\r\nstevrgb_2=0013264386\r\n"
             "stnvdrw_1=4\r\nstnvrgb_1=0013330179\r\nstnvwert_1=1.1\r\n"
             "stnvdrw_2=5\r\nstnvrgb_2=0013395972\r\nstnvwert_2=2.2\r\n"
             "stnvdrw_3=6\r\nstnvrgb_3=0013461765\r\nstnvwert_3=4.4\r\n"
             "stnvdrw_4=1\r\nstnvrgb_4=0013527558\r\n"
             "stepdrw_1=2\r\nsteprgb_1=0013593351\r\nstepwert_1=2.5\r\n"
             "stepdrw_2=3\r\nsteprgb_2=0013659144\r\nstepwert_2=99999.9\r\n"
             "stepdrw_3=4\r\nsteprgb_3=0013724937\r\n"},
            {default_vektor,
             "[VEKTOR]\r\n"
             "vektAdrw_1=0\r\nvektArgb_1=0000000001\r\nvektNdrw_1=6\r\nvektNrgb_1=0000000002\r\n"
             "vektAdrw_2=5\r\nvektArgb_2=0000000003\r\nvektNdrw_2=4\r\nvektNrgb_2=0000000004\r\n"
             "vektAdrw_3=2\r\nvektArgb_3=0000000005\r\nvektNdrw_3=2\r\nvektNrgb_3=0000000005\r\n"
             "vektAdrw_4=1\r\nvektArgb_4=0000000006\r\nvektNdrw_4=2\r\nvektNrgb_4=0000000007\r\n"
             "vektAdrw_5=3\r\nvektArgb_5=0000000008\r\nvektNdrw_5=0\r\nvektNrgb_5=0000000009\r\n"
             "vektAdrw_6=5\r\nvektArgb_6=0000000010\r\nvektNdrw_6=5\r\nvektNrgb_6=0000000010\r\n"},
            {default_verwgr_lines,
             // Level i is blue: i * 65536.
             "grenzdrw_1=1\r\ngrenzdrw_2=2\r\ngrenzdrw_3=3\r\ngrenzdrw_4=4\r\n"
             "grenzdrw_5=5\r\ngrenzdrw_6=6\r\ngrenzdrw_7=1\r\n"
             "grenzrgb_1=0000065536\r\ngrenzrgb_2=0000131072\r\ngrenzrgb_3=0000196608\r\n"
             "grenzrgb_4=0000262144\r\ngrenzrgb_5=0000327680\r\ngrenzrgb_6=0000393216\r\n"
             "grenzrgb_7=0000458752\r\n"},
        }));
        // Six denominators, eight characters each; a mask's point stands without decimals too.
        QCOMPARE(record("MaßstabVektoren"),
                 windows_1252("MaßstabVektoren     0.5     2.5     10.     20.      1.     0.1"));
        QCOMPARE(record("MaßstabGrundriss"),
                 windows_1252("MaßstabGrundriss 2500    3499990.000    5599990.000    70"));
        start_again();
        FrmDarstellungen& again = open_display_options();
        expect_point_tabs(again);
        expect_observation_tabs(again);
        expect_vector_tab(again, DisplayTab::vectors_position);
        expect_vector_tab(again, DisplayTab::vectors_height);
        expect_test_tab(again);
        expect_boundary_tab(again);
        QCOMPARE(combo_text(again, "cbo_grundriss_mass"), text("2 500"));
        QCOMPARE(combo_text(again, "cbo_überhöhung"), text("3"));
    }

    void display_options_given_up_leave_the_files_as_they_were() {
        start_with_network(windows_1252(sheet_network));
        FrmDarstellungen& dialog = open_display_options();
        set_test_tab(dialog);
        set_vector_tab(dialog, DisplayTab::vectors_height);
        type_and_enter(control<QComboBox>(dialog, "cbo_grundriss_mass"), "2500");
        press(dialog, "cmd_abbrechen");
        leave();
        expect_profile(settings_with({}));
        QCOMPARE(record("MaßstabVektoren"),
                 windows_1252("MaßstabVektoren      2.      2.      2.      2.      2.      2."));
        QCOMPARE(record("MaßstabGrundriss"),
                 windows_1252("MaßstabGrundriss 1000    3499990.000    5599990.000    70"));
    }
};

// Values of the display options, tab by tab.

void DisplayRestartTest::set_point_tabs(FrmDarstellungen& dialog) {
    const auto type_radii = [&dialog](const char* label, const char* box,
                                      std::initializer_list<const char*> radii) {
        int klasse = 0;
        for (const char* radius : radii) {
            click(control<QLabel>(dialog, numbered(label, klasse++).constData()));
            type_and_enter(control<QLineEdit>(dialog, box), radius);
        }
    };
    show_tab(dialog, DisplayTab::points_screen);
    type_radii("lbl_pa_screen_", "txt_punktradius_screen", {"44,4", "51.2", "abc", "-3"});
    type_and_enter(control<QLineEdit>(dialog, "txt_offset_rechts_screen"), "75,26");
    answers_.font = FontChoice{{"Times", 13.6, 0, 0, 0}, 0};
    press(dialog, "cmd_pubez_schrift_screen");
    answers_.font = FontChoice{{"B\xFCro Sans", 8.4, -1, 0, -1}, rgb(255, 128, 0)};
    press(dialog, "cmd_nubez_schrift_screen");
    show_tab(dialog, DisplayTab::points_plot);
    type_radii("lbl_pa_plott_", "txt_punktradius_plott", {"1,24", "2.26", "10", "0.1"});
    type_and_enter(control<QLineEdit>(dialog, "txt_offset_hoch_plott"), "-12,5");
    type_and_enter(control<QLineEdit>(dialog, "txt_pubez_schrift_plott"), "3,14");
    type_and_enter(control<QLineEdit>(dialog, "txt_nubez_schrift_plott"), "4.44");
    // Face, style and colour are those of the screen too.
    answers_.font = FontChoice{{"Courier", 30, 0, -1, 0}, rgb(3, 2, 1)};
    press(dialog, "cmd_pubez_schrift_plott");
}

void DisplayRestartTest::expect_point_tabs(FrmDarstellungen& dialog) {
    const auto expect_radii = [&dialog](const char* label, const char* box,
                                        std::initializer_list<const char*> radii) {
        int klasse = 0;
        for (const char* radius : radii) {
            click(control<QLabel>(dialog, numbered(label, klasse++).constData()));
            QCOMPARE(box_text(dialog, box), text(radius));
        }
    };
    show_tab(dialog, DisplayTab::points_screen);
    expect_radii("lbl_pa_screen_", "txt_punktradius_screen", {"44", "51", "0", "-3"});
    QCOMPARE(box_text(dialog, "txt_offset_rechts_screen"), text("75.3"));
    QCOMPARE(box_text(dialog, "txt_offset_hoch_screen"), text("-12.5"));
    press(dialog, "cmd_pubez_schrift_screen");
    QVERIFY((answers_.offered_font == FontChoice{{"Courier", 14, 0, -1, 0}, rgb(3, 2, 1)}));
    press(dialog, "cmd_nubez_schrift_screen");
    QVERIFY(
        (answers_.offered_font == FontChoice{{"B\xFCro Sans", 8, -1, 0, -1}, rgb(255, 128, 0)}));
    show_tab(dialog, DisplayTab::points_plot);
    expect_radii("lbl_pa_plott_", "txt_punktradius_plott", {"1.2", "2.3", "10.0", "0.1"});
    QCOMPARE(box_text(dialog, "txt_pubez_schrift_plott"), text("3.1"));
    QCOMPARE(box_text(dialog, "txt_nubez_schrift_plott"), text("4.4"));
}

void DisplayRestartTest::set_observation_tabs(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::observations_screen);
    type_and_enter(control<QLineEdit>(dialog, "txt_terstrecken_sig_screen"), "210");
    type_and_enter(control<QLineEdit>(dialog, "txt_gpsstrecken_sig_screen"), "220,4");
    type_and_enter(control<QLineEdit>(dialog, "txt_orientierung_sig_screen"), "1500");
    show_tab(dialog, DisplayTab::observations_plot);
    type_and_enter(control<QLineEdit>(dialog, "txt_terstrecken_sig_plott"), "6,5");
    type_and_enter(control<QLineEdit>(dialog, "txt_gpsstrecken_sig_plott"), "7");
    type_and_enter(control<QLineEdit>(dialog, "txt_orientierung_sig_plott"), "40.24");
}

void DisplayRestartTest::expect_observation_tabs(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::observations_screen);
    QCOMPARE(box_text(dialog, "txt_terstrecken_sig_screen"), text("210"));
    QCOMPARE(box_text(dialog, "txt_gpsstrecken_sig_screen"), text("220"));
    QCOMPARE(box_text(dialog, "txt_orientierung_sig_screen"), text("1500"));
    show_tab(dialog, DisplayTab::observations_plot);
    QCOMPARE(box_text(dialog, "txt_terstrecken_sig_plott"), text("6.5"));
    QCOMPARE(box_text(dialog, "txt_gpsstrecken_sig_plott"), text("7.0"));
    QCOMPARE(box_text(dialog, "txt_orientierung_sig_plott"), text("40.2"));
}

namespace {

/// Controls of a tab of vectors, and what is set there: ten vectors, six scales.
struct VectorTab {
    const char* picture;
    const char* combo;
    const char* colour;
    const char* width;
    int first;  ///< number of its first vector, from 0
};

VectorTab vector_tab(DisplayTab tab) {
    return tab == DisplayTab::vectors_position
               ? VectorTab{"picVektorLage_", "cbo_vekt_mass_lage_", "cmd_vekt_farbe_lage",
                           "cmd_vekt_strich_lage", 0}
               : VectorTab{"picVektorHöhe_", "cbo_vekt_mass_höhe_", "cmd_vekt_farbe_höhe",
                           "cmd_vekt_strich_höhe", 5};
}

constexpr int vector_widths[] = {0, 6, 5, 4, 2, 1, 2, 3, 0, 5};
constexpr const char* typed_scales[] = {"0,5", "2,5", "10", "20", "1", "0.1"};
constexpr const char* shown_scales[] = {"0.5", "2.5", "10", "20", "1", "0.1"};

}  // namespace

void DisplayRestartTest::set_vector_tab(FrmDarstellungen& dialog, DisplayTab tab) {
    const VectorTab names = vector_tab(tab);
    show_tab(dialog, tab);
    for (int i = 0; i < 5; ++i) {
        const int vector = names.first + i;
        click(control<SamplePicture>(dialog, numbered(names.picture, i + 1).constData()));
        answers_.colour = vector + 1;
        press(dialog, names.colour);
        pick_width(dialog, names.width, vector_widths[vector]);
    }
    for (int i = 0; i < 3; ++i) {
        type_and_enter(control<QComboBox>(dialog, numbered(names.combo, i + 1).constData()),
                       typed_scales[names.first / 5 * 3 + i]);
    }
}

void DisplayRestartTest::expect_vector_tab(FrmDarstellungen& dialog, DisplayTab tab) {
    const VectorTab names = vector_tab(tab);
    show_tab(dialog, tab);
    for (int i = 0; i < 5; ++i) {
        const int vector = names.first + i;
        click(control<SamplePicture>(dialog, numbered(names.picture, i + 1).constData()));
        press(dialog, names.colour);
        QCOMPARE(answers_.offered_colour, vector + 1);
        QCOMPARE(offered_width(dialog, names.width), vector_widths[vector]);
    }
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(combo_text(dialog, numbered(names.combo, i + 1).constData()),
                 text(shown_scales[names.first / 5 * 3 + i]));
    }
}

void DisplayRestartTest::set_test_tab(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::tests);
    const std::pair<const char*, const char*> limits[] = {
        {"txt_grenzwert", "0,7"},    {"txt_ev_wert", "12,5"},  {"txt_nv_wert_1", "1,1"},
        {"txt_nv_wert_2", "2.2"},    {"txt_nv_wert_3", "4,4"}, {"txt_ep_wert_1", "2.5"},
        {"txt_ep_wert_2", "99999,9"}};
    for (const auto& [name, limit] : limits) {
        type_and_enter(control<QLineEdit>(dialog, name), limit);
    }
    for (int i = 0; i < 10; ++i) {
        click(control<SamplePicture>(dialog, numbered("pic_testwert_", i).constData()));
        answers_.colour = colour_of_class(i);
        press(dialog, "cmd_test_farbe");
        pick_width(dialog, "cmd_test_strich", i % 6 + 1);
    }
}

void DisplayRestartTest::expect_test_tab(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::tests);
    const std::pair<const char*, const char*> limits[] = {
        {"txt_grenzwert", "0.7"},    {"txt_ev_wert", "12.5"},  {"txt_nv_wert_1", "1.1"},
        {"txt_nv_wert_2", "2.2"},    {"txt_nv_wert_3", "4.4"}, {"txt_ep_wert_1", "2.5"},
        {"txt_ep_wert_2", "99999.9"}};
    for (const auto& [name, limit] : limits) {
        QCOMPARE(box_text(dialog, name), text(limit));
    }
    for (int i = 0; i < 10; ++i) {
        click(control<SamplePicture>(dialog, numbered("pic_testwert_", i).constData()));
        press(dialog, "cmd_test_farbe");
        QCOMPARE(answers_.offered_colour, colour_of_class(i));
        QCOMPARE(offered_width(dialog, "cmd_test_strich"), i % 6 + 1);
    }
}

void DisplayRestartTest::set_boundary_tab(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::boundaries);
    for (int level = 1; level <= 7; ++level) {
        answers_.colour = rgb(0, 0, level);
        press(dialog, numbered("cmd_verwgrenz_farbe_", level).constData());
        pick_width(dialog, numbered("cmd_verwgrenz_strich_", level).constData(),
                   (level - 1) % 6 + 1);
    }
}

void DisplayRestartTest::expect_boundary_tab(FrmDarstellungen& dialog) {
    show_tab(dialog, DisplayTab::boundaries);
    for (int level = 1; level <= 7; ++level) {
        press(dialog, numbered("cmd_verwgrenz_farbe_", level).constData());
        QCOMPARE(answers_.offered_colour, rgb(0, 0, level));
        QCOMPARE(offered_width(dialog, numbered("cmd_verwgrenz_strich_", level).constData()),
                 (level - 1) % 6 + 1);
    }
}

QTEST_MAIN(DisplayRestartTest)
#include "frmTorvel_neustart_darstellungen_wintest.moc"
