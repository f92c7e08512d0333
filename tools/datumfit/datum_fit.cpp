#include "datum_fit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <Eigen/Dense>

namespace veldra {

namespace {

constexpr double radians = std::numbers::pi / 180;
constexpr double seconds = radians / 3600;

struct Ellipsoid {
    double a;
    double f;

    [[nodiscard]] double e2() const { return f * (2 - f); }
};
constexpr Ellipsoid bessel{6377397.155, 1 / 299.1528128};
constexpr Ellipsoid grs80{6378137.0, 1 / 298.257222101};

/// Radii of curvature in the prime vertical and in the meridian, metres.
double prime_vertical(const Ellipsoid& ellipsoid, double latitude) {
    const double sine = std::sin(latitude);
    return ellipsoid.a / std::sqrt(1 - ellipsoid.e2() * sine * sine);
}
double meridian_radius(const Ellipsoid& ellipsoid, double latitude) {
    const double n = prime_vertical(ellipsoid, latitude);
    return n * n * n * (1 - ellipsoid.e2()) / (ellipsoid.a * ellipsoid.a);
}

Eigen::Vector3d to_space(const Ellipsoid& ellipsoid, const GeographicPoint& point) {
    const double phi = point.latitude * radians;
    const double lambda = point.longitude * radians;
    const double n = prime_vertical(ellipsoid, phi);
    return {n * std::cos(phi) * std::cos(lambda), n * std::cos(phi) * std::sin(lambda),
            n * (1 - ellipsoid.e2()) * std::sin(phi)};
}

GeographicPoint to_degrees(const Ellipsoid& ellipsoid, const Eigen::Vector3d& place) {
    const double p = std::hypot(place.x(), place.y());
    double phi = std::atan2(place.z(), p * (1 - ellipsoid.e2()));
    for (int i = 0; i < 20; ++i) {
        const double n = prime_vertical(ellipsoid, phi);
        phi = std::atan2(place.z() + ellipsoid.e2() * n * std::sin(phi), p);
    }
    return {phi / radians, std::atan2(place.y(), place.x()) / radians};
}

/// What is missing from a transition to its point, metres to the north and to the east.
Eigen::Vector2d residual(const DatumRow& row, const DatumPoint& point) {
    const GeographicPoint reached = DatumShift(row, point.from);
    const double phi = point.to.latitude * radians;
    return {(reached.latitude - point.to.latitude) * radians * meridian_radius(grs80, phi),
            (reached.longitude - point.to.longitude) * radians * prime_vertical(grs80, phi) *
                std::cos(phi)};
}

using Parameters = Eigen::Matrix<double, 5, 1>;

DatumRow to_row(const Parameters& x) {
    return {x[0], x[1], x[2], x[3], x[4]};
}

Eigen::VectorXd residuals(const Parameters& x, const std::vector<DatumPoint>& points) {
    Eigen::VectorXd all(2 * static_cast<Eigen::Index>(points.size()));
    Eigen::Index at = 0;
    for (const DatumPoint& point : points) {
        all.segment<2>(at) = residual(to_row(x), point);
        at += 2;
    }
    return all;
}

}  // namespace

GeographicPoint dhdn_to_etrs89(const GeographicPoint& point) {
    const Eigen::Vector3d shift(598.1, 73.7, 418.2);
    const Eigen::Vector3d turn = Eigen::Vector3d(0.202, 0.045, -2.455) * seconds;
    constexpr double scale = 1 + 6.7e-6;
    Eigen::Matrix3d rotation;
    rotation << 1, -turn.z(), turn.y(), turn.z(), 1, -turn.x(), -turn.y(), turn.x(), 1;
    return to_degrees(grs80, shift + scale * rotation * to_space(bessel, point));
}

std::vector<DatumPoint> germany(
    const std::function<GeographicPoint(const GeographicPoint&)>& transformation) {
    std::vector<DatumPoint> points;
    for (int latitude = 189; latitude <= 220; ++latitude) {
        for (int longitude = 23; longitude <= 61; ++longitude) {
            const GeographicPoint from{latitude / 4.0, longitude / 4.0};
            points.push_back({from, transformation(from)});
        }
    }
    return points;
}

DatumRow fit(const std::vector<DatumPoint>& points) {
    constexpr int iterations = 6;
    constexpr double step = 1e-3;
    Parameters x = Parameters::Zero();
    for (int i = 0; i < iterations; ++i) {
        const Eigen::VectorXd now = residuals(x, points);
        Eigen::MatrixXd slopes(now.size(), x.size());
        for (Eigen::Index k = 0; k < x.size(); ++k) {
            Parameters ahead = x;
            Parameters behind = x;
            ahead[k] += step;
            behind[k] -= step;
            slopes.col(k) = (residuals(ahead, points) - residuals(behind, points)) / (2 * step);
        }
        x -= slopes.colPivHouseholderQr().solve(now);
    }
    return to_row(x);
}

DatumRow rounded(const DatumRow& row) {
    const auto four_decimals = [](double value) { return std::round(value * 1e4) / 1e4; };
    return {four_decimals(row.dphi0), four_decimals(row.dlam0), four_decimals(row.sphi),
            four_decimals(row.slam), four_decimals(row.rot)};
}

Deviation deviation(const DatumRow& row, const std::vector<DatumPoint>& points) {
    Deviation result;
    for (const DatumPoint& point : points) {
        const double distance = residual(row, point).norm();
        result.largest = std::max(result.largest, distance);
        result.mean += distance / static_cast<double>(points.size());
    }
    return result;
}

}  // namespace veldra
