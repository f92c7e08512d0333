// What a start leaves in session and run, and how recent files are told apart.
#include <filesystem>

#include <gtest/gtest.h>

#include "commands/lifecycle.h"
#include "commands/startup.h"
#include "os/files.h"
#include "temp_file.h"

namespace veldra {
namespace {

class StartState : public testing::Test {
 protected:
    StartState() {
        for (const char* name : {"dokumente/Kelvara", "windows", "programm"}) {
            std::filesystem::create_directories(folder.path(name));
        }
        run.folders = {folder.path("dokumente"), folder.path("windows"), folder.path("programm")};
    }
    void start(const std::string& project) {
        run.befehlszeile = project;
        start_vorbereiten(session, run);
        startprofil_lesen(session, run);
    }

    testing_support::TempFolder folder;
    ProgramRun run;
    Session session;
};

TEST_F(StartState, APlainStartUsesThePlainProfile) {
    start("");
    EXPECT_EQ(run.ini_datei, folder.path("dokumente/Kelvara/VELDRA.INI"));
    EXPECT_EQ(session.graphikdatei, "");
    EXPECT_TRUE(run.programm_aktiv);
}

TEST_F(StartState, APlainStartTakesTheRecentFiles) {
    (void)folder.file("dokumente/Kelvara/VELDRA.INI",
                      "[GRAPHIKDATEIEN]\r\nGraphikdatei_1=/netze/eins.dat\r\n"
                      "Graphikdatei_3=/netze/drei.dat\r\n");
    start("");
    EXPECT_EQ(session.zuletzt_datei[1], "/netze/eins.dat");
    EXPECT_EQ(session.zuletzt_datei[2], "");
    EXPECT_EQ(session.zuletzt_datei[3], "/netze/drei.dat");
}

TEST_F(StartState, AProjectNamesItsFile) {
    (void)folder.file("dokumente/Kelvara/projekt.ini",
                      "[VELDRA]\r\nGraphikdatei=/netze/projekt.dat\r\n");
    start("projekt.ini");
    EXPECT_EQ(run.ini_datei, folder.path("dokumente/Kelvara/projekt.ini"));
    EXPECT_EQ(session.graphikdatei, "/netze/projekt.dat");
}

/// Names are compared without regard to case, from the first letter on.
TEST(RecentFiles, ANameInOtherLettersIsTheSameFile) {
    Session session;
    session.zuletzt_datei = {"", "eins.dat", "netz.dat", "drei.dat", "vier.dat"};
    session.graphikdatei = "Netz.dat";
    zuletzt_aktualisieren(session);
    EXPECT_EQ(session.zuletzt_datei[1], "Netz.dat");
    EXPECT_EQ(session.zuletzt_datei[2], "eins.dat");
    EXPECT_EQ(session.zuletzt_datei[3], "drei.dat");
    EXPECT_EQ(session.zuletzt_datei[4], "vier.dat");
}

}  // namespace
}  // namespace veldra
