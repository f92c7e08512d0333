// Leaving a file: what reaches it, and what happens to the user's work when nothing can.
#include "commands/write_back.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "child_process.h"
#include "commands/file_commands.h"
#include "commands/file_watch.h"
#include "commands/plot_job.h"
#include "dialogs/object_selection.h"
#include "fake_measurer.h"
#include "graphikdatei/writer.h"
#include "other_user.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using testing_support::file_bytes;
using testing_support::not_permitted;
using testing_support::run_in_child;

constexpr const char* parts_with_two_points =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 5 6 9\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 500 7 8 9\n"
    "PUNKTSIGNATUR 110 120 0 0 1 \"3\"\nPUNKTSIGNATUR 160 180 0 0 0 \"4\"\n";

/// A file with each run of blanks as one.
std::string squeezed(const std::string& path) {
    std::string bytes = file_bytes(path);
    const auto both_blank = [](char a, char b) { return a == ' ' && b == ' '; };
    bytes.erase(std::unique(bytes.begin(), bytes.end(), both_blank), bytes.end());
    return bytes;
}

/// What the moved label of point 2 becomes.
constexpr const char* moved_label = "\"2\" 70.0 -30.0";

class WriteBack : public testing_support::SessionOnFile {
 protected:
    void SetUp() override {
        std::filesystem::create_directory(folder.path("netze"));
        path = folder.file("netze/ve.dat", from_utf8(parts_with_two_points));
        desk.rescue_folder = folder.path("dokumente/Kelvara");
        run.ini_datei = folder.path("VELDRA.INI");
        run.programm_aktiv = true;
    }

    /// Opens the file and moves the label of point 2 and the sheets of part A.
    void open_and_move() {
        datei_neu_laden(session, path, OpenedBy::open_command, desk);
        session.pu[2].pu_bez_rechts = 70;
        session.pu[2].pu_bez_hoch = -30;
        session.plot.plot_null_rechts = 3.5;
    }

    /// From now on no copy finds a place beside the file.
    void let_copies_fail() { session.arbeitsdatei_basis = folder.path("netze/fort/ve.dat"); }

