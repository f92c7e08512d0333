#include "reference/koordtrans.h"

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include <GeographicLib/TransverseMercatorExact.hpp>
#include <gtest/gtest.h>

namespace veldra {
namespace {

constexpr std::int32_t gauss_krueger = 1;
constexpr std::int32_t utm = 2;
constexpr std::int32_t by_number = 3;
constexpr std::int32_t own_digits = -1;
constexpr std::int32_t find_strip = 2;

struct Ellipsoid {
    double a;
    double f;
};
constexpr std::array<Ellipsoid, 6> ellipsoids{{{0, 0},
                                               {6377397.155, 1 / 299.1528128},
                                               {6378388.0, 1 / 297.0},
                                               {6378135.0, 1 / 298.26},
                                               {6378137.0, 1 / 298.257222101},
                                               {6378245.0, 1 / 298.3}}};

/// Length of the meridian from the equator to a latitude in degrees: the integral of the radius of
/// curvature, by Simpson's rule.
double meridian_arc(const Ellipsoid& ellipsoid, double latitude) {
    const double e2 = ellipsoid.f * (2 - ellipsoid.f);
    const auto radius = [&](double phi) {
        const double sine = std::sin(phi);
        return ellipsoid.a * (1 - e2) / std::pow(1 - e2 * sine * sine, 1.5);
    };
    constexpr int intervals = 2000;
    const double step = latitude * std::numbers::pi / 180 / intervals;
    double sum = radius(0) + radius(intervals * step);
    for (int i = 1; i < intervals; ++i) {
        sum += radius(i * step) * (i % 2 == 0 ? 2 : 4);
    }
    return sum * step / 3;
}

struct Plane {
    double rechts = -1;
    double hoch = -1;
    std::int32_t meridian = -1;
    std::int32_t status = -1;
};
struct Geographic {
    double latitude = -1;
    double longitude = -1;
    std::int32_t status = -1;
};

class KoordtransTest : public testing::Test {
 protected:
    std::int32_t define(std::int32_t slot, std::int32_t ellipsoid, std::int32_t mapping) {
        std::int32_t status = -1;
        library.DEFSYSTEM(slot, ellipsoid, mapping, status);
        return status;
    }
    [[nodiscard]] Plane to_plane(double latitude, double longitude, std::int32_t meridian,
                                 std::int32_t mode, std::int32_t slot = 1) const {
        Plane result;
        result.meridian = meridian;
        library.GEGGKO(slot, latitude, longitude, result.meridian, result.rechts, result.hoch, mode,
                       result.status);
        return result;
    }
    [[nodiscard]] Geographic to_geographic(double rechts, double hoch, std::int32_t meridian,
                                           std::int32_t mode, std::int32_t slot = 1) const {
        Geographic result;
        library.GKGGEG(slot, rechts, hoch, meridian, result.latitude, result.longitude, mode,
                       result.status);
        return result;
    }

    Koordtrans library;
};

TEST_F(KoordtransTest, EastingCountsFromTheCentralMeridianOfItsNumber) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    const Plane strip = to_plane(0, 9, 3, by_number);
    EXPECT_EQ(strip.status, 0);
    EXPECT_DOUBLE_EQ(strip.rechts, 3500000);
    EXPECT_DOUBLE_EQ(strip.hoch, 0);
    ASSERT_EQ(define(1, 4, utm), 0);
    const Plane zone = to_plane(0, 9, 32, by_number);
    EXPECT_DOUBLE_EQ(zone.rechts, 32500000);
    EXPECT_DOUBLE_EQ(zone.hoch, 0);
}

TEST_F(KoordtransTest, OutsideTheDomainBothCoordinatesAreZero) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    const Plane none[] = {to_plane(50, 361, 3, find_strip), to_plane(50, 9, 120, by_number),
                          to_plane(50, 9, 3, by_number, 2)};
    for (const Plane& plane : none) {
        EXPECT_EQ(plane.status, 1);
        EXPECT_EQ(plane.rechts, 0);
        EXPECT_EQ(plane.hoch, 0);
    }
    const Geographic nowhere = to_geographic(3500000, 5600000, 120, by_number);
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.latitude, 0);
    EXPECT_EQ(nowhere.longitude, 0);
}

TEST_F(KoordtransTest, ScaleOnTheCentralMeridianIsOneAndUtmsIsSmaller) {
    ASSERT_EQ(define(1, 4, gauss_krueger), 0);
    ASSERT_EQ(define(2, 4, utm), 0);
    const double strip = to_plane(50, 9, 3, by_number, 1).hoch;
    const double zone = to_plane(50, 9, 32, by_number, 2).hoch;
    EXPECT_NEAR(strip, meridian_arc(ellipsoids[4], 50), 1e-6);
    EXPECT_NEAR(zone / strip, 0.9996, 1e-14);
}

