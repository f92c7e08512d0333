// "veldra-cli uebernehmen": what a whole run does.
#include <gmock/gmock.h>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using testing_support::file_bytes;
using testing_support::run_veldra;

class TakeOverCommand : public ::testing::Test {
 protected:
    testing_support::TempFolder folder;
    std::string old_file = folder.file(
        "ve_alt.dat", from_utf8("VERFAHRENLEGENDE Mein Netz\nNETZTEIL Süd\nTITEL2 Büro\n"
                                "PUNKTSIGNATUR 10 20 0 0 1 \"1\" 70.0 -30.0\n"
                                "PUNKTSIGNATUR 30 20 0 0 1 \"2\" 5.0 6.0\n"));
    std::string new_file = folder.file(
        "ve_neu.dat", from_utf8("NETZTEIL Süd\nPUNKTSIGNATUR 10.01 20.02 0 0 1 \"1\"\n"));
};

TEST_F(TakeOverCommand, WritesTheNewFileWithTheOldHandsWorkAndTellsHowMuch) {
    const auto result =
        run_veldra(folder, {"uebernehmen", old_file, new_file, "-o", folder.path("ziel.dat")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "Übernommen:\nBeschriftungen von Punkten: 1\nTitelzeilen: 2\n"
              "Nicht übernommen: 1\nNetzteil \"Süd\": Beschriftung des Punktes \"2\"\n");
    EXPECT_EQ(to_utf8(file_bytes(folder.path("ziel.dat"))),
              "VerfahrenLegende Mein Netz\r\nNETZTEIL Süd\r\nTitel2 Büro\r\n"
              "PUNKTSIGNATUR 10.01 20.02 0 0 1 \"1\" 70.0 -30.0\r\n");
}

TEST_F(TakeOverCommand, NeitherInputIsTheOutput) {
    for (const std::string& output : {old_file, new_file}) {
        const std::string before = file_bytes(output);
        const auto result = run_veldra(folder, {"uebernehmen", old_file, new_file, "-o", output});
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_THAT(result.err, HasSubstr("Ausgabe und Eingabe sind dieselbe Datei"));
        EXPECT_EQ(file_bytes(output), before);
    }
}

TEST_F(TakeOverCommand, MissingFileIsAnErrorAndWritesNothing) {
    for (const bool old_is_missing : {true, false}) {
        const std::string missing = folder.path("fehlt.dat");
        const auto result =
            run_veldra(folder, {"uebernehmen", old_is_missing ? missing : old_file,
                                old_is_missing ? new_file : missing, "-o", folder.path("z.dat")});
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, HasSubstr("fehlt.dat"));
        EXPECT_EQ(file_bytes(folder.path("z.dat")), "");
    }
}

TEST_F(TakeOverCommand, OneOfTheFilesMayComeFromTheStandardInput) {
    const std::string target = folder.path("ziel.dat");
    const auto from_old = testing_support::run_veldra_on(
        folder, {"uebernehmen", "-", new_file, "-o", target}, old_file);
    EXPECT_EQ(from_old.exit_code, 0);
    EXPECT_THAT(file_bytes(target), HasSubstr("\"1\" 70.0 -30.0"));
    const auto from_new = testing_support::run_veldra_on(
        folder, {"uebernehmen", old_file, "-", "-o", target}, new_file);
    EXPECT_EQ(from_new.exit_code, 0);
    EXPECT_EQ(from_new.out, from_old.out);
    EXPECT_EQ(run_veldra(folder, {"uebernehmen", "-", "-", "-o", target}).exit_code, 2);
}

TEST_F(TakeOverCommand, NamesThatSteerATerminalAreNotPrinted) {
    const std::string odd = folder.file("odd.dat", "NETZTEIL \x1B[2J\nTITEL2 x\n");
    const auto result =
        run_veldra(folder, {"uebernehmen", odd, new_file, "-o", folder.path("ziel.dat")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.out, HasSubstr("Netzteil \"?[2J\" gibt es nicht mehr"));
}

TEST_F(TakeOverCommand, HelpNamesItsArguments) {
    const auto result = run_veldra(folder, {"uebernehmen", "--help"});
    EXPECT_EQ(result.exit_code, 0);
    for (const char* name : {"ALT", "NEU", "-o"}) {
        EXPECT_THAT(result.out, HasSubstr(name));
    }
}

}  // namespace
}  // namespace veldra
