// Files that cannot be written back: read-only ones, and those whose folder has vanished.
#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <unistd.h>

#include "commands/file_commands.h"
#include "commands/file_watch.h"
#include "commands/lifecycle.h"
#include "commands/plot_job.h"
#include "commands/write_back.h"
#include "dialogs/display_options.h"
#include "dialogs/legend_options.h"
#include "dialogs/object_selection.h"
#include "fake_measurer.h"
#include "other_user.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using testing_support::AsUser;
using testing_support::file_bytes;
using Choice = UnwrittenAnswer::Choice;

constexpr const char* two_parts =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 5 6 9\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 500 7 8 9\nTITEL2 zweites\n"
    "PUNKTSIGNATUR 110 120 0 0 1 \"3\"\nPUNKTSIGNATUR 160 180 0 0 0 \"4\"\n";

/// A file with each run of blanks as one.
std::string squeezed_bytes(const std::string& path) {
    std::string bytes = file_bytes(path);
    const auto both_blank = [](char a, char b) { return a == ' ' && b == ' '; };
    bytes.erase(std::unique(bytes.begin(), bytes.end(), both_blank), bytes.end());
    return bytes;
}

class UnwritableFile : public testing_support::SessionOnFile {
 protected:
    void SetUp() override {
        std::filesystem::create_directory(folder.path("netze"));
        std::filesystem::create_directory(folder.path("frei"));
        path = folder.file("netze/ve.dat", from_utf8(two_parts));
        before = file_bytes(path);
        desk.rescue_folder = folder.path("frei");
        desk.ask_unwritten = [this](const std::string& text) {
            asked.push_back(text);
            if (at_question) {
                at_question();
            }
            const std::size_t nth = std::min(asked.size(), answers.size()) - 1;
            return answers.at(nth);
        };
    }
    void TearDown() override {
        user.reset();
        allow(true);
    }

    void allow(bool write) const {
        using std::filesystem::perms;
        const perms folder_rights = write ? perms(0755) : perms(0555);
        std::filesystem::permissions(path, write ? perms(0644) : perms(0444));
        std::filesystem::permissions(folder.path("netze"), folder_rights);
        std::filesystem::permissions(folder.path("frei"), perms(0777));
    }
    /// Opens it as a user who may not write it, whom the rest of the test stays.
    void open_read_only() {
        allow(false);
        if (::geteuid() == 0) {
            user.emplace(testing_support::anna, testing_support::others);
            ASSERT_TRUE(user->became());
        }
        datei_neu_laden(session, path, OpenedBy::open_command, desk);
    }
    /// Another program, which may write there, puts other bytes in the file's place.
    void rewrite_elsewhere(std::string_view utf8) {
        user.reset();
        allow(true);
        std::filesystem::rename(folder.file("frei/neu", from_utf8(utf8)), path);
        allow(false);
        if (::geteuid() == 0) {
            user.emplace(testing_support::anna, testing_support::others);
            ASSERT_TRUE(user->became());
        }
    }
    void move_label() { session.part.pu[2].pu_bez_rechts = 70; }
    void leave() { datei_zurueckschreiben(session, desk); }

    [[nodiscard]] std::vector<std::string> names_beside() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("netze"))) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    std::string path;
    std::string before;
    test::RecordingInterface ui;
    test::FakeMeasurer measurer;
    FileWatch watch;
    Desk desk{measurer, ui, [] {}, nullptr, nullptr, &watch};
    std::vector<UnwrittenAnswer> answers;
    std::vector<std::string> asked;
    std::function<void()> at_question;
    std::optional<AsUser> user;
};

TEST_F(UnwritableFile, IsLeftWithoutAWordIfNothingWasChanged) {
    open_read_only();
    EXPECT_TRUE(watch.read_only().is_read_only());
    netzteil_anzeigen(session, 2, desk);
    netzteil_anzeigen(session, 1, desk);
    EXPECT_THAT(names_beside(), ElementsAre("ve.dat"));
    ASSERT_NE(session.arbeitsordner, nullptr);
    const std::string copies = session.arbeitsordner->path();
    EXPECT_FALSE(std::filesystem::is_empty(copies));
    leave();
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_FALSE(std::filesystem::exists(copies));
    EXPECT_EQ(file_bytes(path), before);
}

