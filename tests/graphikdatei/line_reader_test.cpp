#include "graphikdatei/line_reader.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "child_process.h"
#include "temp_file.h"

namespace veldra {
namespace {

using testing_support::TempFolder;

constexpr std::size_t window = std::size_t{256} * 1024;
constexpr std::size_t handed_out = 32768;

/// What a file's lines are as the reader hands them out.
std::vector<std::string> lines_of(const std::string& bytes) {
    const TempFolder folder;
    LineReader reader(folder.file("a", bytes));
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.next(line)) {
        lines.emplace_back(line);
        EXPECT_EQ(reader.line_number(), static_cast<std::int64_t>(lines.size()));
    }
    return lines;
}

TEST(LineReader, LinesEndWithLfOneCrBeforeItAndTheEndOfTheFile) {
    EXPECT_EQ(lines_of("a\r\n\n\r\r\nb"), (std::vector<std::string>{"a", "", "\r", "b"}));
    EXPECT_TRUE(lines_of("").empty());
}

TEST(LineReader, LongLinesAreWholeUpToTheWindow) {
    const std::string fits(window - 1, 'x');
    EXPECT_EQ(lines_of("a\n" + fits + "\nb\n"), (std::vector<std::string>{"a", fits, "b"}));
}

TEST(LineReader, ALineThatFillsTheWindowIsHandedOutByItsBeginning) {
    const std::string beginning(handed_out, 'x');
    for (const std::size_t size : {window, window + 1, 3 * window - 1, 10 * window}) {
        EXPECT_EQ(lines_of("a\n" + std::string(size, 'x') + "\r\nb\n" + std::string(size, 'x')),
                  (std::vector<std::string>{"a", beginning, "b", beginning}))
            << size;
    }
}

TEST(LineReader, LinesBehindALongOneAreRead) {
    std::string bytes(2 * window, 'x');
    std::vector<std::string> expected{std::string(handed_out, 'x')};
    for (int i = 0; i < 50000; ++i) {
        expected.push_back("line " + std::to_string(i));
        bytes += "\n" + expected.back();
    }
    EXPECT_EQ(lines_of(bytes), expected);
}

TEST(LineReader, ALineWithoutAnEndTakesNoMemory) {
    const TempFolder folder;
    const std::string path = folder.file("a", "a\n");
    std::filesystem::resize_file(path, std::uintmax_t{400} << 20U);  // NULs to the end
    const int code = testing_support::run_in_child([&] {
        rlimit limit{};
        ::getrlimit(RLIMIT_AS, &limit);
        std::ifstream status("/proc/self/statm");
        rlim_t pages = 0;
        status >> pages;
        limit.rlim_cur = pages * 4096 + (rlim_t{64} << 20U);
        ::setrlimit(RLIMIT_AS, &limit);
        LineReader reader(path);
        std::string_view line;
        int lines = 0;
        while (reader.next(line)) {
            ++lines;
        }
        return lines;
    });
    EXPECT_EQ(code, 2);
}

}  // namespace
}  // namespace veldra
