// The hand's work on the open file when another program has rewritten it, or another file has more.
#include <filesystem>

#include <gmock/gmock.h>

#include "commands/file_commands.h"
#include "commands/file_watch.h"
#include "dialogs/object_selection.h"
#include "fake_measurer.h"
#include "recording_interface.h"
#include "session_fixture.h"
#include "view/label_moving.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* network_of_two =
    "VERFAHRENLEGENDE Übung\n"
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 5 6 9\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\n"
    "PUNKTSIGNATUR 40 60 0 0 0 \"2\"\nHÖHENÄNDERUNG 40 60 1 1 \"2018\"\n"
    "NÄCHSTEEPOCHE 1 \"2019\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 500 7 8 9\nTITEL3 drei\n"
    "OBJEKTE 1 0 0 0 1 1 3 1 0 1 0 1 1\nPUNKTSIGNATUR 110 120 0 0 1 \"3\" 33 44\n";

/// The same network computed anew: no trace of anyone's hand.
constexpr const char* computed_anew =
    "NETZTEIL A\nPUNKTSIGNATUR 10.002 20.001 0 0 1 \"1\"\n"
    "PUNKTSIGNATUR 40.003 60.004 0 0 0 \"2\"\nPUNKTSIGNATUR 70 80 0 0 0 \"5\"\n"
    "HÖHENÄNDERUNG 40.003 60.004 1 1 \"2018\"\nNÄCHSTEEPOCHE 1 \"2019\"\n"
    "NETZTEIL B\nPUNKTSIGNATUR 110.001 120.002 0 0 1 \"3\"\n";

class TakeOver : public testing_support::SessionOnFile {
 protected:
    void SetUp() override {
        path = folder.file("ve.dat", from_utf8(network_of_two));
        datei_neu_laden(session, path, OpenedBy::open_command, desk);
    }

    /// Replaces the file by another one, as most programs do.
    void rewrite(std::string_view utf8) const {
        std::filesystem::rename(folder.file("neu", from_utf8(utf8)), path);
    }

    void select_values(std::int16_t kind) {
        const ObjectSelection before = session.obj;
        session.obj.obj_puwe = kind;
        auswahl_uebernehmen(session, before, SelectionLeft::by_ok, desk);
    }

    std::string path;
    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    FileWatch watch;
    Desk desk{measurer, ui, [] {}, nullptr, nullptr, &watch};
};

TEST_F(TakeOver, RewrittenFileGetsTheHandsWorkOfMemory) {
    move_point_label(session, 2, {70, -30});
    session.titel[1].setTitelText("zwei");
    session.obj.obj_verw = 5;
    session.plot.plot_null_rechts = 3.5;
    session.vektor_massstab[1] = 0.25;
    const std::int32_t row = session.nuoff.append();
    session.nuoff[row] = {"L 4711", 3500, 5600};
    rewrite(computed_anew);
    geaenderte_datei_pruefen(session, desk);

    ASSERT_EQ(session.pu.pu_anzahl_signatur, 3);
    EXPECT_EQ(session.pu[2].pu_rechts, 40.003);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(session.pu[2].pu_bez_hoch, -30);
    EXPECT_EQ(session.titel[0].getTitelText(), from_utf8("Übung"));
    EXPECT_EQ(session.titel[1].getTitelText(), "zwei");
    EXPECT_EQ(session.obj.obj_verw, 5);
    EXPECT_EQ(session.plot.plot_null_rechts, 3.5);
    EXPECT_EQ(session.vektor_massstab[1], 0.25);
    ASSERT_EQ(session.nuoff.count(), 1);
    EXPECT_EQ(session.nuoff[1].nuoff_hoch, 5600);

    ASSERT_EQ(ui.texts.size(), 2U);
    EXPECT_THAT(ui.texts[0], HasSubstr("werden dabei übernommen"));
    EXPECT_EQ(ui.titles[1], "VELDRA - Einstellungen übernommen");
    EXPECT_EQ(ui.texts[1],
              "Übernommen:\nBeschriftungen von Punkten: 2\n"
              "Beschriftungen von Nummerierungsbezirken: 1\n"
              "Auswahl der Objekte, Netzteile: 2\nTitelzeilen: 3\n"
              "Ploteinstellungen, Netzteile: 2\nMaßstäbe der Vektoren: 1\n");
    geaenderte_datei_pruefen(session, desk);
    EXPECT_EQ(ui.texts.size(), 2U);  // it is the known one now
}

TEST_F(TakeOver, PartsThatWereNeverShownKeepTheirWorkTwice) {
    for (int times = 0; times < 2; ++times) {
        rewrite(computed_anew);
        geaenderte_datei_pruefen(session, desk);
    }
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(session.pu[1].pu_rechts, 110.001);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 33);
    EXPECT_EQ(session.pu[1].pu_bez_hoch, 44);
    EXPECT_EQ(session.titel[2].getTitelText(), "drei");
    EXPECT_EQ(session.obj.obj_pusi, 0);
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 500);
}

TEST_F(TakeOver, MovedEpochLabelIsKeptThoughItIsNotShownAnyMore) {
    select_values(2);
    ASSERT_EQ(session.pu.count(), 4);
    move_point_label(session, 4, {12, 34});
    select_values(0);
    rewrite(computed_anew);
    geaenderte_datei_pruefen(session, desk);
    EXPECT_THAT(ui.texts.at(1), HasSubstr("Beschriftungen von Epochen: 1\n"));
    select_values(2);
    ASSERT_EQ(session.pu.count(), 5);
    EXPECT_EQ(session.pu[4].pu_bez_rechts, 0);
    EXPECT_EQ(session.pu[5].pu_bez_rechts, 12);
    EXPECT_EQ(session.pu[5].pu_bez_hoch, 34);
}

