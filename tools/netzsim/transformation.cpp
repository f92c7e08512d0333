#include "transformation.h"

namespace veldra::netzsim {

namespace {

Position centre_of(const std::vector<IdenticalPoint>& points) {
    Position sum;
    for (const IdenticalPoint& point : points) {
        sum.east += point.source.east;
        sum.north += point.source.north;
    }
    const auto count = static_cast<double>(points.size());
    return {sum.east / count, sum.north / count, 0.0};
}

/// Parameters: shift east, shift north, scale minus 1, rotation; reduced to kilometres.
Equation east_equation(const IdenticalPoint& point, const Position& centre, double sigma) {
    const double east = (point.source.east - centre.east) / 1000.0;
    const double north = (point.source.north - centre.north) / 1000.0;
    return {{{0, 1.0}, {2, east}, {3, north}}, point.target.east - point.source.east, sigma};
}

Equation north_equation(const IdenticalPoint& point, const Position& centre, double sigma) {
    const double east = (point.source.east - centre.east) / 1000.0;
    const double north = (point.source.north - centre.north) / 1000.0;
    return {{{1, 1.0}, {2, north}, {3, -east}}, point.target.north - point.source.north, sigma};
}

Equation height_equation(const IdenticalPoint& point, const Position& centre, double sigma) {
    const double east = (point.source.east - centre.east) / 1000.0;
    const double north = (point.source.north - centre.north) / 1000.0;
    return {{{0, 1.0}, {1, east}, {2, north}}, point.target.height - point.source.height, sigma};
}

/// Computed minus target for a point that took no part in the adjustment.
double difference(const Equation& equation, const Adjustment& adjustment) {
    double value = -equation.misclosure;
    for (const Coefficient& c : equation.coefficients) {
        value += c.value * adjustment.corrections(c.unknown);
    }
    return value;
}

Reliability test_values(const Residual& residual) {
    Reliability values = reliability(residual, 1.0);
    values.ep = 0.0;
    return values;
}

void transform_plane(const std::vector<IdenticalPoint>& points, double sigma,
                     TransformationResult& result) {
    const Position centre = centre_of(points);
    std::vector<Equation> equations;
    for (const IdenticalPoint& point : points) {
        if (point.control) {
            equations.push_back(east_equation(point, centre, sigma));
            equations.push_back(north_equation(point, centre, sigma));
        }
    }
    const Adjustment adjustment = adjust(equations, 4);
    result.redundancy_plane = adjustment.redundancy;
    std::size_t row = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const IdenticalPoint& point = points[i];
        TransformationResidual& values = result.points[i];
        values.v.east = difference(east_equation(point, centre, sigma), adjustment);
        values.v.north = difference(north_equation(point, centre, sigma), adjustment);
        if (point.control) {
            values.reliability[0] = test_values(adjustment.residuals[row++]);
            values.reliability[1] = test_values(adjustment.residuals[row++]);
        }
    }
}

void transform_heights(const std::vector<IdenticalPoint>& points, double sigma,
                       TransformationResult& result) {
    const Position centre = centre_of(points);
    std::vector<Equation> equations;
    for (const IdenticalPoint& point : points) {
        if (point.control) {
            equations.push_back(height_equation(point, centre, sigma));
        }
    }
    const Adjustment adjustment = adjust(equations, 3);
    result.redundancy_height = adjustment.redundancy;
    std::size_t row = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const IdenticalPoint& point = points[i];
        TransformationResidual& values = result.points[i];
        values.v.height = difference(height_equation(point, centre, sigma), adjustment);
        if (point.control) {
            values.reliability[2] = test_values(adjustment.residuals[row++]);
        }
    }
}

}  // namespace

TransformationResult transform(const std::vector<IdenticalPoint>& points, double sigma_plane,
                               double sigma_height) {
    TransformationResult result;
    result.points.resize(points.size());
    transform_plane(points, sigma_plane, result);
    transform_heights(points, sigma_height, result);
    return result;
}

}  // namespace veldra::netzsim
