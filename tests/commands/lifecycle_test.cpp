#include "commands/lifecycle.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "commands/file_commands.h"
#include "commands/startup.h"
#include "fake_measurer.h"
#include "graphikdatei/writer.h"
#include "os/files.h"
#include "recording_interface.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;

class Lifecycle : public testing_support::SessionOnFile {
 protected:
    std::string make_file(const std::string& name, std::string_view utf8) {
        return folder.file(name, from_utf8(utf8));
    }
    void open(const std::string& path, OpenedBy by = OpenedBy::open_command) {
        datei_neu_laden(session, path, by, desk);
    }
    [[nodiscard]] std::string recent(int index) const {
        return session.zuletzt_datei[static_cast<std::size_t>(index)];
    }

    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }};
};

constexpr const char* two_parts =
    "VERFAHRENLEGENDE Netz\n"
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 500\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 110 120 0 0 1 \"3\"\nPUNKTSIGNATUR 160 180 0 0 0 \"4\"\n";

TEST_F(Lifecycle, OpeningReadsThePartFitsTheViewAndDraws) {
    const std::string path = make_file("a.dat", two_parts);
    open(path);
    EXPECT_EQ(session.datei_geladen, 1);
    EXPECT_EQ(session.graphikdatei, path);
    EXPECT_EQ(session.window.fenstertitel, "VELDRA [" + path + "]");
    EXPECT_EQ(session.titel[0].getTitelText(), "Netz");
    EXPECT_EQ(session.pu.count(), 2);
    EXPECT_EQ(drawn, 1);
    EXPECT_LT(session.view.ansicht_rw_min, 10.0);
    EXPECT_GT(session.view.ansicht_rw_max, 40.0);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_undo].enabled);
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption, "Rückgängig:");
    EXPECT_EQ(ui.pointers.back(), 0);
    EXPECT_THAT(ui.pointers, ::testing::Contains(11));
}

TEST_F(Lifecycle, FolderNameWithALineEndStaysInTheTitle) {
    std::filesystem::create_directory(folder.path("a\nNETZTEIL B"));
    const std::string path =
        make_file("a\nNETZTEIL B/ve.dat", "NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n");
    open(path);
    EXPECT_EQ(session.titel[0].getTitelText(), from_utf8(folder.path("a NETZTEIL B/ve.dat")));
    open(path);
    EXPECT_EQ(session.netz.count(), 1);
}

TEST_F(Lifecycle, EmptyPartWithAFarZeroPointIsShownLikeAnyEmptyOne) {
    open(make_file("a.dat",
                   "NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n"
                   "NETZTEIL B\nMAßSTABGRUNDRISS 500 3500000 5600000 9\nx\n"));
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(session.netz_aktuell, 2);
    EXPECT_EQ(session.pu.count(), 0);
    EXPECT_EQ(session.plot.plot_null_hoch, 5600000);
    EXPECT_LT(session.view.ansicht_rw_min, session.view.ansicht_rw_max);
}

TEST_F(Lifecycle, AFileWithoutVectorScalesHasTheStandardOnes) {
    const std::string part = "PUNKTSIGNATUR 10 20 0 0 1\nPUNKTSIGNATUR 40 60 0 0 1\n";
    open(make_file("a.dat", "MAßSTABVEKTOREN 4 5 8 10 20 25\nNETZTEIL A\n" + part));
    const std::array<double, 6> of_the_file{0.25, 0.2, 0.125, 0.1, 0.05, 0.04};
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        EXPECT_EQ(session.vektor_massstab[slot], of_the_file.at(slot - 1)) << slot;
        EXPECT_EQ(session.vektor_massstab_plot[slot], of_the_file.at(slot - 1)) << slot;
    }
    open(make_file("b.dat", "NETZTEIL B\n" + part));
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        EXPECT_EQ(session.vektor_massstab[slot], 0.5) << slot;
        EXPECT_EQ(session.vektor_massstab_plot[slot], 0.5) << slot;
    }
    // A denominator of 0 leaves its slot to the standard, not to the file before.
    open(make_file("c.dat", "MAßSTABVEKTOREN 4 5 8 10 20 25\nNETZTEIL C\n" + part));
    open(make_file("d.dat", "MAßSTABVEKTOREN 0 8 0 0 0 0\nNETZTEIL D\n" + part));
    EXPECT_EQ(session.vektor_massstab[1], 0.5);
    EXPECT_EQ(session.vektor_massstab[2], 0.125);
    EXPECT_EQ(session.vektor_massstab[6], 0.5);
}