TEST_F(KoordtransTest, ModesZeroAndThreeUseTheNumberPassed) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    for (const std::int32_t mode : {0, 3}) {
        const Plane plane = to_plane(50.7, 7.5, 3, mode);
        EXPECT_EQ(plane.meridian, 3);
        EXPECT_GT(plane.rechts, 3300000);
        EXPECT_LT(plane.rechts, 3500000);
        const Geographic back = to_geographic(plane.rechts, plane.hoch, 3, mode);
        EXPECT_NEAR(back.longitude, 7.5, 1e-10);
    }
}

TEST_F(KoordtransTest, ModeZeroDoesNotLookAtTheDigitsOfTheEasting) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    // Strip 2 written as an offset of strip 3: a million metres west of its false easting.
    const Geographic passed = to_geographic(2500000, 5600000, 3, 0);
    const Geographic own = to_geographic(2500000, 5600000, 3, own_digits);
    EXPECT_NEAR(own.longitude, 6, 1e-12);
    EXPECT_LT(passed.longitude, -4);
}

TEST_F(KoordtransTest, ModeMinusOneTakesTheNumberFromTheLeadingDigits) {
    ASSERT_EQ(define(1, 4, utm), 0);
    EXPECT_NEAR(to_geographic(32500000, 5600000, 0, own_digits).longitude, 9, 1e-12);
    EXPECT_NEAR(to_geographic(33500000, 5600000, 0, own_digits).longitude, 15, 1e-12);
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    EXPECT_NEAR(to_geographic(4500000.0, 5600000, 0, own_digits).longitude, 12, 1e-12);
    EXPECT_NEAR(to_geographic(500000.0, 5600000, 7, own_digits).longitude, 0, 1e-12);
}

TEST_F(KoordtransTest, ModeTwoFindsTheStripOfThreeDegrees) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    const auto strip = [this](double longitude) {
        return to_plane(50, longitude, 0, find_strip).meridian;
    };
    EXPECT_EQ(strip(7.0), 2);
    EXPECT_EQ(strip(7.499), 2);
    EXPECT_EQ(strip(7.5), 3);
    EXPECT_EQ(strip(0), 0);
    EXPECT_EQ(strip(1.49), 0);
    EXPECT_EQ(strip(-1.5), 0);
    EXPECT_EQ(strip(-1.51), 119);
    EXPECT_EQ(strip(357), 119);
    EXPECT_EQ(strip(359), 0);
    EXPECT_EQ(strip(-180), 60);
    const Plane plane = to_plane(50, 8.9, 77, find_strip);
    EXPECT_EQ(plane.meridian, 3);
    EXPECT_EQ(std::trunc(plane.rechts / 1e6), 3);
}

TEST_F(KoordtransTest, StatusIsOneOutsideTheDomainAndValuesStayFinite) {
    ASSERT_EQ(define(1, 1, gauss_krueger), 0);
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    for (const Plane& plane :
         {to_plane(50, 99, 3, by_number), to_plane(90.1, 9, 3, by_number),
          to_plane(nothing, 9, 3, by_number), to_plane(50, infinite, 3, by_number),
          to_plane(50, 9, 120, by_number), to_plane(50, 9, -1, by_number),
          to_plane(50, nothing, 3, find_strip), to_plane(50, 1e300, 3, find_strip)}) {
        EXPECT_EQ(plane.status, 1);
        EXPECT_TRUE(std::isfinite(plane.rechts) && std::isfinite(plane.hoch));
    }
    for (const Geographic& point :
         {to_geographic(3500000, 1.1e7, 3, 0), to_geographic(3500000, -4e7, 3, 0),
          to_geographic(9e7, 5600000, 3, 0), to_geographic(3500000, nothing, 3, 0),
          to_geographic(1e300, 1e300, 0, own_digits), to_geographic(500000, 1, 200, 0),
          to_geographic(121500000, 5600000, 0, own_digits)}) {
        EXPECT_EQ(point.status, 1);
        EXPECT_TRUE(std::isfinite(point.latitude) && std::isfinite(point.longitude));
    }
    ASSERT_EQ(define(1, 4, utm), 0);
    EXPECT_EQ(to_geographic(500000, 5600000, 0, own_digits).status, 1) << "there is no zone 0";
    EXPECT_EQ(to_geographic(61500000, 5600000, 0, own_digits).status, 1);
}