    /// What the failure to leave the file says.
    std::string refusal(Attendance attendance = Attendance::user) {
        try {
            datei_zurueckschreiben(session, desk, attendance);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "";
    }

    /// What the user is told of a command that breaks off.
    template <typename Act>
    std::string failure(const Act& act) {
        try {
            act();
        } catch (const FatalError& error) {
            return abandon_file(session, desk, error.what(), WorkingCopy::outdated).what();
        }
        return "";
    }

    void rewrite_file(std::string_view text) const {
        std::filesystem::remove(path);  // the new one has another time and another number
        (void)folder.file("netze/ve.dat", text);
    }

    static bool holds_all_changes(const std::string& copy) {
        const std::string bytes = squeezed(copy);
        return bytes.find(moved_label) != std::string::npos &&
               bytes.find("3.500") != std::string::npos &&
               bytes.find("NETZTEIL B") != std::string::npos;
    }

    std::string path;
    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    FileWatch watch;
    Desk desk{measurer, ui, [] {}, nullptr, nullptr, &watch};
    ProgramRun run;
};

TEST_F(WriteBack, LeavingWritesEverythingAndLeavesNoCopies) {
    open_and_move();
    EXPECT_EQ(refusal(), "");
    EXPECT_TRUE(holds_all_changes(path));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_FALSE(datei_vorhanden(path + "_1"));
    EXPECT_TRUE(ui.texts.empty());
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(WriteBack, WithoutAFileNothingHappens) {
    datei_zurueckschreiben(session, desk);
    EXPECT_TRUE(ui.pointers.empty());
}

TEST_F(WriteBack, FileThatCannotBeReplacedLeavesItsWorkingCopy) {
    open_and_move();
    netzteil_anzeigen(session, 2, desk);  // the passes read the working copy from now on
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    const std::string text = refusal();
    EXPECT_THAT(text, StartsWith(path + ": Datei kann nicht geschrieben werden: "
                                        "ist ein Verzeichnis\n"));
    EXPECT_THAT(text, HasSubstr(path + "_2\n"));
    EXPECT_TRUE(holds_all_changes(path + "_2"));
    EXPECT_EQ(session.datei_geladen, 0);
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(WriteBack, CopyThatFindsNoRoomBesideTheFileGoesToTheUsersFolder) {
    open_and_move();
    let_copies_fail();
    const std::string rescued = folder.path("dokumente/Kelvara/ve.dat_1");
    const std::string text = refusal();
    EXPECT_THAT(text, StartsWith(folder.path("netze/fort/ve.dat_1") +
                                 ": Datei kann nicht geschrieben werden: "));
    EXPECT_THAT(text, HasSubstr(rescued + "\n"));
    EXPECT_TRUE(holds_all_changes(rescued));
    EXPECT_EQ(file_bytes(path), from_utf8(parts_with_two_points));
}

TEST_F(WriteBack, RescuedCopyOverwritesNoEarlierOne) {
    std::filesystem::create_directories(folder.path("dokumente/Kelvara"));
    (void)folder.file("dokumente/Kelvara/ve.dat_1", "earlier");
    open_and_move();
    let_copies_fail();
    const std::string rescued = folder.path("dokumente/Kelvara/ve.dat-2_1");
    EXPECT_THAT(refusal(), HasSubstr(rescued));
    EXPECT_TRUE(holds_all_changes(rescued));
    EXPECT_EQ(file_bytes(folder.path("dokumente/Kelvara/ve.dat_1")), "earlier");
}

TEST_F(WriteBack, RescuedCopyFollowsNoLink) {
    std::filesystem::create_directories(desk.rescue_folder);
    const std::string link = folder.path("dokumente/Kelvara/ve.dat_1");
    for (const char* target : {"victim", "fehlt"}) {
        (void)folder.file("victim", "stays");
        std::filesystem::remove(link);
        std::filesystem::create_symlink(folder.path(target), link);
        open_and_move();
        let_copies_fail();
        EXPECT_THAT(refusal(), HasSubstr("ve.dat-"));
        EXPECT_TRUE(std::filesystem::is_symlink(link));
        EXPECT_EQ(file_bytes(folder.path("victim")), "stays");
        EXPECT_FALSE(datei_vorhanden(folder.path("fehlt")));
    }
    EXPECT_TRUE(holds_all_changes(folder.path("dokumente/Kelvara/ve.dat-2_1")));
    EXPECT_TRUE(holds_all_changes(folder.path("dokumente/Kelvara/ve.dat-3_1")));
}

TEST_F(WriteBack, RescuedCopyIsAsPrivateAsItsFile) {
    for (const auto mode : {0600U, 0640U, 0664U}) {
        std::filesystem::permissions(path, std::filesystem::perms(mode));
        open_and_move();
        let_copies_fail();
        EXPECT_THAT(refusal(), HasSubstr("Ihr Stand bleibt"));
        const std::string copy = folder.path("dokumente/Kelvara/ve.dat_1");
        EXPECT_EQ(std::filesystem::status(copy).permissions(), std::filesystem::perms(mode));
        std::filesystem::remove(copy);
    }
}

TEST_F(WriteBack, FilePutInThePlaceOfTheCopyIsNotTakenForIt) {
    open_and_move();
    arbeitskopie_schreiben(session);
    std::filesystem::remove(path + "_1");
    const std::string foreign = "NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n";
    (void)folder.file("netze/ve.dat_1", foreign);
    const std::string text = abandon_file(session, desk, "Grund", WorkingCopy::written).what();
    EXPECT_EQ(file_bytes(path + "_1"), foreign);
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + path + "_2"));
}

/// The rewritten file has no place for the state: all that is known of part A stands in the copy.
constexpr const char* copy_from_memory =
    "VerfahrenLegende %\r\n"
    "MaßstabVektoren 2. 2. 2. 2. 2. 2.\r\n"
    "NETZTEIL A\r\n"
    "MaßstabGrundriss 1000 3.500 6.000 73\r\n"
    "Titel3 drei\r\n"
    "Objekte 1 1 0 0 1 1 3 1 0 1 -99 0 0 -99 0\r\n"
    "Punktsignatur 10.000 20.000 0 0 1 \"1\" 0.0 0.0\r\n"
    "Punktsignatur 40.000 60.000 0 0 0 \"2\" 70.0 -30.0\r\n"
    "NETZTEIL B\r\n"
    "MaßstabGrundriss 500 7.000 8.000 73\r\n";

class Unmergeable : public WriteBack {
 protected:
    void open_and_entitle() {
        open_and_move();
        session.titel[2].setTitelText("drei");
        session.obj = ObjectSelection{};
    }
    [[nodiscard]] std::string expected() const {
        std::string text = copy_from_memory;
        text.replace(text.find('%'), 1, path);
        return from_utf8(text);
    }
};

TEST_F(Unmergeable, FileThatIsGoneIsNamedAndTheCopyComesFromMemory) {
    open_and_entitle();
    std::filesystem::remove(path);
    const std::string text = refusal();
    EXPECT_THAT(text, StartsWith(path + ": Datei kann nicht gelesen werden: "
                                        "Datei oder Verzeichnis nicht vorhanden\n"));
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + path +
                                "_1\nerhalten. Sie enthält, was im Speicher war"));
    EXPECT_EQ(squeezed(path + "_1"), expected());
}