TEST_F(Lifecycle, AFileReadAnewWithoutVectorScalesKeepsThoseThatItHad) {
    const std::string part = "NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1\nPUNKTSIGNATUR 40 60 0 0 1\n";
    const std::string path = make_file("a.dat", "MAßSTABVEKTOREN 4 5 8 10 20 25\n" + part);
    open(path);
    ASSERT_EQ(session.vektor_massstab[6], 0.04);
    make_file("a.dat", part);
    (void)datei_erneut_lesen(session, desk);
    EXPECT_EQ(session.vektor_massstab[1], 0.25);
    EXPECT_EQ(session.vektor_massstab_plot[6], 0.04);
}

TEST_F(Lifecycle, EllipsoidAndMappingThatAPartDoesNotTellAreThoseOfThePartBefore) {
    const std::string points =
        "PUNKTSIGNATUR 3500000 5600000 0 0 1\nPUNKTSIGNATUR 3500100 5600100 0 0 1\n";
    open(make_file("a.dat", "NETZTEIL A\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 3 5 1\n" + points +
                                "NETZTEIL B\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 3 0 0\n" + points +
                                "NETZTEIL C\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 1 5 1\n" + points +
                                "NETZTEIL D\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 3 6 3\n" + points));
    EXPECT_EQ(session.obj.obj_bezu_elli, 5);
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(session.obj.obj_bezu, 3);
    EXPECT_EQ(session.obj.obj_bezu_elli, 5);
    EXPECT_EQ(session.obj.obj_bezu_abbi, 1);
    netzteil_anzeigen(session, 3, desk);  // DHDN has one of its own
    EXPECT_EQ(session.obj.obj_bezu_elli, 1);
    netzteil_anzeigen(session, 4, desk);
    EXPECT_EQ(session.obj.obj_bezu, 3);
    EXPECT_EQ(session.obj.obj_bezu_elli, 1);
}

TEST_F(Lifecycle, OpeningTheOpenFileWritesItBackAndMovesItToTheTop) {
    const std::string path = make_file("a.dat", two_parts);
    const std::string other = make_file("b.dat", two_parts);
    open(path);
    open(other);
    session.pu[1].pu_bez_rechts = 50;
    open(other);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 50.0);
    EXPECT_EQ(recent(1), other);
    EXPECT_EQ(recent(2), path);
    EXPECT_EQ(recent(3), "");
    open(path);
    EXPECT_EQ(recent(1), path);
    EXPECT_EQ(recent(2), other);
    EXPECT_EQ(recent(3), "");
    EXPECT_EQ(session.window[MenuItem::m_datei_alt_1].caption, "&1: " + path);
    EXPECT_TRUE(session.window[MenuItem::m_datei_alt_2].enabled);
    EXPECT_FALSE(session.window[MenuItem::m_datei_alt_3].enabled);
}

TEST_F(Lifecycle, AFifthFilePushesTheOldestOut) {
    for (const char* name : {"1.dat", "2.dat", "3.dat", "4.dat", "5.dat"}) {
        session.graphikdatei = folder.path(name);
        zuletzt_aktualisieren(session);
    }
    EXPECT_EQ(recent(1), folder.path("5.dat"));
    EXPECT_EQ(recent(4), folder.path("2.dat"));
}

