#include "plot/far_point.h"

#include <limits>

#include <gtest/gtest.h>

#include "network_builder.h"

namespace veldra {
namespace {

using test::add_point;

/// Easting of the point farthest out among points with a northing of 60.
double farthest(const std::vector<double>& eastings) {
    Session session;
    for (const double rechts : eastings) {
        add_point(session, rechts, 60);
    }
    const auto point = point_farthest_out(session);
    EXPECT_TRUE(point.has_value());
    return point ? point->rechts : 0;
}

TEST(PointFarthestOut, LiesFarthestFromTheMedian) {
    EXPECT_EQ(farthest({10, 20, 90}), 90);
    EXPECT_EQ(farthest({10, 80, 90}), 10);
    EXPECT_EQ(farthest({1000, 1001, 7, 1002}), 7);
    Session empty;
    EXPECT_FALSE(point_farthest_out(empty).has_value());
}

TEST(PointFarthestOut, OfTwoIsTheOneWithTheLargerCoordinates) {
    EXPECT_EQ(farthest({10.01, 9999.97}), 9999.97);
    EXPECT_EQ(farthest({9999.97, 10.01}), 9999.97);
    EXPECT_EQ(farthest({10.01, -70000.03}), -70000.03);
    EXPECT_EQ(farthest({10, 1e300}), 1e300);
}

TEST(PointFarthestOut, IsToldInAFewFigures) {
    const Session no_file;
    EXPECT_EQ(describe(no_file, {"", false, "7", 9999999999.5, -60}),
              "Punkt \"7\" (9999999999.50, -60.00)");
    EXPECT_EQ(describe(no_file, {"", false, "", -1e300, 60}),
              "Punkt ohne Bezeichnung (-1e+300, 60.00)");
}

TEST(PointFarthestOut, MayLieAtNoNumberAtAll) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(farthest({10, infinite}), infinite);
    EXPECT_EQ(farthest({10, 20, -infinite}), -infinite);
}

}  // namespace
}  // namespace veldra
