#include "drawing/boundary_reduction.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <set>
#include <sstream>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "drawing/boundary_lines.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::TempFolder;

class BoundaryReduction : public testing::Test {
 protected:
    std::string reduced(const std::string& text) {
        const std::string input = folder.file("grenzen.dat", text);
        result = reduce_boundaries(input, folder.path("grenzen.dat_neu"), {});
        return file_bytes(folder.path("grenzen.dat_neu"));
    }

    TempFolder folder;
    ReductionResult result;
};

/// The same by comparing all pairs of records in a table.
std::string reduced_by_pairs(const std::string& text) {
    struct Record {
        std::string from;
        std::string to;
        char code;
    };
    std::vector<Record> records;
    std::string current;
    std::vector<std::string> run;
    const auto close = [&] {
        if (!run.empty() && run.front() != run.back()) {
            records.push_back({run.back(), run.front(), '1'});
        }
        run.clear();
    };
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const char code = line.empty() ? ' ' : line[0];
        if (code == '@' || code == '#') {
            close();
            records.push_back({line, "", code});
        } else if (code == '0' || code == '1' || code == '2') {
            std::string point = line.size() > 2 ? line.substr(2) : "";
            point.erase(point.find_last_not_of(' ') + 1);
            if (code == '1') {
                records.push_back({current, point, '1'});
            } else {
                close();
            }
            run.push_back(point);
            current = point;
        }
    }
    close();
    for (std::size_t i = 0; i < records.size(); ++i) {
        for (std::size_t j = i + 1; records[i].code == '1' && j < records.size(); ++j) {
            const Record& a = records[i];
            Record& b = records[j];
            if (b.code == '1' &&
                ((a.from == b.from && a.to == b.to) || (a.to == b.from && a.from == b.to))) {
                b.code = 'X';
            }
        }
    }
    std::string out;
    std::string written;
    for (const Record& record : records) {
        if (record.code == '1') {
            if (record.from != written) {
                out += "2 " + record.from + "\r\n";
            }
            out += "1 " + record.to + "\r\n";
            written = record.to;
        } else if (record.code != 'X') {
            out += record.from + "\r\n";
            written.clear();
        }
    }
    return out;
}

TEST_F(BoundaryReduction, SegmentForwardsAndBackwardsIsKeptOnce) {
    EXPECT_EQ(reduced("@ a b c KRS\n2 0 0\n1 1 0\n1 0 0\n"), "@ a b c KRS\r\n2 0 0\r\n1 1 0\r\n");
    EXPECT_EQ(result.segments, 2);
    EXPECT_EQ(result.dropped, 1);
}

TEST_F(BoundaryReduction, BorderOfTwoAreasStaysWithTheFirst) {
    EXPECT_EQ(reduced("@ 1 b c KRS\n2 0 0\n1 1 0\n1 1 1\n1 0 0\n"
                      "@ 2 b c KRS\n2 1 1\n1 1 0\n1 2 0\n1 1 1\n"),
              "@ 1 b c KRS\r\n2 0 0\r\n1 1 0\r\n1 1 1\r\n1 0 0\r\n"
              "@ 2 b c KRS\r\n2 1 0\r\n1 2 0\r\n1 1 1\r\n");
}

TEST_F(BoundaryReduction, SegmentOfAnEarlierLevelIsDroppedAndTheHeaderStays) {
    EXPECT_EQ(reduced("@ 1 b c LND\n2 0 0\n1 1 0\n1 1 1\n1 0 0\n"
                      "# 2 b c GEM\n0 0 0\n1 1 0\n1 1 1\n1 0 0\n"),
              "@ 1 b c LND\r\n2 0 0\r\n1 1 0\r\n1 1 1\r\n1 0 0\r\n# 2 b c GEM\r\n");
}

TEST_F(BoundaryReduction, OpenRunIsClosed) {
    EXPECT_EQ(reduced("2 0 0\n1 1 0\n1 1 1\n0 5 5\n1 6 5\n1 6 6"),
              "2 0 0\r\n1 1 0\r\n1 1 1\r\n1 0 0\r\n2 5 5\r\n1 6 5\r\n1 6 6\r\n1 5 5\r\n");
    EXPECT_EQ(result.segments, 6);
}

TEST_F(BoundaryReduction, SinglePointsAndOtherLinesLeaveNothing) {
    EXPECT_EQ(reduced("; remark\n2 0 0\n\n2 1 1\n0 2 2\nx 3 3\n"), "");
    EXPECT_EQ(reduced(""), "");
}

TEST_F(BoundaryReduction, PointsAreComparedByTheirText) {
    // Blanks at the end do not count; digits do.
    EXPECT_EQ(reduced("2 0 0\n1 1 0  \n1 0 0\n"), "2 0 0\r\n1 1 0\r\n");
    EXPECT_EQ(reduced("2 0 0\n1 1 0\n1 0.0 0\n1 0 0"), "2 0 0\r\n1 1 0\r\n1 0.0 0\r\n1 0 0\r\n");
}