TEST_F(Lifecycle, RecentFilesAreComparedWithoutCase) {
    session.zuletzt_datei = {"", "/x/eins.dat", "/x/ÄÉ.dat", "/x/ł.dat", "/x/vier.dat"};
    session.graphikdatei = "/X/äé.DAT";
    zuletzt_aktualisieren(session);
    EXPECT_EQ(recent(1), "/X/äé.DAT");
    EXPECT_EQ(recent(2), "/x/eins.dat");
    EXPECT_EQ(recent(3), "/x/ł.dat");
    session.graphikdatei = "/x/ę.dat";
    zuletzt_aktualisieren(session);
    EXPECT_EQ(recent(4), "/x/ł.dat");
}

TEST_F(Lifecycle, RecentFileOpensAndMovesUp) {
    const std::string a = make_file("a.dat", two_parts);
    const std::string b = make_file("b.dat", "PUNKTSIGNATUR 1 2 0 0 1\n");
    open(a);
    open(b);
    session.obj.obj_pube = 0;
    datei_alt_oeffnen(session, 2, desk);
    EXPECT_EQ(session.graphikdatei, a);
    EXPECT_EQ(session.obj.obj_pube, 1);
    EXPECT_EQ(recent(1), a);
    EXPECT_EQ(recent(2), b);
}

TEST_F(Lifecycle, DeletedRecentFileIsReportedAndRemoved) {
    session.zuletzt_datei = {"", "/nirgends/a.dat", "/x/b.dat", "/x/c.dat", "/x/d.dat"};
    datei_alt_oeffnen(session, 1, desk);
    ASSERT_EQ(ui.texts.size(), 1U);
    EXPECT_EQ(ui.styles[0], MessageStyle::exclamation);
    EXPECT_EQ(ui.titles[0], "VELDRA - Datei auswählen");
    EXPECT_EQ(ui.texts[0],
              "gewünschte Datei ist nicht vorhanden,\nwurde vermutlich zwischenzeitig gelöscht.\n"
              "Bitte andere Datei wählen.");
    EXPECT_EQ(recent(1), "/x/b.dat");
    EXPECT_EQ(recent(3), "/x/d.dat");
    EXPECT_EQ(recent(4), "");
    EXPECT_EQ(session.window[MenuItem::m_datei_alt_4].caption, "&4: ");
    EXPECT_FALSE(session.window[MenuItem::m_datei_alt_4].enabled);
    EXPECT_EQ(drawn, 0);
}

/// Without a writer, opening a pipe would wait for ever.
TEST_F(Lifecycle, PipeAndDeviceAreRefused) {
    const std::string open_file = make_file("a.dat", two_parts);
    open(open_file);
    const std::string pipe = folder.path("rohr");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    int told = 0;
    for (const std::string& path : {pipe, std::string("/dev/null")}) {
        for (const OpenedBy by : {OpenedBy::open_command, OpenedBy::recent_menu, OpenedBy::name}) {
            open(path, by);
            ASSERT_EQ(ui.texts.size(), static_cast<std::size_t>(++told));
            EXPECT_EQ(ui.styles.back(), MessageStyle::exclamation);
            EXPECT_THAT(ui.texts.back(), HasSubstr(path + "\nist keine gewöhnliche Datei"));
        }
    }
    session.zuletzt_datei[1] = pipe;
    datei_alt_oeffnen(session, 1, desk);
    EXPECT_THAT(ui.texts.back(), HasSubstr("keine gewöhnliche Datei"));
    EXPECT_EQ(session.graphikdatei, open_file);
    EXPECT_EQ(session.datei_geladen, 1);
    session.graphikdatei = pipe;  // as a project's profile names it
    projektdatei_oeffnen(session, desk);
    EXPECT_THAT(ui.texts.back(), HasSubstr(pipe + "\nist keine gewöhnliche Datei"));
    EXPECT_EQ(drawn, 1);
}

