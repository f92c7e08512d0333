#include "large_network.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldra {
namespace {

std::vector<std::vector<std::string>> records(const std::string& bytes) {
    std::vector<std::vector<std::string>> lines;
    std::istringstream stream(bytes);
    std::string line;
    while (std::getline(stream, line)) {
        EXPECT_EQ(line.back(), '\r');
        line.pop_back();
        std::istringstream words(line);
        std::vector<std::string> tokens;
        for (std::string word; words >> word;) {
            tokens.push_back(word);
        }
        lines.push_back(tokens);
    }
    return lines;
}

std::string network(long points, bool with_ellipses) {
    std::string bytes;
    write_large_network(bytes, points, with_ellipses);
    return bytes;
}

TEST(LargeNetwork, EachObservationHasAPairOfKnownPointsOfItsOwn) {
    std::set<std::string> points;
    std::set<std::string> labels;
    std::set<std::string> pairs;
    std::size_t observations = 0;
    std::size_t ellipses = 0;
    for (const auto& tokens : records(network(900, true))) {
        if (tokens[0] == "PUNKTSIGNATUR") {
            points.insert(tokens[1] + " " + tokens[2]);
            labels.insert(tokens[6]);
        } else if (tokens[0] == "DISTANZ" || tokens[0] == "RICHTUNG") {
            ASSERT_EQ(tokens.size(), 8U);
            const std::string from = tokens[1] + " " + tokens[2];
            const std::string to = tokens[3] + " " + tokens[4];
            EXPECT_EQ(points.count(from) + points.count(to), 2U);
            pairs.insert(std::min(from, to) + " " + std::max(from, to));
            ++observations;
        } else if (tokens[0] == "LAGEFEHLERELLIPSE") {
            EXPECT_EQ(points.count(tokens[1] + " " + tokens[2]), 1U);
            ++ellipses;
        }
    }
    EXPECT_EQ(points.size(), 900U);
    EXPECT_EQ(labels.size(), 900U);
    // A grid of 30 by 30: two times 30 * 29 sides and 29 * 29 diagonals.
    EXPECT_EQ(observations, 2U * 870U + 841U);
    EXPECT_EQ(pairs.size(), observations);
    EXPECT_EQ(ellipses, 900U);
}

TEST(LargeNetwork, SameArgumentsGiveTheSameBytesInPiecesToo) {
    const std::string whole = network(40000, true);  // more than one piece
    std::string joined;
    int pieces = 0;
    write_large_network(
        [&](std::string_view piece) {
            joined += piece;
            ++pieces;
        },
        40000, true);
    EXPECT_GT(pieces, 1);
    EXPECT_EQ(joined, whole);
}

TEST(LargeNetwork, WithoutEllipsesNothingElseIsMissing) {
    std::map<std::string, int> counts;
    for (const auto& tokens : records(network(100, false))) {
        ++counts[tokens[0]];
    }
    EXPECT_EQ(counts.count("LAGEFEHLERELLIPSE"), 0U);
    EXPECT_EQ(counts["PUNKTSIGNATUR"], 100);
    EXPECT_EQ(counts["DISTANZ"] + counts["RICHTUNG"], 2 * 90 + 81);
}

TEST(LargeNetwork, NoPointsAndOnePoint) {
    EXPECT_EQ(records(network(0, true)).size(), 5U);
    EXPECT_EQ(records(network(1, true)).size(), 7U);
}

}  // namespace
}  // namespace veldra