TEST_F(KoordtransTest, UnknownSystemsAndSlotsAreRefused) {
    EXPECT_EQ(define(1, 0, 1), 1);
    EXPECT_EQ(define(1, 6, 1), 1);
    EXPECT_EQ(define(1, 1, 0), 1);
    EXPECT_EQ(define(1, 1, 3), 1);
    EXPECT_EQ(define(-1, 1, 1), 1);
    EXPECT_EQ(define(4, 1, 1), 1);
    EXPECT_EQ(to_plane(50, 9, 3, by_number, 2).status, 1) << "never defined";
    EXPECT_EQ(to_plane(50, 9, 3, by_number, 17).status, 1);
    EXPECT_EQ(to_geographic(3500000, 5600000, 3, 0, -4).status, 1);
    ASSERT_EQ(define(2, 1, 1), 0);
    ASSERT_EQ(define(2, 9, 1), 1);
    EXPECT_EQ(to_plane(50, 9, 3, by_number, 2).status, 1) << "a refused system leaves none behind";
}

TEST_F(KoordtransTest, SlotsHoldSystemsOfTheirOwn) {
    ASSERT_EQ(define(1, 4, utm), 0);
    ASSERT_EQ(define(2, 1, gauss_krueger), 0);
    EXPECT_GT(to_plane(50, 9.5, 32, by_number, 1).rechts, 32000000);
    EXPECT_LT(to_plane(50, 9.5, 3, by_number, 2).rechts, 4000000);
}

TEST_F(KoordtransTest, RoundTripClosesToAHundredthOfAMillimetre) {
    for (std::int32_t ellipsoid = 1; ellipsoid <= 5; ++ellipsoid) {
        for (const std::int32_t mapping : {gauss_krueger, utm}) {
            ASSERT_EQ(define(1, ellipsoid, mapping), 0);
            const std::int32_t number = mapping == utm ? 32 : 3;
            for (double latitude = -84; latitude <= 84; latitude += 7) {
                for (double offset = -3.5; offset <= 3.5; offset += 0.5) {
                    const Plane plane = to_plane(latitude, 9 + offset, number, by_number);
                    ASSERT_EQ(plane.status, 0);
                    const Geographic back = to_geographic(plane.rechts, plane.hoch, number, 0);
                    ASSERT_EQ(back.status, 0);
                    const Plane again = to_plane(back.latitude, back.longitude, number, by_number);
                    EXPECT_NEAR(again.rechts, plane.rechts, 1e-5);
                    EXPECT_NEAR(again.hoch, plane.hoch, 1e-5);
                }
            }
        }
    }
}

TEST_F(KoordtransTest, AgreesWithAnIndependentImplementation) {
    constexpr double limit = 1e-6;  // a thousandth of a millimetre
    int points = 0;
    double largest = 0;
    for (std::int32_t ellipsoid = 1; ellipsoid <= 5; ++ellipsoid) {
        for (const std::int32_t mapping : {gauss_krueger, utm}) {
            ASSERT_EQ(define(1, ellipsoid, mapping), 0);
            const auto [a, f] = ellipsoids[static_cast<std::size_t>(ellipsoid)];
            const GeographicLib::TransverseMercatorExact exact(a, f, mapping == utm ? 0.9996 : 1.0);
            const std::int32_t number = mapping == utm ? 31 : 2;
            const double central = mapping == utm ? 3 : 6;
            const double false_easting = number * 1e6 + 500000;
            for (double latitude = -80.3; latitude < 84; latitude += 8.7) {
                for (double offset = -3.5; offset <= 3.5; offset += 0.41) {
                    double x = 0;
                    double y = 0;
                    exact.Forward(central, latitude, central + offset, x, y);
                    const Plane plane = to_plane(latitude, central + offset, number, by_number);
                    ASSERT_EQ(plane.status, 0);
                    EXPECT_NEAR(plane.rechts - false_easting, x, limit);
                    EXPECT_NEAR(plane.hoch, y, limit);
                    double expected_latitude = 0;
                    double expected_longitude = 0;
                    exact.Reverse(central, x, y, expected_latitude, expected_longitude);
                    const Geographic back = to_geographic(x + false_easting, y, number, 0);
                    ASSERT_EQ(back.status, 0);
                    const double metres_per_degree = a * std::numbers::pi / 180;
                    EXPECT_NEAR((back.latitude - expected_latitude) * metres_per_degree, 0, limit);
                    EXPECT_NEAR((back.longitude - expected_longitude) * metres_per_degree *
                                    std::cos(expected_latitude * std::numbers::pi / 180),
                                0, limit);
                    largest = std::max({largest, std::fabs(plane.rechts - false_easting - x),
                                        std::fabs(plane.hoch - y)});
                    ++points;
                }
            }
        }
    }
    EXPECT_GE(points, 1000);
    RecordProperty("points", points);
    RecordProperty("largest_difference_nm", static_cast<int>(largest * 1e9));
}

}  // namespace
}  // namespace veldra
