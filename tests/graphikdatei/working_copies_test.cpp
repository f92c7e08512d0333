// What has the name of a working copy and is none stays as it is; what the session has made itself
// is used and goes with the file.
#include "graphikdatei/working_copies.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphikdatei/writer.h"
#include "os/files.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;

constexpr const char* one_part = "NETZTEIL A\r\nPUNKTSIGNATUR 10 20 0 0 1 \"1\" 0 0\r\n";

class WorkingCopies : public testing_support::SessionOnFile {
 protected:
    void open() {
        read_points(one_part);
        session.datei_geladen = 1;
        session.titel[1].setTitelText("neu");
    }

    /// Names of the files there are, in order.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    using Names = std::vector<std::string>;
};

TEST_F(WorkingCopies, LinkIsNotFollowedAndStays) {
    open();
    const std::string victim = folder.file("victim", "stays");
    for (const char* suffix : {"_1", "_2"}) {
        std::filesystem::create_symlink(victim, session.graphikdatei + suffix);
    }
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat-2_1"));
    EXPECT_NE(file_bytes(working_path(session)).find("Titel2 neu"), std::string::npos);
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat-2_2"));
    endfassung_schreiben(session);
    EXPECT_EQ(file_bytes(victim), "stays");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("ve.dat_1")));
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1", "ve.dat_2", "victim"}));
    EXPECT_NE(file_text().find("Titel2 neu"), std::string::npos);
}

TEST_F(WorkingCopies, LinkThatLeadsNowhereMakesNoFileThere) {
    open();
    std::filesystem::create_symlink(folder.path("victim"), session.graphikdatei + "_1");
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1"}));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("ve.dat_1")));
}

TEST_F(WorkingCopies, FileOfSomebodyElseStays) {
    open();
    for (const char* suffix : {"_1", "_2"}) {
        (void)folder.file(std::string("ve.dat") + suffix, "notes");
    }
    arbeitskopie_schreiben(session);
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1", "ve.dat_2"}));
    EXPECT_EQ(file_bytes(folder.path("ve.dat_1")), "notes");
    EXPECT_EQ(file_bytes(folder.path("ve.dat_2")), "notes");
}

TEST_F(WorkingCopies, OneOfTheTwoNamesIsTaken) {
    open();
    (void)folder.file("ve.dat_2", "notes");
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat_1"));
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat-2_2"));
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat-2_1"));
    endfassung_schreiben(session);
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_2"}));
    EXPECT_EQ(file_bytes(folder.path("ve.dat_2")), "notes");
}

TEST_F(WorkingCopies, CopyOfAnEarlierSessionStays) {
    open();
    arbeitskopie_schreiben(session);
    const std::string earlier = file_bytes(folder.path("ve.dat_1"));
    Session other;
    other.graphikdatei = other.arbeitsdatei_basis = session.graphikdatei;
    kopf_lesen(other);
    other.datei_geladen = 1;
    arbeitskopie_schreiben(other);
    endfassung_schreiben(other);
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1"}));
    EXPECT_EQ(file_bytes(folder.path("ve.dat_1")), earlier);
}

TEST_F(WorkingCopies, FilePutInThePlaceOfACopyStays) {
    open();
    arbeitskopie_schreiben(session);
    arbeitskopie_schreiben(session);
    std::filesystem::remove(folder.path("ve.dat_1"));
    (void)folder.file("ve.dat_1", "notes");
    arbeitskopie_schreiben(session);
    EXPECT_EQ(working_path(session), folder.path("ve.dat-2_1"));
    endfassung_schreiben(session);
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1"}));
    EXPECT_EQ(file_bytes(folder.path("ve.dat_1")), "notes");
}

TEST_F(WorkingCopies, OwnCopiesAreWrittenInTurnAndGoWithTheFile) {
    open();
    for (int i = 0; i < 4; ++i) {
        arbeitskopie_schreiben(session);
    }
    EXPECT_EQ(names(), (Names{"ve.dat", "ve.dat_1", "ve.dat_2"}));
    endfassung_schreiben(session);
    EXPECT_EQ(names(), (Names{"ve.dat"}));
    EXPECT_TRUE(session.arbeitskopien.empty());
}

TEST_F(WorkingCopies, AreAsPrivateAsTheFile) {
    for (const auto mode : {0600U, 0640U, 0664U}) {
        open();
        std::filesystem::permissions(session.graphikdatei, std::filesystem::perms(mode));
        arbeitskopie_schreiben(session);
        arbeitskopie_schreiben(session);
        for (const char* name : {"ve.dat_1", "ve.dat_2"}) {
            EXPECT_EQ(std::filesystem::status(folder.path(name)).permissions(),
                      std::filesystem::perms(mode));
        }
        endfassung_schreiben(session);
        EXPECT_EQ(std::filesystem::status(session.graphikdatei).permissions(),
                  std::filesystem::perms(mode));
    }
}

TEST_F(WorkingCopies, FileMayItselfBeALink) {
    read_points(one_part);
    const std::string file = session.graphikdatei;
    std::filesystem::create_directory(folder.path("sub"));
    std::filesystem::rename(file, folder.path("sub/real.dat"));
    std::filesystem::create_symlink("sub/real.dat", file);
    session.datei_geladen = 1;
    session.titel[1].setTitelText("neu");
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_NE(file_bytes(folder.path("sub/real.dat")).find("Titel2 neu"), std::string::npos);
    EXPECT_EQ(names(), (Names{"sub", "ve.dat"}));
}

TEST_F(WorkingCopies, CopiesAsideLieInAPrivateFolderThatGoesWithTheFile) {
    open();
    keep_copies_aside(session);
    arbeitskopie_schreiben(session);
    arbeitskopie_schreiben(session);
    const std::filesystem::path copy = working_path(session);
    EXPECT_EQ(names(), (Names{"ve.dat"}));
    EXPECT_EQ(copy.filename(), "ve.dat_2");
    EXPECT_EQ(std::filesystem::status(copy.parent_path()).permissions(),
              std::filesystem::perms::owner_all);
    endfassung_schreiben(session);
    EXPECT_FALSE(std::filesystem::exists(copy.parent_path()));
    EXPECT_NE(file_text().find("Titel2 neu"), std::string::npos);
}

TEST_F(WorkingCopies, LongestNamesAreWrittenAsAnyOther) {
    for (const std::size_t size : {std::size_t{236}, std::size_t{238}, std::size_t{244},
                                   std::size_t{253}, std::size_t{254}, std::size_t{255}}) {
        std::string name(size - 5, 'n');
        name += "\xC3\xA4.df";
        session = Session();
        session.graphikdatei = session.arbeitsdatei_basis = folder.file(name, one_part);
        kopf_lesen(session);
        punkt_lesen(session);
        session.datei_geladen = 1;
        session.titel[1].setTitelText("neu");
        arbeitskopie_schreiben(session);
        arbeitskopie_schreiben(session);
        endfassung_schreiben(session);
        EXPECT_NE(file_text().find("Titel2 neu"), std::string::npos) << size;
        EXPECT_EQ(names(), (Names{name}));
        std::filesystem::remove(session.graphikdatei);
    }
}

}  // namespace
}  // namespace veldra