TEST_F(UnwritableFile, AWritableOneIsWrittenAsEver) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    EXPECT_FALSE(watch.read_only().is_read_only());
    EXPECT_EQ(session.arbeitsordner, nullptr);
    leave();
    EXPECT_THAT(file_bytes(path), HasSubstr("Objekte"));
}

TEST_F(UnwritableFile, AProtectedFileInAWritableFolderIsReadOnly) {
    open_read_only();
    leave();
    user.reset();
    std::filesystem::permissions(folder.path("netze"), std::filesystem::perms(0777));
    open_read_only();
    EXPECT_TRUE(watch.read_only().is_read_only());
}

TEST_F(UnwritableFile, ChangesAreAskedAboutAndGoToAnotherFile) {
    open_read_only();
    move_label();
    answers = {{Choice::elsewhere, folder.path("frei/ve_neu.dat")}};
    leave();
    ASSERT_THAT(asked, SizeIs(1));
    EXPECT_THAT(asked[0], HasSubstr(path + ": Die Graphikdatei ist schreibgeschützt."));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_EQ(file_bytes(path), before);
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("\"2\" 70.0 0.0"));
    EXPECT_THAT(file_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("NETZTEIL B"));
}

TEST_F(UnwritableFile, AChangeInAPartThatWasLeftCounts) {
    open_read_only();
    move_label();
    netzteil_anzeigen(session, 2, desk);
    answers = {{Choice::elsewhere, folder.path("frei/ve_neu.dat")}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("\"2\" 70.0 0.0"));
}

TEST_F(UnwritableFile, EachKindOfHandWorkIsAChange) {
    const std::vector<std::function<void()>> changes{
        [this] { session.part.obj.obj_pube = 0; },
        [this] { session.part.titel[0].setTitelText("Netz"); },
        [this] { session.part.titel[2].setTitelText("Titel"); },
        [this] { session.vektor_massstab[6] = 0.25; },
        [this] { session.part.plot.plot_null_hoch += 1; },
        [this] { session.part.plot.plot_legendenlage = 1; },
        [this] { session.netz[2].netz_massstab = 0.01; },
        [this] { session.part.pu[1].pu_bez_hoch = 10; },
        [this] { session.part.nuoff[session.part.nuoff.append()].nuoff_bez = "5707"; },
    };
    answers = {{Choice::discard, {}}};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        asked.clear();
        user.reset();
        open_read_only();
        changes[i]();
        leave();
        EXPECT_THAT(asked, SizeIs(1)) << i;
        EXPECT_EQ(session.datei_geladen, 0);
    }
    EXPECT_EQ(file_bytes(path), before);
}