TEST_F(Unmergeable, FileWithAnotherPartIsNotOverwritten) {
    for (const char* others :
         {"", "NETZTEIL C\nPUNKTSIGNATUR 1 2 0 0 1\n", "PUNKTSIGNATUR 1 2 0 0 1\n",
          "PUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL A\n"}) {
        std::filesystem::remove(path + "_1");
        rewrite_file(from_utf8(parts_with_two_points));
        open_and_entitle();
        rewrite_file(others);
        // The recording interface says yes to writing over it.
        EXPECT_THAT(refusal(),
                    StartsWith(path + ": Das angezeigte Netzteil steht nicht mehr in der "
                                      "Datei.\n\nIhr Stand bleibt in der"));
        EXPECT_EQ(file_bytes(path), others);
        EXPECT_EQ(squeezed(path + "_1"), expected());
    }
}

TEST_F(Unmergeable, WithoutConsentTheCopyHoldsTheStateToo) {
    open_and_entitle();
    rewrite_file("NETZTEIL C\nPUNKTSIGNATUR 1 2 0 0 1\n");
    ui.answer = false;
    EXPECT_EQ(refusal(), "");
    ASSERT_EQ(ui.texts.size(), 2U);
    EXPECT_THAT(ui.texts[1], HasSubstr("Sie enthält, was im Speicher war"));
    EXPECT_EQ(squeezed(path + "_1"), expected());
}

TEST_F(Unmergeable, FileThatHasPartsNowTakesNoNamelessOne) {
    rewrite_file("PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n");
    open_and_move();
    rewrite_file("KOPF\nNETZTEIL C\nPUNKTSIGNATUR 1 2 0 0 1\n");
    EXPECT_THAT(refusal(), HasSubstr("Sie enthält, was im Speicher war"));
    EXPECT_THAT(squeezed(path + "_1"), HasSubstr(moved_label));
    EXPECT_THAT(squeezed(path + "_1"), Not(HasSubstr("NETZTEIL")));
}

TEST_F(Unmergeable, LastPartWithoutAnythingMergesAsEver) {
    rewrite_file("NETZTEIL A\nNETZTEIL B\n");
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    netzteil_anzeigen(session, 2, desk);
    EXPECT_EQ(refusal(), "");
    EXPECT_THAT(squeezed(path), HasSubstr("\r\nNETZTEIL B\r\n"));
}

