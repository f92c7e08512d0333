// The examples of the handbook's page about the graphic file, run through the program.
#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

/// What stands between the fences of the page, block by block, in Windows-1252.
std::vector<std::string> examples_of_the_format() {
    const std::string text = file_bytes(std::string(HANDBOOK_DIR) + "/dateiformat.md");
    const std::string fence = "```\n";
    std::vector<std::string> blocks;
    std::size_t at = text.find(fence);
    while (at != std::string::npos) {
        const std::size_t begin = at + fence.size();
        const std::size_t end = text.find(fence, begin);
        blocks.push_back(from_utf8(text.substr(begin, end - begin)));
        at = text.find(fence, end + fence.size());
    }
    return blocks;
}

/// The only example that begins like this.
std::string example_beginning(const std::string& start) {
    std::string found;
    for (const std::string& block : examples_of_the_format()) {
        if (block.rfind(start, 0) == 0) {
            EXPECT_EQ(found, "") << "two examples begin with " << start;
            found = block;
        }
    }
    return found;
}

std::string with_crlf(const std::string& text) {
    std::string lines;
    for (const char c : text) {
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return lines;
}

TEST(HandbookFormat, EpochsAddUpAsThePageSays) {
    const TempFolder folder;
    const std::string file =
        folder.file("ve_epochen.dat", example_beginning("Netzteil Rutschhang\n"));
    const ProgramRun result = testing_support::run_veldra(folder, {"tabellen", file});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    const auto points = nlohmann::json::parse(result.out)["pu"];
    ASSERT_EQ(points.size(), 6U);
    // Centimetres against the first state, as the text below the example tells them.
    struct Epoch {
        const char* name;
        int number;
        double east;
        double north;
        double height;
    };
    const Epoch expected[] = {{"17", 0, 0, 0, 0},        {"1998", 0, 0.7, -0.8, 0},
                              {"2001", 1, 0.2, -0.2, 0}, {"2004", 2, 0.3, -0.6, 0},
                              {"1998", 0, 0, 0, -1.2},   {"2001", 1, 0, 0, -0.9}};
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const auto& point = points[i];
        EXPECT_EQ(point["pu_bez"], expected[i].name) << i;
        EXPECT_EQ(point["pu_epoche"], expected[i].number) << i;
        EXPECT_NEAR(point["pu_wert_rechts"], expected[i].east, 1e-9) << i;
        EXPECT_NEAR(point["pu_wert_hoch"], expected[i].north, 1e-9) << i;
        EXPECT_NEAR(point["pu_wert_dh"], expected[i].height, 1e-9) << i;
    }
}

TEST(HandbookFormat, ARewriteChangesWhatThePageSays) {
    const TempFolder folder;
    const std::string before = example_beginning("netzteil Nord\nBeobachter");
    const std::string after = example_beginning("VerfahrenLegende Beispielnetz\nMa");
    ASSERT_NE(before, "");
    ASSERT_NE(after, "");
    const std::string file = folder.file("ve_beispiel.dat", before);
    const std::string written = folder.path("ve_neu.dat");
    const ProgramRun result =
        testing_support::run_veldra(folder, {"normalform", file, "-o", written});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(file_bytes(written), with_crlf(after));

    const std::string again = folder.path("ve_wieder.dat");
    ASSERT_EQ(testing_support::run_veldra(folder, {"normalform", written, "-o", again}).exit_code,
              0);
    EXPECT_EQ(file_bytes(again), with_crlf(after));
}

std::string rewritten(const TempFolder& folder, const std::string& text) {
    const std::string file = folder.file("ve_netz.dat", from_utf8(text));
    const std::string written = folder.path("ve_neu.dat");
    const ProgramRun result =
        testing_support::run_veldra(folder, {"normalform", file, "-o", written});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    return file_bytes(written);
}

/// What the list of changes says beyond the example.
TEST(HandbookFormat, ARewriteDropsAndKeepsWhatThePageSays) {
    const TempFolder folder;
    const std::string written = rewritten(folder,
                                          "Verfahrenlegende Netz\n"
                                          "Netzteil Eins\n"
                                          "Titel1 fort\n"
                                          "Punktsignatur 3500000.0004 5600000 1 0 1 \"17\"\n"
                                          "Punktsignatur 3500420.310 5600135.870 3 0 3 \"18\"\n"
                                          "Punktsignatur 3500420.310 5600535.870 3 0\n"
                                          "Netzteil Zwei\n"
                                          "Titel  fort\n"
                                          "\n"
                                          "  Punktsignatur 3500000,5  5600000 1 0 1 17\n"
                                          "Netzteil Drei");
    using ::testing::HasSubstr;
    using ::testing::Not;
    EXPECT_THAT(written, Not(HasSubstr("fort")));
    EXPECT_THAT(written, HasSubstr("Punktsignatur   3500000.000  5600000.000 1 0 1 \"17\""));
    // Neither AP nor NP: gone. Without that flag: as it was.
    EXPECT_THAT(written, Not(HasSubstr("\"18\"")));
    EXPECT_THAT(written, HasSubstr("\r\nPunktsignatur 3500420.310 5600535.870 3 0\r\n"));
    // A part that was not shown has no scale of its own, and its records are as they were.
    EXPECT_THAT(written, HasSubstr("Netzteil Zwei\r\n"
                                   "  Punktsignatur 3500000,5  5600000 1 0 1 17\r\n"
                                   "Netzteil Drei\r\n"));
    EXPECT_THAT(written, HasSubstr("Netzteil Eins\r\nMa\xDFstabGrundriss "));
}

TEST(HandbookFormat, ANameWithAQuoteDoesNotComeBack) {
    const TempFolder folder;
    const std::string once = rewritten(folder,
                                       "Netzteil Eins\n"
                                       "Punktsignatur 3500000 5600000 1 0 1 A\"17\n"
                                       "Punktsignatur 3500900 5600900 1 0 1 18\n");
    EXPECT_THAT(once, ::testing::HasSubstr(" 1 \"A\"17\" "));
    const std::string again = folder.path("ve_wieder.dat");
    ASSERT_EQ(
        testing_support::run_veldra(folder, {"normalform", folder.path("ve_neu.dat"), "-o", again})
            .exit_code,
        0);
    EXPECT_THAT(file_bytes(again), ::testing::HasSubstr(" 1 \"A\" "));
}

}  // namespace
}  // namespace veldra