TEST_F(TakeOver, ShownPartAndMarksForPlottingStay) {
    netzteil_anzeigen(session, 2, desk);
    session.netz[1].netz_plotmarke = table_false;
    rewrite("NETZTEIL B\nPUNKTSIGNATUR 110 120 0 0 1 \"3\"\nNETZTEIL A\nNETZTEIL C\n");
    geaenderte_datei_pruefen(session, desk);
    EXPECT_EQ(session.netz_aktuell, 1);
    EXPECT_EQ(session.netz[1].netz_plotmarke, table_true);
    EXPECT_EQ(session.netz[2].netz_plotmarke, table_false);
    EXPECT_EQ(session.netz[3].netz_plotmarke, table_true);
}

TEST_F(TakeOver, WhatFoundNoPlaceIsNamed) {
    move_point_label(session, 2, {70, -30});
    rewrite("NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\n");
    geaenderte_datei_pruefen(session, desk);
    EXPECT_THAT(ui.texts.at(1), HasSubstr("Nicht übernommen: 5\n"
                                          "Netzteil \"A\": Beschriftung des Punktes \"2\"\n"
                                          "Netzteil \"B\" gibt es nicht mehr (Beschriftungen: 1, "
                                          "Auswahl: 1, Titelzeilen: 1, Ploteinstellungen: 1)\n"));
}

TEST_F(TakeOver, LeavingWritesTheRewrittenFileWithTheHandsWork) {
    move_point_label(session, 2, {70, -30});
    rewrite(computed_anew);
    geaenderte_datei_pruefen(session, desk);
    datei_zurueckschreiben(session, desk);
    session.graphikdatei = path;
    const std::string text = file_text();
    EXPECT_THAT(text, HasSubstr("\"2\"      70.0     -30.0"));
    EXPECT_THAT(text, HasSubstr("70.000       80.000 0 0 0 \"5\""));
    EXPECT_THAT(text, HasSubstr("\"3\" 33.0 44.0"));
    EXPECT_FALSE(datei_vorhanden(path + "_1"));
    EXPECT_FALSE(datei_vorhanden(path + "_2"));
}

TEST_F(TakeOver, UnreadableRewrittenFileTakesNothingAway) {
    move_point_label(session, 2, {70, -30});
    watch.follow(path);
    std::filesystem::remove(path);
    EXPECT_THROW((void)datei_erneut_lesen(session, desk), FatalError);
    EXPECT_EQ(session.datei_geladen, 1);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
}

TEST_F(TakeOver, SettingsOfAnotherFileReplaceThoseOfTheOpenOne) {
    const std::string other = folder.file(
        "ve_alt.dat", from_utf8("VERFAHRENLEGENDE Alt\nNETZTEIL A\nTITEL2 von dort\n"
                                "MAßSTABGRUNDRISS 2000\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 7 8\n"));
    move_point_label(session, 2, {70, -30});
    session.titel[2].setTitelText("bleibt");
    einstellungen_uebernehmen(session, other, desk);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 7);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(session.titel[0].getTitelText(), "Alt");
    EXPECT_EQ(session.titel[1].getTitelText(), "von dort");
    EXPECT_EQ(session.titel[2].getTitelText(), "bleibt");
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 2000);
    EXPECT_EQ(session.netz[2].netz_massstab, 1.0 / 500);
    EXPECT_EQ(session.datei_geladen, 1);
    EXPECT_EQ(ui.texts, std::vector<std::string>{
                            "Übernommen:\nBeschriftungen von Punkten: 1\nTitelzeilen: 2\n"
                            "Ploteinstellungen, Netzteile: 1\n"});
    EXPECT_EQ(file_text(), network_of_two);  // until it is left
}

TEST_F(TakeOver, FileThatGivesNoSettingsIsToldAndChangesNothing) {
    const std::string no_file = folder.path("fehlt.dat");
    const std::string no_graphic = folder.file("brief.txt", "Sehr geehrte Damen und Herren\n");
    for (const std::string& other : {no_file, no_graphic, path}) {
        einstellungen_uebernehmen(session, other, desk);
        EXPECT_EQ(ui.styles.back(), MessageStyle::critical);
        EXPECT_THAT(ui.texts.back(), HasSubstr(other));
    }
    EXPECT_EQ(ui.texts.size(), 3U);
    EXPECT_EQ(session.datei_geladen, 1);
    EXPECT_EQ(session.arbeitsdatei_suffix, "");
}

TEST_F(TakeOver, FileIsAtRestWhenItIsTheSameTwice) {
    EXPECT_FALSE(watch.rewritten_and_at_rest());
    rewrite("NETZTEIL A\n");
    EXPECT_FALSE(watch.rewritten_and_at_rest());
    rewrite("NETZTEIL A\nNETZTEIL B\n");
    EXPECT_FALSE(watch.rewritten_and_at_rest());
    EXPECT_TRUE(watch.rewritten_and_at_rest());
    watch.accept();
    EXPECT_FALSE(watch.rewritten_and_at_rest());
    EXPECT_FALSE(watch.rewritten_and_at_rest());
}

}  // namespace
}  // namespace veldra