TEST_F(Unmergeable, CopyIsAFileThatOpensWithTheState) {
    open_and_entitle();
    rewrite_file("");
    (void)refusal();
    Session again;
    datei_neu_laden(again, path + "_1", OpenedBy::open_command, desk);
    EXPECT_EQ(again.netz.count(), 2);
    EXPECT_EQ(again.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(again.titel[2].getTitelText(), "drei");
    EXPECT_EQ(again.plot.plot_null_rechts, 3.5);
}

TEST_F(WriteBack, ProtectedFolderNamesFileAndReasonFirst) {
    const std::filesystem::perms all = std::filesystem::perms::all;
    std::filesystem::create_directories(desk.rescue_folder);
    std::filesystem::permissions(desk.rescue_folder, all);
    const int code = run_in_child([this] {
        constexpr uid_t nobody = 65534;
        open_and_move();
        // The protection comes while the file is open.
        std::filesystem::permissions(folder.path("netze"), std::filesystem::perms(0555));
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            return not_permitted;
        }
        const std::string text = refusal();
        const bool named = text.rfind(path +
                                          "_1: Datei kann nicht geschrieben werden: "
                                          "keine Berechtigung\n",
                                      0) == 0;
        const std::string rescued = desk.rescue_folder + "/ve.dat_1";
        const bool told = text.find(rescued) != std::string::npos;
        return named && told && holds_all_changes(rescued) ? 0 : 1;
    });
    std::filesystem::permissions(folder.path("netze"), all);
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become an ordinary user";
    }
    EXPECT_EQ(code, 0);
    EXPECT_EQ(file_bytes(path), from_utf8(parts_with_two_points));
}

TEST_F(WriteBack, ProtectedFileKeepsItsWorkingCopyBeside) {
    const std::filesystem::perms all = std::filesystem::perms::all;
    std::filesystem::permissions(folder.path("netze"), all);
    const int code = run_in_child([this] {
        constexpr uid_t nobody = 65534;
        open_and_move();
        std::filesystem::permissions(path, std::filesystem::perms(0444));
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            return not_permitted;
        }
        const std::string text = refusal();
        const bool named = text.rfind(path +
                                          ": Datei kann nicht geschrieben werden: "
                                          "keine Berechtigung\n",
                                      0) == 0;
        return named && holds_all_changes(path + "_1") ? 0 : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become an ordinary user";
    }
    EXPECT_EQ(code, 0);
    EXPECT_EQ(file_bytes(path), from_utf8(parts_with_two_points));
}

TEST_F(WriteBack, FullDiskIsNamedAndTheCopyGoesWhereThereIsRoom) {
    const int code = run_in_child([this] {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) {
            return not_permitted;
        }
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", folder.path("netze").c_str(), "tmpfs", 0, "size=64k") != 0) {
            return not_permitted;
        }
        // Room for the file and its mark, but not for a copy of it.
        std::string file = from_utf8(parts_with_two_points);
        for (int i = 0; i < 40; ++i) {
            file += "KOMMENTAR " + std::string(1000, 'x') + "\n";
        }
        (void)folder.file("netze/ve.dat", file);
        open_and_move();
        const std::string text = refusal();
        const bool named = text.rfind(path +
                                          "_1: Datei kann nicht geschrieben werden: "
                                          "auf dem Datenträger ist kein Speicherplatz mehr frei",
                                      0) == 0;
        return named && holds_all_changes(desk.rescue_folder + "/ve.dat_1") ? 0 : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system lets the test mount no small disk of its own";
    }
    EXPECT_EQ(code, 0);
}

TEST_F(WriteBack, FileOfAnotherProgramIsOverwrittenOnlyWithConsent) {
    open_and_move();
    rewrite_file("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n");
    EXPECT_EQ(refusal(), "");  // the recording interface says yes
    ASSERT_EQ(ui.styles.size(), 1U);
    EXPECT_EQ(ui.styles[0], MessageStyle::question_no_yes);
    EXPECT_THAT(ui.texts[0], HasSubstr(path));
    EXPECT_THAT(squeezed(path), HasSubstr(moved_label));
    EXPECT_FALSE(datei_vorhanden(path + "_1"));
}

