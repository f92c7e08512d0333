// What the handbook says about the program without windows, compared with the program.
#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

std::string page(const std::string& name) {
    return file_bytes(std::string(HANDBOOK_DIR) + "/" + name + ".md");
}

std::set<std::string> long_options(const std::string& text) {
    static const std::regex option("--[a-z]+");
    std::set<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), option), end; at != end; ++at) {
        found.insert(at->str());
    }
    return found;
}

class Handbook : public ::testing::Test {
 protected:
    std::string help(const std::vector<std::string>& arguments) {
        std::vector<std::string> all = arguments;
        all.emplace_back("--help");
        const ProgramRun result = testing_support::run_veldra(folder, all);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return result.out;
    }

    TempFolder folder;
};

constexpr const char* commands[] = {"bild",        "plot",        "tabellen",
                                    "operationen", "bezirk",      "normalform",
                                    "uebernehmen", "koordinaten", "grenzen"};

TEST_F(Handbook, NamesAllCommandsAndNoOther) {
    const std::string program = help({});
    const std::string text = page("veldra-cli");
    for (const std::string command : commands) {
        EXPECT_NE(program.find("  " + command), std::string::npos) << command;
        EXPECT_NE(text.find("**" + command + "** "), std::string::npos) << command;
    }
    static const std::regex described("\n\\*\\*([a-z]+)\\*\\* ");
    std::size_t count = 0;
    for (std::sregex_iterator at(text.begin(), text.end(), described), end; at != end; ++at) {
        ++count;
        EXPECT_THAT(commands, ::testing::Contains(at->str(1)));
    }
    EXPECT_EQ(count, std::size(commands));
}

TEST_F(Handbook, NamesAllOptionsAndNoOther) {
    std::set<std::string> of_program = long_options(help({}));
    for (const char* command : commands) {
        of_program.merge(long_options(help({command})));
    }
    ASSERT_GT(of_program.size(), 20U);
    EXPECT_EQ(long_options(page("veldra-cli")), of_program);
}

TEST_F(Handbook, ExampleOfAGraphicFileIsOne) {
    const std::string text = page("dateiformat");
    const std::size_t begin = text.find("```\nVerfahrenLegende Beispielnetz\nNetzteil") + 4;
    const std::string example = text.substr(begin, text.find("```", begin) - begin);
    ASSERT_THAT(example, ::testing::StartsWith("VerfahrenLegende"));
    const std::string file = folder.file("ve_beispiel.dat", from_utf8(example));
    const ProgramRun result = testing_support::run_veldra(folder, {"tabellen", file});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    const auto tables = nlohmann::json::parse(result.out);
    ASSERT_EQ(tables["netz"].size(), 1U);
    EXPECT_EQ(tables["netz"][0]["netz_name"], "Nord");
    ASSERT_EQ(tables["pu"].size(), 2U);
    EXPECT_EQ(tables["pu"][1]["pu_bez"], "18");
    // Direction and distance between the same two points are one line.
    ASSERT_EQ(tables["lin"].size(), 1U);
    EXPECT_EQ(result.err, "");
}

}  // namespace
}  // namespace veldra
