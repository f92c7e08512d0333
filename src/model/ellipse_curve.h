#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace veldra {

/// Cosine and sine of the 51 angles, 0 to a half turn, at which an ellipse is traced.
struct EllipseAngles {
    static constexpr std::size_t count = 51;
    std::array<double, count> cosine{};
    std::array<double, count> sine{};

    explicit EllipseAngles(double pi) {
        for (std::size_t n = 0; n < count; ++n) {
            const double u = static_cast<double>(n) * pi / 50;
            cosine[n] = std::cos(u);
            sine[n] = std::sin(u);
        }
    }
};

/// Pi as the drawing of ellipses takes it.
constexpr double drawing_pi = 6.28318530717959 / 2;

/// The angles of drawing, made once.
inline const EllipseAngles& drawing_angles() {
    static const EllipseAngles angles(drawing_pi);
    return angles;
}

/// An error ellipse: centre in ground coordinates, semi-axes in metres of ground, direction of the
/// a axis by sine and cosine of its azimuth (clockwise from north). Four branches of 50 segments
/// trace it: 0 and 1 start at the end of a that lies in its azimuth and together make the whole
/// curve; 2 and 3 start at the other end and cover 0 and 1 a second time.
struct EllipseCurve {
    double x = 0;
    double y = 0;
    double a = 0;
    double b = 0;
    double sine = 0;
    double cosine = 1;
    double origin_x = 0;  ///< of the target, to be subtracted from every point in 64 bits
    double origin_y = 0;

    struct Point {
        double x = 0;
        double y = 0;
    };

    /// Point 0 to 50 of branch 0 to 3, ground coordinates.
    [[nodiscard]] Point at(std::size_t branch, std::size_t n) const {
        const EllipseAngles& angles = drawing_angles();
        const double u = angles.cosine[n] * a;
        const double v = angles.sine[n] * b;
        const double us = u * sine;
        const double uc = u * cosine;
        const double vs = v * sine;
        const double vc = v * cosine;
        switch (branch) {
            case 0:
                return {x + us - vc, y + uc + vs};
            case 1:
                return {x + us + vc, y + uc - vs};
            case 2:
                return {x - us - vc, y - uc + vs};
            default:
                return {x - us + vc, y - uc - vs};
        }
    }
};

/// Hands the 200 segments of an ellipse to `line(x1, y1, x2, y2)` in ground coordinates, in the
/// order of tracing: the four branches advance together.
template <typename LineSink>
void trace_ellipse(const EllipseCurve& curve, LineSink&& line) {
    std::array<EllipseCurve::Point, 4> pen;
    for (std::size_t k = 0; k < pen.size(); ++k) {
        pen[k] = curve.at(k, 0);
    }
    for (std::size_t n = 1; n < EllipseAngles::count; ++n) {
        for (std::size_t k = 0; k < pen.size(); ++k) {
            const EllipseCurve::Point next = curve.at(k, n);
            line(pen[k].x, pen[k].y, next.x, next.y);
            pen[k] = next;
        }
    }
}

}  // namespace veldra