TEST_F(WriteBack, WithoutConsentTheOtherProgramsFileStaysAndSoDoesTheCopy) {
    open_and_move();
    netzteil_anzeigen(session, 2, desk);
    const std::string others = "NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n";
    rewrite_file(others);
    ui.answer = false;
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(file_bytes(path), others);
    EXPECT_TRUE(holds_all_changes(path + "_2"));
    ASSERT_EQ(ui.texts.size(), 2U);
    EXPECT_THAT(ui.texts[1], HasSubstr(path + "_2"));
    EXPECT_EQ(session.datei_geladen, 0);
}

TEST_F(WriteBack, WithNobodyThereNothingIsAskedOrOverwritten) {
    open_and_move();
    netzteil_anzeigen(session, 2, desk);
    rewrite_file("NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n");
    EXPECT_THAT(refusal(Attendance::nobody), HasSubstr(path + "_2"));
    EXPECT_TRUE(ui.texts.empty());
    EXPECT_TRUE(holds_all_changes(path + "_2"));
    EXPECT_EQ(file_bytes(path), "NETZTEIL A\nPUNKTSIGNATUR 1 2 0 0 1\n");
}

TEST_F(WriteBack, WorkingCopyThatCannotBeWrittenAtAChangeOfPartIsRescued) {
    open_and_move();
    let_copies_fail();
    const std::string rescued = folder.path("dokumente/Kelvara/ve.dat_1");
    const std::string text = failure([this] { netzteil_anzeigen(session, 2, desk); });
    EXPECT_THAT(text, StartsWith(folder.path("netze/fort/ve.dat_1") +
                                 ": Datei kann nicht geschrieben werden: "));
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + rescued));
    EXPECT_TRUE(holds_all_changes(rescued));
    EXPECT_EQ(session.datei_geladen, 0);
}

TEST_F(WriteBack, PartThatCannotBeReadLeavesTheMovesOfTheFormerOne) {
    rewrite_file(from_utf8(std::string(parts_with_two_points) + "PUNKTSIGNATUR 1 2 40000 0 1\n"));
    open_and_move();
    const std::string text = failure([this] { netzteil_anzeigen(session, 2, desk); });
    EXPECT_THAT(text, StartsWith("Laufzeitfehler '6': Überlauf"));
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + path + "_2"));
    EXPECT_TRUE(holds_all_changes(path + "_2"));
}

TEST_F(WriteBack, SelectionThatCannotBeReadLeavesTheMoves) {
    // A vector that runs against the order of its points after another one: error 9.
    rewrite_file(
        from_utf8("NETZTEIL A\nMAßSTABGRUNDRISS 1000 5 6 9\n"
                  "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
                  "GPS-RAUMVEKTOR 10 20 10 60 0\nGPS-RAUMVEKTOR 10 60 10 20 0\n"
                  "NETZTEIL B\n"));
    open_and_move();
    const ObjectSelection before = session.obj;
    session.obj.obj_beob = 3;
    const std::string text =
        failure([&] { auswahl_uebernehmen(session, before, SelectionLeft::by_ok, desk); });
    EXPECT_THAT(text, StartsWith("Laufzeitfehler '9'"));
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + path + "_1"));
    EXPECT_TRUE(holds_all_changes(path + "_1"));
    EXPECT_EQ(before.obj_beob, session.obj.obj_beob);
}

TEST_F(WriteBack, PlotOfAPartThatCannotBeReadLeavesTheMovesOfThePartInView) {
    rewrite_file(from_utf8(std::string(parts_with_two_points) + "PUNKTSIGNATUR 1 2 40000 0 1\n"));
    test::ScriptedPrinter printer;
    take_printer(session, &printer);
    desk.printer = &printer;
    open_and_move();
    const std::string text = failure([this] { (void)plotten_alle(session, desk); });
    EXPECT_GT(printer.heights_measured, 0);  // the part in view was plotted first
    EXPECT_THAT(text, StartsWith("Laufzeitfehler '6': Überlauf"));
    EXPECT_THAT(text, HasSubstr("Ihr Stand bleibt in der Arbeitskopie\n" + path + "_1"));
    EXPECT_TRUE(holds_all_changes(path + "_1"));
    EXPECT_THAT(squeezed(path + "_1"), HasSubstr("NETZTEIL B"));
    EXPECT_THAT(squeezed(path + "_1"), HasSubstr("PUNKTSIGNATUR 1 2 40000 0 1"));
    EXPECT_EQ(session.datei_geladen, 0);
}

