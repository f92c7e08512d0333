// Where outputs go and whose they are, for all commands that write a file.

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "child_process.h"
#include "other_user.h"
#include "program_run.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using testing_support::file_bytes;
using testing_support::not_permitted;
using testing_support::ProgramRun;

class Outputs : public ::testing::Test {
 protected:
    void SetUp() override {
        network = folder.file("ve.dat",
                              "NETZTEIL A\nPUNKTSIGNATUR 1000 2000 0 0 1 \"1\"\n"
                              "PUNKTSIGNATUR 1100 2100 0 0 1 \"2\"\n");
        borders = folder.file("grenzen.dat", "@ a b c LND\n2 0 0\n1 1 0\n1 0 0\n");
    }

    ProgramRun run(const std::vector<std::string>& arguments) {
        return testing_support::run_veldra(folder, arguments);
    }

    /// Each command with this file as its output.
    [[nodiscard]] std::vector<std::vector<std::string>> commands_writing(
        const std::string& output) const {
        return {{"bild", network, "-o", output + ".png"},
                {"bild", network, "-o", output + ".svg"},
                {"normalform", network, "-o", output + ".dat"},
                {"plot", network, "-o", output + ".pdf"},
                {"grenzen", borders, "-o", output + ".txt"},
                {"plot", network, "-o", folder.path("plot.pdf"), "--protokoll", output + ".json"}};
    }

    testing_support::TempFolder folder;
    std::string network;
    std::string borders;
};

TEST_F(Outputs, LinkThatLeadsNowhereIsAnErrorAndMakesNoFile) {
    for (const std::vector<std::string>& command : commands_writing(folder.path("aus"))) {
        std::string output = command.back();
        std::filesystem::create_symlink(folder.path("fort"), output);
        const ProgramRun result = run(command);
        EXPECT_EQ(result.exit_code, 1) << command[0] << " " << output;
        EXPECT_THAT(result.err, HasSubstr(output + ": Datei kann nicht geschrieben werden: "
                                                   "die symbolische Verknüpfung führt zu keiner "
                                                   "Datei"));
        EXPECT_TRUE(std::filesystem::is_symlink(output));
        EXPECT_FALSE(std::filesystem::exists(folder.path("fort")));
    }
}

TEST_F(Outputs, LoopOfLinksIsAnError) {
    for (const std::vector<std::string>& command : commands_writing(folder.path("aus"))) {
        const std::string output = command.back();
        std::filesystem::create_symlink(output, output);
        const ProgramRun result = run(command);
        EXPECT_EQ(result.exit_code, 1) << command[0] << " " << output;
        EXPECT_THAT(result.err, HasSubstr("zu viele symbolische Verknüpfungen"));
        EXPECT_TRUE(std::filesystem::is_symlink(output));
    }
}

TEST_F(Outputs, LinkToAFileIsFollowed) {
    for (const std::vector<std::string>& command : commands_writing(folder.path("aus"))) {
        const std::string output = command.back();
        const std::string target = folder.file("ziel" + output.substr(output.rfind('.')), "alt");
        std::filesystem::create_symlink(target, output);
        EXPECT_EQ(run(command).exit_code, 0) << command[0] << " " << output;
        EXPECT_TRUE(std::filesystem::is_symlink(output));
        EXPECT_NE(file_bytes(target), "alt");
    }
}

TEST_F(Outputs, GrenzenFollowsNoLinkAtTheNameItMakes) {
    const std::string victim = folder.file("victim", "stays");
    std::filesystem::create_symlink(victim, borders + "_neu");
    const ProgramRun result = run({"grenzen", borders});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr(borders + "_neu: Datei kann nicht geschrieben werden: "));
    EXPECT_EQ(file_bytes(victim), "stays");
    std::filesystem::remove(borders + "_neu");
    (void)folder.file("grenzen.dat_neu", "of an earlier run");
    EXPECT_EQ(run({"grenzen", borders}).exit_code, 0);
    EXPECT_THAT(file_bytes(borders + "_neu"), HasSubstr("2 0 0"));
}

TEST_F(Outputs, LongestNamesAreWritten) {
    const std::string name = std::string(251, 'n');
    const std::string input = folder.file(name + ".dat", file_bytes(network));
    EXPECT_EQ(run({"normalform", input, "-o", folder.path(std::string(251, 'm') + ".dat")}).err,
              "");
    EXPECT_TRUE(std::filesystem::exists(folder.path(std::string(251, 'm') + ".dat")));
    EXPECT_EQ(run({"plot", input, "-o", folder.path(name + ".pdf")}).err, "");
    EXPECT_TRUE(std::filesystem::exists(folder.path(name + ".pdf")));
}

TEST_F(Outputs, OwnerAndGroupThatAreLostInASharedFolderAreTold) {
    const std::vector<std::vector<std::string>> writers{
        {"normalform", network, "-o", folder.path("aus.dat")},
        {"plot", network, "-o", folder.path("aus.pdf")},
        {"plot", network, "-o", folder.path("neu.pdf"), "--protokoll", folder.path("aus.json")}};
    for (const std::vector<std::string>& command : writers) {
        const int code = testing_support::run_in_child([&] {
            namespace who = testing_support;
            const std::string output =
                folder.file(std::filesystem::path(command.back()).filename().string(), "alt");
            const bool shared = ::chmod(folder.path().c_str(), 0777) == 0 &&
                                ::chmod(output.c_str(), 0666) == 0 &&
                                ::chown(output.c_str(), who::anna, who::surveyors) == 0 &&
                                ::setgroups(0, nullptr) == 0 && ::setgid(who::others) == 0 &&
                                ::setuid(who::bert) == 0 && ::access(VELDRA_CLI, X_OK) == 0;
            if (!shared) {
                return not_permitted;
            }
            const ProgramRun result = run(command);
            const bool told = result.err == "veldra-cli: " + output +
                                                ": behält den Besitzer 64101 und die Gruppe 64201 "
                                                "nicht und gehört danach dem, der sie schreibt\n";
            return result.exit_code == 0 && told ? 0 : 1;
        });
        if (code == not_permitted) {
            GTEST_SKIP() << "this system does not let the test become another user";
        }
        EXPECT_EQ(code, 0) << command.back();
        // What the other user left is in the way of the next one.
        for (const char* left : {"stdin", "stdout", "stderr"}) {
            std::filesystem::remove(folder.path(left));
        }
    }
}

}  // namespace
}  // namespace veldra
