#include "commands/startup.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "recording_interface.h"
#include "temp_file.h"

namespace veldra {
namespace {

class CommandLine : public testing::Test {
 protected:
    CommandLine() {
        for (const char* name : {"dokumente/Kelvara", "windows", "programm"}) {
            std::filesystem::create_directories(folder.path(name));
        }
        run.folders = {folder.path("dokumente"), folder.path("windows"), folder.path("programm")};
    }
    void interpret(const std::string& words) {
        run.befehlszeile = words;
        run.start_datei.clear();
        befehlszeile_deuten(run);
    }

    testing_support::TempFolder folder;
    ProgramRun run;
};

TEST_F(CommandLine, NothingIsAPlainStart) {
    interpret("");
    EXPECT_FALSE(run.is_project());
    EXPECT_EQ(run.start_datei, "");
}

TEST_F(CommandLine, GraphicFileIsAPlainStartThatOpensIt) {
    const std::string file = folder.file("ve mit Leer.dat", "PUNKTSIGNATUR 1 2 0 0 1\n");
    interpret(file);
    EXPECT_FALSE(run.is_project());
    EXPECT_EQ(run.start_datei, file);
}

TEST_F(CommandLine, ProfileOfThatNameGoesFirst) {
    (void)folder.file("dokumente/Kelvara/projekt.ini", "[VELDRA]\n");
    interpret("projekt.ini");
    EXPECT_TRUE(run.is_project());
    (void)folder.file("windows/zweites.ini", "[VELDRA]\n");
    interpret("zweites.ini");
    EXPECT_TRUE(run.is_project());
    EXPECT_EQ(run.start_datei, "");
}

TEST_F(CommandLine, NameOfNothingIsAProjectWithoutAProfile) {
    interpret(folder.path("fehlt.dat"));
    EXPECT_TRUE(run.is_project());
    interpret(folder.path("dokumente"));  // a folder is no graphic file
    EXPECT_TRUE(run.is_project());
    EXPECT_EQ(run.start_datei, "");
}

TEST_F(CommandLine, NameOfNothingIsTold) {
    run.befehlszeile = "gibtsnicht";
    run.ini_datei = folder.path("windows/gibtsnicht");
    test::RecordingInterface ui;
    unbekannte_angabe_melden(run, ui);
    ASSERT_EQ(ui.texts.size(), 1U);
    EXPECT_EQ(ui.texts[0],
              "gibtsnicht\nist weder der Name einer Graphikdatei noch der eines Profils.");
    EXPECT_EQ(ui.styles[0], MessageStyle::exclamation);
    (void)folder.file("windows/gibtsnicht", "[VELDRA]\n");
    unbekannte_angabe_melden(run, ui);
    run.befehlszeile.clear();
    run.ini_datei = folder.path("dokumente/Kelvara/VELDRA.INI");
    unbekannte_angabe_melden(run, ui);
    EXPECT_EQ(ui.texts.size(), 1U);
}

TEST_F(CommandLine, RelativeNameLeadsToTheFileInTheCurrentFolder) {
    (void)folder.file("ve.dat", "PUNKTSIGNATUR 1 2 0 0 1\n");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    interpret("./ve.dat");
    std::filesystem::current_path(before);
    EXPECT_EQ(run.start_datei, folder.path("ve.dat"));
}

}  // namespace
}  // namespace veldra