TEST_F(UnwritableFile, PlottingIsNoChange) {
    path =
        folder.file("netze/ve.dat",
                    "NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
                    "NETZTEIL B\nPUNKTSIGNATUR 110 120 0 0 1 \"3\"\nPUNKTSIGNATUR 160 180 0 0 0\n");
    test::ScriptedPrinter printer;
    desk.printer = &printer;
    take_printer(session, &printer);
    answers = {{Choice::discard, {}}};
    open_read_only();
    session.netz[2].netz_plotmarke = table_true;
    ASSERT_TRUE(plotten_alle(session, desk));
    ASSERT_TRUE(plotten_aktuell(session, desk));
    leave();
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(UnwritableFile, OkInADialogIsNoChange) {
    answers = {{Choice::discard, {}}};
    path = folder.file(
        "netze/ve.dat",
        from_utf8("VERFAHRENLEGENDE  Netz \nMAßSTABVEKTOREN 2.5 1 1 1 1 3\n"
                  "OBJEKTE 1 1 3 0 1 1 0 1 1 3 1 1 1 3 1\nTITEL3 drei\n"
                  "MAßSTABGRUNDRISS 5000.4 3499900.0004 5599950 73\n"
                  "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\" 33.33 4\n"
                  "PUNKTSIGNATUR 3500100 5600100 0 0 0 \"2\"\nNUMBEZOFFSET \"L\" 5707 10 20\n"
                  "LAGEÄNDERUNG 3500000 5600000 1 1 1 \"2018\" 5 6\n"
                  "DISTANZ 3500000 5600000 3500100 5600100 42.0 0.8 0.6\n"));
    open_read_only();
    const ObjectSelection before_ok = session.part.obj;
    auswahl_uebernehmen(session, before_ok, SelectionLeft::by_ok, desk);
    static_cast<void>(display_begin(session));
    ASSERT_TRUE(display_accept(session, measurer, nullptr));
    std::array<LegendEntry, legend_line_count> lines;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        lines[i] = legend_entry(session, i + 1);
    }
    legend_accept(session, lines, session.part.plot.plot_legendenlage);
    leave();
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(UnwritableFile, AChangeBeforeThePlotStaysOne) {
    test::ScriptedPrinter printer;
    desk.printer = &printer;
    take_printer(session, &printer);
    open_read_only();
    move_label();
    ASSERT_TRUE(plotten_alle(session, desk));
    answers = {{Choice::discard, {}}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
}

TEST_F(UnwritableFile, CountedSheetsAreNoChange) {
    answers = {{Choice::discard, {}}};
    open_read_only();
    ASSERT_EQ(session.part.plot.plot_blatt_auto, table_true);
    ++session.part.plot.plot_blatt_rechts;  // as another paper has it
    leave();
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(UnwritableFile, SettingsTakenOverAreAChange) {
    const std::string other =
        folder.file("frei/ve_alt.dat", "NETZTEIL A\nPUNKTSIGNATUR 40 60 0 0 0 \"2\" 12 34\n");
    open_read_only();
    einstellungen_uebernehmen(session, other, desk);
    ASSERT_EQ(session.part.pu[2].pu_bez_rechts, 12);
    netzteil_anzeigen(session, 2, desk);
    answers = {{Choice::elsewhere, folder.path("frei/ve_neu.dat")}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
    EXPECT_EQ(file_bytes(path), before);
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("\"2\" 12.0 34.0"));
}

TEST_F(UnwritableFile, SettingsKeptAcrossARewriteAreAChange) {
    const std::string rewritten = "NETZTEIL A\nPUNKTSIGNATUR 40 61 0 0 0 \"2\"\n";
    open_read_only();
    move_label();
    rewrite_elsewhere(rewritten);
    geaenderte_datei_pruefen(session, desk);
    ASSERT_EQ(session.part.pu[1].pu_hoch, 61);
    answers = {{Choice::elsewhere, folder.path("frei/ve_neu.dat")}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
    EXPECT_EQ(file_bytes(path), rewritten);
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("\"2\" 70.0 0.0"));
}

TEST_F(UnwritableFile, ARewriteThatIsNotReadIsNotSaidToBeOverwritten) {
    open_read_only();
    rewrite_elsewhere("NETZTEIL A\n");
    ui.answer = false;
    geaenderte_datei_pruefen(session, desk);
    ASSERT_THAT(ui.texts, SizeIs(1));
    EXPECT_THAT(ui.texts[0], Not(HasSubstr("überschrieben")));
    EXPECT_THAT(ui.texts[0], HasSubstr("schreibgeschützt"));
    leave();
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_EQ(file_bytes(path), "NETZTEIL A\n");
}

TEST_F(UnwritableFile, WhatFailsIsAskedAboutAgain) {
    open_read_only();
    move_label();
    answers = {{Choice::again, {}},
               {Choice::elsewhere, folder.path("netze/ve_neu.dat")},
               {Choice::elsewhere, folder.path("frei/ve_neu.dat")}};
    leave();
    ASSERT_THAT(asked, SizeIs(3));
    EXPECT_THAT(asked[1], HasSubstr(path + ": Datei kann nicht geschrieben werden"));
    EXPECT_THAT(asked[2], HasSubstr("netze/ve_neu.dat: Datei kann nicht geschrieben werden"));
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")), HasSubstr("\"2\" 70.0 0.0"));
}

TEST_F(UnwritableFile, TheFileItselfTakesThemWhenItsProtectionHasGone) {
    open_read_only();
    move_label();
    answers = {{Choice::again, {}}};
    user.reset();
    allow(true);
    leave();
    EXPECT_THAT(squeezed_bytes(path), HasSubstr("\"2\" 70.0 0.0"));
}

TEST_F(UnwritableFile, WithNobodyThereChangesAreRescued) {
    open_read_only();
    move_label();
    std::string told;
    try {
        datei_zurueckschreiben(session, desk, Attendance::nobody);
    } catch (const FatalError& error) {
        told = error.what();
    }
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_THAT(told, HasSubstr("schreibgeschützt"));
    EXPECT_THAT(told, HasSubstr(folder.path("frei/ve.dat_1")));
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve.dat_1")), HasSubstr("\"2\" 70.0 0.0"));
}

