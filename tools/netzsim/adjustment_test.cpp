#include "adjustment.h"

#include <cmath>

#include <gtest/gtest.h>

namespace veldra::netzsim {
namespace {

/// Height difference from one unknown to another; -1 is a fixed point of height 0.
Equation levelled(int from, int to, double difference, double sigma) {
    Equation equation;
    if (from >= 0) {
        equation.coefficients.push_back({from, -1.0});
    }
    if (to >= 0) {
        equation.coefficients.push_back({to, 1.0});
    }
    equation.misclosure = difference;
    equation.sigma = sigma;
    return equation;
}

double share_sum(const Adjustment& adjustment) {
    double sum = 0.0;
    for (const Residual& residual : adjustment.residuals) {
        sum += residual.redundancy;
    }
    return sum;
}

// A fixed, A-B 1.000 m, B-C 2.000 m, C-A -2.991 m, equal weights: the misclosure of the loop is
// +9 mm, each line takes -3 mm, and each holds a third of the redundancy 1.
TEST(Adjustment, LevellingTriangleByHand) {
    const std::vector<Equation> lines = {levelled(-1, 0, 1.000, 0.003),
                                         levelled(0, 1, 2.000, 0.003),
                                         levelled(1, -1, -2.991, 0.003)};
    const Adjustment result = adjust(lines, 2);
    EXPECT_EQ(result.redundancy, 1);
    EXPECT_NEAR(result.corrections(0), 0.997, 1e-12);
    EXPECT_NEAR(result.corrections(1), 2.994, 1e-12);
    for (const Residual& residual : result.residuals) {
        EXPECT_NEAR(residual.v, -0.003, 1e-12);
        EXPECT_NEAR(residual.redundancy, 1.0 / 3.0, 1e-12);
        EXPECT_NEAR(residual.normalised, std::sqrt(3.0), 1e-9);
    }
    // Each height: the direct line of variance 9 and the way round of 18 square millimetres.
    EXPECT_NEAR(result.cofactors(0, 0), 6e-6, 1e-15);
    EXPECT_NEAR(result.cofactors(1, 1), 6e-6, 1e-15);
    EXPECT_NEAR(result.sigma0, std::sqrt(3.0), 1e-9);
    // Gross error 9 mm, two thirds of it in the heights.
    const Reliability values = reliability(result.residuals[0], 1.0);
    EXPECT_NEAR(values.ev, 100.0 / 3.0, 1e-9);
    EXPECT_NEAR(values.nv, std::sqrt(3.0), 1e-9);
    EXPECT_NEAR(values.ep, 0.6, 1e-9);
}

// The same triangle without a fixed point, datum on all three points: the sum of the corrections
// is zero, the residuals do not change.
TEST(Adjustment, FreeTriangleKeepsResiduals) {
    const std::vector<Equation> lines = {levelled(0, 1, 1.000, 0.003), levelled(1, 2, 2.000, 0.003),
                                         levelled(2, 0, -2.991, 0.003)};
    const Adjustment result = adjust(lines, 3, Eigen::MatrixXd::Ones(3, 1));
    EXPECT_EQ(result.redundancy, 1);
    EXPECT_NEAR(result.corrections.sum(), 0.0, 1e-12);
    EXPECT_NEAR(result.corrections(1) - result.corrections(0), 0.997, 1e-12);
    for (const Residual& residual : result.residuals) {
        EXPECT_NEAR(residual.v, -0.003, 1e-12);
        EXPECT_NEAR(residual.redundancy, 1.0 / 3.0, 1e-12);
    }
    // Complete graph of three nodes of variance 9: cofactor 2/9 of it at each node.
    EXPECT_NEAR(result.cofactors(0, 0), 2e-6, 1e-15);
}

// Datum on one of the points only: it keeps its height and has no error.
TEST(Adjustment, DatumOnOnePointFixesIt) {
    const std::vector<Equation> lines = {levelled(0, 1, 1.000, 0.003), levelled(1, 2, 2.000, 0.003),
                                         levelled(2, 0, -2.991, 0.003)};
    Eigen::MatrixXd datum = Eigen::MatrixXd::Zero(3, 1);
    datum(0, 0) = 1.0;
    const Adjustment result = adjust(lines, 3, datum);
    EXPECT_NEAR(result.corrections(0), 0.0, 1e-12);
    EXPECT_NEAR(result.corrections(1), 0.997, 1e-12);
    EXPECT_NEAR(result.cofactors(0, 0), 0.0, 1e-15);
    EXPECT_NEAR(result.cofactors(1, 1), 6e-6, 1e-15);
}

TEST(Adjustment, SharesSumUpToTheRedundancyWithUnequalWeights) {
    const std::vector<Equation> lines = {
        levelled(-1, 0, 1.000, 0.001), levelled(0, 1, 2.001, 0.002), levelled(1, -1, -2.995, 0.004),
        levelled(1, 2, 0.500, 0.003),  levelled(0, 2, 2.507, 0.002), levelled(-1, 2, 3.498, 0.005)};
    const Adjustment result = adjust(lines, 3);
    EXPECT_EQ(result.redundancy, 3);
    EXPECT_NEAR(share_sum(result), 3.0, 1e-9);
}

// A point on the end of a single line is determined, but its line is not controlled.
TEST(Adjustment, HangingPointIsUncontrolled) {
    const std::vector<Equation> lines = {
        levelled(-1, 0, 1.000, 0.003), levelled(-1, 0, 1.002, 0.003), levelled(0, 1, 5.000, 0.003)};
    const Adjustment result = adjust(lines, 2);
    EXPECT_NEAR(result.residuals[2].redundancy, 0.0, 1e-9);
    const Reliability values = reliability(result.residuals[2], 1.0);
    EXPECT_NEAR(values.ev, 0.0, 1e-6);
    EXPECT_EQ(values.nv, 0.0);
    EXPECT_EQ(values.ep, 0.0);
}

TEST(Adjustment, MissingDatumIsRefused) {
    const std::vector<Equation> lines = {levelled(0, 1, 1.000, 0.003), levelled(1, 0, -1.0, 0.003)};
    EXPECT_THROW((void)adjust(lines, 2), std::invalid_argument);
}

TEST(ErrorEllipse, AxesParallelToTheCoordinateAxes) {
    const ErrorEllipse north = error_ellipse(4.0, 0.0, 9.0);
    EXPECT_NEAR(north.a, 3.0, 1e-12);
    EXPECT_NEAR(north.b, 2.0, 1e-12);
    EXPECT_NEAR(north.azimuth, 0.0, 1e-12);
    EXPECT_NEAR(error_ellipse(9.0, 0.0, 4.0).azimuth, 100.0, 1e-12);
}

// Variance 8 along north-east (50 gon), 2 across: mean 5, covariance 3.
TEST(ErrorEllipse, TurnsClockwiseFromNorth) {
    const ErrorEllipse ellipse = error_ellipse(5.0, 3.0, 5.0);
    EXPECT_NEAR(ellipse.a * ellipse.a, 8.0, 1e-12);
    EXPECT_NEAR(ellipse.b * ellipse.b, 2.0, 1e-12);
    EXPECT_NEAR(ellipse.azimuth, 50.0, 1e-12);
    EXPECT_NEAR(error_ellipse(5.0, -3.0, 5.0).azimuth, 150.0, 1e-12);
}

}  // namespace
}  // namespace veldra::netzsim
