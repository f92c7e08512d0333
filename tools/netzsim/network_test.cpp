#include "network.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "design.h"
#include "graphic_writer.h"
#include "transformation.h"

namespace veldra::netzsim {
namespace {

constexpr double kGon = std::numbers::pi / 200.0;

/// Four points with all six distances and both directions of each.
Network square_with_plane_observations() {
    Network network;
    network.truth = {{1000.04, 2000.03, 50.0},
                     {1500.02, 2010.04, 55.0},
                     {1490.01, 2490.03, 61.0},
                     {1010.03, 2505.02, 58.0}};
    network.sets = 4;
    const PlaneAccuracy accuracy;
    for (int from = 0; from < 4; ++from) {
        for (int to = from + 1; to < 4; ++to) {
            network.observations.push_back(distance_between(network, from, to, accuracy));
            network.observations.push_back(direction_between(network, from, to, accuracy));
            network.observations.push_back(direction_between(network, to, from, accuracy));
        }
    }
    return network;
}

double share_sum(const NetworkResult& result) {
    double percent = 0.0;
    for (const auto& values : result.observations) {
        percent += values[0].ev + values[1].ev + values[2].ev;
    }
    for (const ControlResidual& control : result.controls) {
        for (const Reliability& values : control.reliability) {
            percent += values.ev;
        }
    }
    return percent / 100.0;
}

TEST(Geometry, BearingsAndDistances) {
    EXPECT_NEAR(bearing({0.0, 0.0, 0.0}, {5.0, 5.0, 0.0}), 50.0 * kGon, 1e-12);
    EXPECT_NEAR(bearing({0.0, 0.0, 0.0}, {-5.0, 0.0, 0.0}), 300.0 * kGon, 1e-12);
    EXPECT_NEAR(plane_distance({1.0, 2.0, 0.0}, {4.0, 6.0, 9.0}), 5.0, 1e-12);
}

// Over 1000 m curvature less refraction lifts the horizon by 0.87 * 1000^2 / 12 760 000 = 68.18 mm.
TEST(Geometry, ZenithAngleHasCurvatureAndRefraction) {
    const double angle = zenith_angle({0.0, 0.0, 100.0}, {0.0, 1000.0, 100.068182});
    EXPECT_NEAR(angle, 100.0 * kGon, 1e-9);
}

/// The square with errorless observations and two controls.
Network errorless_square() {
    Network network = square_with_plane_observations();
    for (Observation& observation : network.observations) {
        const Position& from = network.truth[static_cast<std::size_t>(observation.from)];
        const Position& to = network.truth[static_cast<std::size_t>(observation.to)];
        const bool direction = observation.kind == Kind::kDirection;
        observation.value[0] = direction ? bearing(from, to) - 0.7 : plane_distance(from, to);
    }
    network.controls = {{0, network.truth[0], 0.001, 0.0}, {2, network.truth[2], 0.001, 0.0}};
    return network;
}

// Errorless observations between controls must lead back to the truth from the rounded start.
TEST(NetworkAdjustment, ErrorlessObservationsGiveTheTruth) {
    const Network network = errorless_square();
    const NetworkResult result = adjust_network(network);
    for (std::size_t i = 0; i < network.truth.size(); ++i) {
        EXPECT_NEAR(result.points[i].east, network.truth[i].east, 1e-8);
        EXPECT_NEAR(result.points[i].north, network.truth[i].north, 1e-8);
        EXPECT_EQ(result.points[i].height, network.truth[i].height);
    }
    EXPECT_NEAR(result.sigma0, 0.0, 1e-5);
}

TEST(NetworkAdjustment, SharesSumUpToObservationsMinusUnknowns) {
    Network network = square_with_plane_observations();
    network.controls = {{0, {}, 0.010, 0.0}, {2, {}, 0.010, 0.0}};
    NormalSource source(2);
    simulate(network, source);
    const NetworkResult result = adjust_network(network);
    // Unknowns: eight coordinates and the orientations of the four stations.
    const int expected = static_cast<int>(network.observations.size()) + 4 - 12;
    EXPECT_EQ(result.redundancy, expected);
    EXPECT_NEAR(share_sum(result), expected, 1e-6);
}

// The datum points keep their centre and their turn against the approximate positions.
TEST(NetworkAdjustment, FreeNetworkHoldsItsDatum) {
    Network network = square_with_plane_observations();
    network.datum_points = {0, 1, 2, 3};
    network.start = network.truth;
    NormalSource source(3);
    simulate(network, source);
    const NetworkResult result = adjust_network(network);
    EXPECT_EQ(result.redundancy, static_cast<int>(network.observations.size()) - 12 + 3);
    Position shift;
    double turn = 0.0;
    for (std::size_t i = 0; i < network.truth.size(); ++i) {
        const double east = result.points[i].east - network.start[i].east;
        const double north = result.points[i].north - network.start[i].north;
        shift.east += east;
        shift.north += north;
        turn += east * (network.start[i].north - 2000.0) - north * (network.start[i].east - 1000.0);
    }
    EXPECT_NEAR(shift.east, 0.0, 1e-9);
    EXPECT_NEAR(shift.north, 0.0, 1e-9);
    EXPECT_NEAR(turn, 0.0, 1e-6);
}

// With one gross error and no other error the estimate -v / r is the error itself, its normalised
// residual is sqrt(r) times its size in standard deviations, and no other is larger.
TEST(NetworkAdjustment, GrossErrorStandsOut) {
    Network network = errorless_square();
    const auto distance =
        std::find_if(network.observations.begin(), network.observations.end(),
                     [](const Observation& o) { return o.kind == Kind::kDistance; });
    ASSERT_NE(distance, network.observations.end());
    spoil(*distance, 8.0);
    const NetworkResult result = adjust_network(network);
    const auto index = static_cast<std::size_t>(distance - network.observations.begin());
    const Reliability spoilt = result.observations[index][0];
    const double r = spoilt.ev / 100.0;
    EXPECT_NEAR(spoilt.nv, 8.0 * std::sqrt(r), 1e-3);
    EXPECT_NEAR(spoilt.ep, (1.0 - r) * 8.0 * distance->sigma[0] * 100.0, 1e-3);
    for (const auto& values : result.observations) {
        EXPECT_LE(values[0].nv, spoilt.nv * (1.0 + 1e-6));
    }
}

TEST(Transformation, ExactSimilarityLeavesNoResiduals) {
    std::vector<IdenticalPoint> points;
    for (const Position& p : {Position{0.0, 0.0, 10.0}, Position{3000.0, 100.0, 20.0},
                              Position{2900.0, 4000.0, 15.0}, Position{50.0, 3500.0, 12.0}}) {
        const Position target = {p.east * 1.00001 + 2e-5 * p.north + 5.0,
                                 p.north * 1.00001 - 2e-5 * p.east - 7.0,
                                 p.height + 0.25 + 1e-5 * p.east};
        points.push_back({p, target, points.size() != 1});
    }
    const TransformationResult result = transform(points, 0.01, 0.01);
    EXPECT_EQ(result.redundancy_plane, 2);
    EXPECT_EQ(result.redundancy_height, 0);
    for (const TransformationResidual& point : result.points) {
        EXPECT_NEAR(point.v.east, 0.0, 1e-9);
        EXPECT_NEAR(point.v.north, 0.0, 1e-9);
        EXPECT_NEAR(point.v.height, 0.0, 1e-9);
    }
}

TEST(Triangulation, SquareWithCentreHasEightEdges) {
    const std::vector<Position> points = {
        {0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 10.0, 0.0}, {0.0, 10.0, 0.0}, {5.0, 5.5, 0.0}};
    EXPECT_EQ(triangulate(points, 100.0).size(), 8U);
    EXPECT_EQ(triangulate(points, 9.0).size(), 4U);
}

TEST(NormalSource, HasMeanZeroAndVarianceOne) {
    NormalSource source(42);
    constexpr int kCount = 20000;
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < kCount; ++i) {
        const double value = source.normal();
        sum += value;
        squares += value * value;
    }
    EXPECT_NEAR(sum / kCount, 0.0, 0.03);
    EXPECT_NEAR(squares / kCount, 1.0, 0.04);
}

TEST(GraphicWriter, TextsAreWindows1252WithCrLf) {
    EXPECT_EQ(encode("MAßSTAB Höhe"), "MA\xDFSTAB H\xF6he");
    EXPECT_THROW((void)encode("5 €"), std::invalid_argument);
    GraphicWriter writer;
    writer.record("NETZTEIL", "Nord");
    EXPECT_EQ(writer.bytes(), "NETZTEIL Nord\r\n");
}

TEST(GraphicWriter, NumbersHaveNoNegativeZero) {
    EXPECT_EQ(fixed(-0.004, 8, 2), "    0.00");
    EXPECT_EQ(fixed(-0.006, 8, 2), "   -0.01");
    EXPECT_EQ(fixed(2576000.0, 0, 3), "2576000.000");
}

TEST(GraphicWriter, PaperCodeHoldsOrientationMarginAndLegend) {
    GraphicWriter writer;
    Paper paper;
    paper.denominator = 5000;
    paper.orientation = 2;
    paper.margin = 1;
    paper.legend = 3;
    paper.sheets_across = 2;
    paper.sheets_up = 1;
    writer.paper(paper);  // 2 + 4 * 1 + 16 * 3 = 54
    EXPECT_EQ(writer.bytes(), "MA\xDFSTABGRUNDRISS 5000        0.000        0.000 54 1 2 1\r\n");
}

}  // namespace
}  // namespace veldra::netzsim
