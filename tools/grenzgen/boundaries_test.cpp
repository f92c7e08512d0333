#include "boundaries.h"

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace veldra {
namespace {

std::string file(const BoundaryPlan& plan) {
    std::string text;
    write_boundaries([&text](std::string_view piece) { text += piece; }, plan);
    return text;
}

BoundaryPlan small_plan() {
    BoundaryPlan plan;
    plan.centre_rechts = 257500000;
    plan.centre_hoch = 562400000;
    return plan;
}

TEST(Boundaries, RingsAreClosedAndLevelsComeInOrder) {
    std::istringstream lines(file(small_plan()));
    std::vector<std::string> codes;
    std::string first;
    std::string last;
    int rings = 0;
    for (std::string line; std::getline(lines, line);) {
        ASSERT_EQ(line.back(), '\r');
        if (line[0] == '@' || line[0] == '#') {
            EXPECT_EQ(first, last);
            codes.push_back(line.substr(line.size() - 4, 3));
            ++rings;
        } else if (line[0] == '2') {
            first = line.substr(2);
        } else {
            ASSERT_EQ(line[0], '1');
            last = line.substr(2);
        }
    }
    EXPECT_EQ(first, last);
    // 16 by 16 cells in areas of 128, 64, 16, 8, 4, 2 and 1 cells.
    EXPECT_EQ(rings, 2 + 4 + 16 + 32 + 64 + 128 + 256);
    const std::map<std::string, int> order{{"LND", 1}, {"RBZ", 2}, {"KRS", 3}, {"KFS", 3},
                                           {"GEM", 4}, {"SO1", 5}, {"SO2", 6}, {"SO3", 7}};
    std::set<std::string> found;
    int before = 0;
    for (const std::string& code : codes) {
        ASSERT_EQ(order.count(code), 1U) << code;
        EXPECT_GE(order.at(code), before);
        before = order.at(code);
        found.insert(code);
    }
    EXPECT_EQ(found.size(), order.size());
}

TEST(Boundaries, NeighboursHaveTheSameBorder) {
    std::istringstream lines(file(small_plan()));
    std::map<std::pair<std::string, std::string>, int> finest;
    std::string before;
    bool wanted = false;
    for (std::string line; std::getline(lines, line);) {
        if (line[0] == '@' || line[0] == '#') {
            wanted = line.find("SO3") != std::string::npos;
            continue;
        }
        const std::string point = line.substr(2);
        if (line[0] == '1' && wanted) {
            ++finest[std::minmax(before, point)];
        }
        before = point;
    }
    // 2 * 16 * 17 sides of 4 segments; those within occur twice.
    EXPECT_EQ(finest.size(), 4U * 2 * 16 * 17);
    int twice = 0;
    for (const auto& [segment, count] : finest) {
        EXPECT_LE(count, 2);
        twice += count == 2 ? 1 : 0;
    }
    EXPECT_EQ(twice, 4 * 2 * 16 * 15);
}

TEST(Boundaries, LargeFileReachesItsNumberOfVertices) {
    std::int64_t bytes = 0;
    const std::int64_t vertices = write_boundaries(
        [&bytes](std::string_view piece) { bytes += static_cast<std::int64_t>(piece.size()); },
        large_boundary_plan(100000));
    EXPECT_GE(vertices, 100000);
    EXPECT_LT(vertices, 100100);
    EXPECT_GT(bytes, 20 * vertices);
}

TEST(Boundaries, SamePlanGivesTheSameBytes) {
    EXPECT_EQ(file(small_plan()), file(small_plan()));
}

}  // namespace
}  // namespace veldra