TEST_F(BoundaryReduction, HeadersStayAsTheyAre) {
    EXPECT_EQ(reduced("@  1 \"Rhein-Sieg\"  KRS  \n#\n@ x y z KRS\n"),
              "@  1 \"Rhein-Sieg\"  KRS  \r\n#\r\n@ x y z KRS\r\n");
}

TEST_F(BoundaryReduction, NextPointBehindAHeaderGoesOnFromTheLastOne) {
    EXPECT_EQ(reduced("@ a b c LND\n2 0 0\n1 1 0\n1 0 0\n@ a b c RBZ\n1 5 5\n1 6 6\n1 5 5\n"),
              "@ a b c LND\r\n2 0 0\r\n1 1 0\r\n@ a b c RBZ\r\n2 0 0\r\n1 5 5\r\n1 6 6\r\n");
}

TEST_F(BoundaryReduction, MissingInputIsNamed) {
    try {
        reduce_boundaries(folder.path("fehlt.dat"), folder.path("neu.dat"), {});
        FAIL();
    } catch (const FatalError& error) {
        EXPECT_NE(std::string(error.what()).find("fehlt.dat"), std::string::npos);
    }
}

/// A file of closed and open rings on a small grid of points, so that many segments coincide.
std::string random_file(std::mt19937_64& random) {
    const auto below = [&random](std::uint64_t limit) { return random() % limit; };
    std::string text;
    const std::uint64_t objects = 1 + below(60);
    for (std::uint64_t object = 0; object < objects; ++object) {
        if (below(8) != 0) {
            text += fmt::format("{} {} b c KRS\n", below(2) == 0 ? '@' : '#', object);
        }
        const std::uint64_t points = below(20);
        for (std::uint64_t i = 0; i < points; ++i) {
            const char* code = below(6) == 0 ? "2" : below(12) == 0 ? "0" : "1";
            text += fmt::format("{} {} {}{}\n", below(30) == 0 ? "x" : code, below(4), below(3),
                                below(9) == 0 ? " " : "");
        }
    }
    return text;
}

TEST_F(BoundaryReduction, SameResultAsComparingAllPairs) {
    std::mt19937_64 random(20041);
    for (int i = 0; i < 60; ++i) {
        const std::string text = random_file(random);
        ASSERT_EQ(reduced(text), reduced_by_pairs(text)) << text;
    }
}

/// Segments that a file draws, without direction.
std::multiset<std::array<double, 4>> drawn(const std::string& path) {
    const BoundaryLines lines = read_boundaries(path, {{1, 1}, 2, {1, 1}, {}}, std::nullopt);
    std::multiset<std::array<double, 4>> segments;
    visit_boundaries(
        lines, std::nullopt, {}, std::nullopt,
        [](std::size_t /*level*/) { return std::optional<TargetBox>(); },
        [&](std::span<const PlanePoint> run) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                const PlanePoint& a = run[i - 1];
                const PlanePoint& b = run[i];
                const bool turned = std::pair(b.rechts, b.hoch) < std::pair(a.rechts, a.hoch);
                const PlanePoint& from = turned ? b : a;
                const PlanePoint& to = turned ? a : b;
                segments.insert({from.rechts, from.hoch, to.rechts, to.hoch});
            }
        });
    return segments;
}

/// Square areas side by side, each with its whole outline.
std::string squares(int side) {
    std::string text;
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y) {
            const int r = 2570000 + 100 * x;
            const int h = 5620000 + 100 * y;
            text += fmt::format(
                "@ {}_{} b c GEM\n2 {r} {h}\n1 {e} {h}\n1 {e} {n}\n1 {r} {n}\n"
                "1 {r} {h}\n",
                x, y, fmt::arg("r", r), fmt::arg("h", h), fmt::arg("e", r + 100),
                fmt::arg("n", h + 100));
        }
    }
    return text;
}

TEST_F(BoundaryReduction, ResultDrawsTheSameSegmentsEachOnce) {
    reduced(squares(20));
    const auto before = drawn(folder.path("grenzen.dat"));
    const auto after = drawn(folder.path("grenzen.dat_neu"));
    EXPECT_EQ(before.size(), 1600U);
    EXPECT_EQ(after.size(), 2U * 20 * 21);
    EXPECT_EQ(std::set(before.begin(), before.end()), std::set(after.begin(), after.end()));
    EXPECT_EQ(result.dropped, 1600 - 2 * 20 * 21);
}

TEST_F(BoundaryReduction, MoreThanAHundredThousandRecordsAndProgress) {
    const std::string input = folder.file("gross.dat", squares(200));
    std::vector<double> shares;
    result = reduce_boundaries(input, folder.path("neu.dat"),
                               [&shares](double share) { shares.push_back(share); });
    EXPECT_EQ(result.segments, 160000);
    EXPECT_EQ(result.segments - result.dropped, 2 * 200 * 201);
    ASSERT_GE(shares.size(), 3U);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_LE(shares.back(), 1);
}

}  // namespace
}  // namespace veldra