/// In a folder that a group shares: the file of another user, opened by one of the group.
class WriteBackOfAnother : public WriteBack {
 protected:
    /// Runs `body` as the other user; 0 if it holds.
    int as_colleague(const std::function<bool()>& body) {
        namespace who = testing_support;
        return run_in_child([&] {
            const std::string folder_path = folder.path("netze");
            const bool shared = ::chown(folder_path.c_str(), who::anna, who::surveyors) == 0 &&
                                ::chmod(folder_path.c_str(), 0770) == 0 &&
                                ::chmod(path.c_str(), 0660) == 0 &&
                                ::chown(path.c_str(), who::anna, who::surveyors) == 0 &&
                                ::chmod(folder.path().c_str(), 0755) == 0;
            const who::AsUser user(who::bert, who::surveyors);
            if (!shared || !user.became()) {
                return not_permitted;
            }
            open_and_move();
            return body() ? 0 : 1;
        });
    }

    void expect_as_colleague(const std::function<bool()>& body) {
        const int code = as_colleague(body);
        if (code == not_permitted) {
            GTEST_SKIP() << "this system does not let the test become another user";
        }
        EXPECT_EQ(code, 0);
    }
};

TEST_F(WriteBackOfAnother, IsWrittenWithConsentWhichIsAskedForOnce) {
    expect_as_colleague([this] {
        const bool first = refusal().empty() && ui.texts.size() == 1 &&
                           ui.styles[0] == MessageStyle::question_yes_no &&
                           ui.texts[0].find("ihren Besitzer (64101) nicht") != std::string::npos &&
                           holds_all_changes(path);
        {
            // Anna takes it back.
            const bool back = ::seteuid(0) == 0 &&
                              ::chown(path.c_str(), testing_support::anna, ::getegid()) == 0 &&
                              ::seteuid(testing_support::bert) == 0;
            if (!back) {
                return false;
            }
        }
        open_and_move();
        return first && refusal().empty() && ui.texts.size() == 1;
    });
}

TEST_F(WriteBackOfAnother, StaysWithoutConsentAndSoDoesTheCopy) {
    expect_as_colleague([this] {
        ui.answer = false;
        const std::string before = file_bytes(path);
        return refusal().empty() && ui.texts.size() == 2 && file_bytes(path) == before &&
               ui.texts[1].find("bleibt, wem sie gehört") != std::string::npos &&
               ui.texts[1].find(path + "_1\n") != std::string::npos &&
               holds_all_changes(path + "_1");
    });
}

TEST_F(WriteBackOfAnother, IsWrittenWithoutAQuestionWhenNobodyIsThere) {
    expect_as_colleague([this] {
        return refusal(Attendance::nobody).empty() && ui.texts.empty() && holds_all_changes(path);
    });
}

TEST_F(WriteBack, FailureWithoutAFileIsToldAsItIs) {
    EXPECT_STREQ(abandon_file(session, desk, "Grund", WorkingCopy::outdated).what(), "Grund");
    EXPECT_FALSE(datei_vorhanden(path + "_1"));
}

TEST_F(WriteBack, EndWritesTheProfileAlsoWhenTheFileCannotBeWritten) {
    open_and_move();
    let_copies_fail();
    EXPECT_THROW(programm_ende(session, run, desk), FatalError);
    EXPECT_THAT(file_bytes(run.ini_datei), HasSubstr("Graphikdatei_1=" + path));
    EXPECT_FALSE(run.programm_aktiv);
}