TEST_F(Lifecycle, RecentNameOfThreeCharactersDoesNothing) {
    session.zuletzt_datei[1] = "a.b";
    datei_alt_oeffnen(session, 1, desk);
    EXPECT_TRUE(ui.texts.empty());
    EXPECT_EQ(recent(1), "a.b");
    session.zuletzt_datei[1] = "/äö";  // five bytes
    datei_alt_oeffnen(session, 1, desk);
    EXPECT_TRUE(ui.texts.empty());
    session.zuletzt_datei[1] = "/abc";
    datei_alt_oeffnen(session, 1, desk);
    EXPECT_EQ(ui.texts.size(), 1U);
}

TEST_F(Lifecycle, FileWithoutPartNeverShowsTheDialogOfParts) {
    open(make_file("a.dat", "PUNKTSIGNATUR 1 2 0 0 1\nDISTANZ 1 2 3 4\n"));
    EXPECT_EQ(session.netz_aktuell, 0);
    EXPECT_FALSE(session.window.frm_netzteile_shown);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_netzteile].enabled);
    EXPECT_EQ(session.pu.count(), 1);
}

TEST_F(Lifecycle, LabelMovesSurviveTheChangeOfPart) {
    const std::string path = make_file("a.dat", two_parts);
    open(path);
    session.pu[2].pu_bez_rechts = 70;
    session.pu[2].pu_bez_hoch = -30;
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(session.netz_aktuell, 2);
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 500);
    EXPECT_EQ(session.obj.obj_beob, 2);
    EXPECT_EQ(session.arbeitsdatei_suffix, "_1");
    EXPECT_EQ(testing_support::file_bytes(path), from_utf8(two_parts));
    netzteil_anzeigen(session, 1, desk);
    EXPECT_EQ(session.arbeitsdatei_suffix, "_2");
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70.0);
    EXPECT_EQ(session.pu[2].pu_bez_hoch, -30.0);
    EXPECT_EQ(session.plot.plot_massstab, 1.0 / 1000);
}

TEST_F(Lifecycle, ChangeOfPartEndsThePlotMode) {
    open(make_file("a.dat", two_parts));
    session.plotmodus = 1;
    netzteil_anzeigen(session, 1, desk);
    EXPECT_EQ(session.plotmodus, 1);
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(session.plotmodus, 0);
}

TEST_F(Lifecycle, ChangeToTheCurrentPartDoesNothing) {
    open(make_file("a.dat", two_parts));
    netzteil_anzeigen(session, 1, desk);
    EXPECT_EQ(drawn, 1);
    EXPECT_EQ(session.arbeitsdatei_suffix, "");
}

TEST_F(Lifecycle, CopiesAreGoneAndNothingIsLoadedAfterTheFinalForm) {
    const std::string path = make_file("a.dat", two_parts);
    open(path);
    netzteil_anzeigen(session, 2, desk);
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    EXPECT_FALSE(datei_vorhanden(path + "_1"));
    EXPECT_FALSE(datei_vorhanden(path + "_2"));
    EXPECT_EQ(session.datei_geladen, 0);
}

TEST_F(Lifecycle, UnreadableFileIsFatalAndNamed) {
    try {
        open(folder.path("fehlt.dat"));
        FAIL() << "no error";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), HasSubstr("fehlt.dat"));
    }
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(Lifecycle, RequiredTokenAsEmptyQuotesCountsAsMissing) {
    const std::string path =
        make_file("a.dat",
                  "NETZTEIL A\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\nPUNKTSIGNATUR 1 2 0 0 \"\"\n"
                  "PUNKTSIGNATUR 5 6 0 0 1\n");
    open(path);
    EXPECT_EQ(session.pu.count(), 1);
    arbeitskopie_schreiben(session);
    EXPECT_THAT(testing_support::file_bytes(path + "_1"),
                HasSubstr("\r\nPUNKTSIGNATUR 1 2 0 0 \"\"\r\n"));
}

}  // namespace
}  // namespace veldra