TEST_F(UnwritableFile, AFolderThatComesBackTakesThem) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    move_label();
    std::filesystem::rename(folder.path("netze"), folder.path("weg"));
    EXPECT_TRUE(file_out_of_reach(session));
    answers = {{Choice::again, {}}};
    at_question = [this] {
        if (asked.size() == 2) {
            std::filesystem::rename(folder.path("weg"), folder.path("netze"));
        }
    };
    leave();
    EXPECT_THAT(asked, SizeIs(2));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_THAT(squeezed_bytes(path), HasSubstr("\"2\" 70.0 0.0"));
    watch.leave();
    EXPECT_THAT(names_beside(), ElementsAre("ve.dat"));
}

TEST_F(UnwritableFile, AFolderThatHasVanishedMayBeGivenUp) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    netzteil_anzeigen(session, 2, desk);
    std::filesystem::rename(folder.path("netze"), folder.path("weg"));
    answers = {{Choice::discard, {}}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
    EXPECT_EQ(session.datei_geladen, 0);
    std::filesystem::rename(folder.path("weg"), folder.path("netze"));
    EXPECT_EQ(file_bytes(path), before);
}

TEST_F(UnwritableFile, OfAFolderThatHasVanishedAnotherFileTakesWhatIsInMemory) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    move_label();
    std::filesystem::rename(folder.path("netze"), folder.path("weg"));
    answers = {{Choice::elsewhere, folder.path("frei/ve_neu.dat")}, {Choice::discard, {}}};
    leave();
    EXPECT_THAT(asked, SizeIs(1));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_THAT(squeezed_bytes(folder.path("frei/ve_neu.dat")),
                HasSubstr("Punktsignatur 10.000 20.000 0 0 1 \"1\" 0.0 0.0\r\n"
                          "Punktsignatur 40.000 60.000 0 0 0 \"2\" 70.0 0.0\r\n"
                          "NETZTEIL B\r\n"));
    ASSERT_THAT(ui.texts, SizeIs(1));
    EXPECT_THAT(ui.texts[0],
                HasSubstr(folder.path("frei/ve_neu.dat") + "\nenthält, was im Speicher war"));
    std::filesystem::rename(folder.path("weg"), folder.path("netze"));
    EXPECT_EQ(file_bytes(path), before);
}

TEST_F(UnwritableFile, AFolderThatComesBackAfterAnotherPlaceFailedLosesNothing) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    move_label();
    std::filesystem::rename(folder.path("netze"), folder.path("weg"));
    answers = {{Choice::elsewhere, folder.path("fort/ve_neu.dat")}, {Choice::again, {}}};
    at_question = [this] {
        if (asked.size() == 2) {
            std::filesystem::rename(folder.path("weg"), folder.path("netze"));
        }
    };
    leave();
    EXPECT_THAT(asked, SizeIs(2));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_THAT(squeezed_bytes(path), HasSubstr("\"2\" 70.0 0.0"));
    EXPECT_THAT(squeezed_bytes(path), HasSubstr("PUNKTSIGNATUR 160 180 0 0 0 \"4\""));
    EXPECT_THAT(ui.texts, IsEmpty());
}

}  // namespace
}  // namespace veldra