TEST_F(WriteBack, EndTellsAllThatFailed) {
    open_and_move();
    let_copies_fail();
    std::filesystem::create_directory(run.ini_datei);
    try {
        programm_ende(session, run, desk);
        FAIL() << "no error";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), StartsWith(folder.path("netze/fort/ve.dat") + "_1: "));
        EXPECT_THAT(error.what(), HasSubstr("\n\n" + run.ini_datei + ": "));
    }
}

TEST_F(WriteBack, EndFreesTheFileForOthers) {
    open_and_move();
    FileWatch other;
    EXPECT_FALSE(other.reserve(path));
    programm_ende(session, run, desk);
    EXPECT_TRUE(other.reserve(path));
}

TEST_F(WriteBack, RewrittenFileIsReadAnewOnRequestAndKeepsThePart) {
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    netzteil_anzeigen(session, 2, desk);
    session.pu[1].pu_bez_rechts = 70;
    rewrite_file("NETZTEIL C\nPUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL B\nPUNKTSIGNATUR 5 6 0 0 1\n");
    geaenderte_datei_pruefen(session, desk);
    ASSERT_EQ(ui.styles.size(), 2U);
    EXPECT_EQ(ui.styles[0], MessageStyle::question_yes_no);
    EXPECT_EQ(ui.styles[1], MessageStyle::information);
    EXPECT_EQ(session.netz.count(), 2);
    EXPECT_EQ(session.netz_aktuell, 2);
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_rechts, 5);
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 0);
    EXPECT_EQ(session.datei_geladen, 1);
    geaenderte_datei_pruefen(session, desk);
    EXPECT_EQ(ui.styles.size(), 2U);  // it is the known one now
}

TEST_F(WriteBack, RewrittenFileThatIsNotWantedIsOverwrittenWithoutAnotherQuestion) {
    open_and_move();
    netzteil_anzeigen(session, 2, desk);
    rewrite_file("NETZTEIL C\nPUNKTSIGNATUR 1 2 0 0 1\n");
    ui.answer = false;
    geaenderte_datei_pruefen(session, desk);
    EXPECT_EQ(session.netz.count(), 2);
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(ui.texts.size(), 1U);
    EXPECT_TRUE(holds_all_changes(path));
}

TEST_F(WriteBack, FileThatIsTheSameIsNotAskedAbout) {
    open_and_move();
    geaenderte_datei_pruefen(session, desk);
    netzteil_anzeigen(session, 2, desk);
    geaenderte_datei_pruefen(session, desk);
    EXPECT_TRUE(ui.texts.empty());
}

TEST_F(WriteBack, FileOpenElsewhereIsToldBeforeTheOpenOneIsLeft) {
    const std::string other_path = folder.file("ve_2.dat", from_utf8(parts_with_two_points));
    open_and_move();
    FileWatch other;
    ASSERT_TRUE(other.reserve(other_path));
    ui.answer = false;
    datei_neu_laden(session, other_path, OpenedBy::open_command, desk);
    ASSERT_EQ(ui.styles.size(), 1U);
    EXPECT_EQ(ui.styles[0], MessageStyle::question_no_yes);
    EXPECT_THAT(ui.texts[0], HasSubstr(other_path));
    EXPECT_THAT(ui.texts[0], HasSubstr(" auf "));  // who has it open
    EXPECT_EQ(session.graphikdatei, path);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    EXPECT_EQ(file_bytes(path), from_utf8(parts_with_two_points));
    ui.answer = true;
    datei_neu_laden(session, other_path, OpenedBy::open_command, desk);
    EXPECT_EQ(session.graphikdatei, other_path);
    EXPECT_TRUE(holds_all_changes(path));
}

TEST_F(WriteBack, OpeningTheOpenFileAgainIsNotAClashWithItself) {
    open_and_move();
    datei_neu_laden(session, path, OpenedBy::open_command, desk);
    EXPECT_TRUE(ui.texts.empty());
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 70);
    FileWatch other;
    EXPECT_FALSE(other.reserve(path));
}

}  // namespace
}  // namespace veldra
