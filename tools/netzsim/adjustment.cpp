#include "adjustment.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

#include <Eigen/LU>

namespace veldra::netzsim {

namespace {

/// The normal matrix bordered by the datum conditions, inverted.
Eigen::MatrixXd invert_normals(const Eigen::MatrixXd& normals, const Eigen::MatrixXd& datum) {
    const Eigen::Index unknowns = normals.rows();
    const Eigen::Index conditions = datum.cols();
    Eigen::MatrixXd bordered = Eigen::MatrixXd::Zero(unknowns + conditions, unknowns + conditions);
    // Scaling to a unit diagonal lets the rank test work with unknowns of different units.
    const Eigen::VectorXd scale =
        normals.diagonal().unaryExpr([](double d) { return d > 0.0 ? 1.0 / std::sqrt(d) : 1.0; });
    bordered.topLeftCorner(unknowns, unknowns) = scale.asDiagonal() * normals * scale.asDiagonal();
    if (conditions > 0) {
        // A condition may be multiplied by any number; length 1 suits the unit diagonal.
        const Eigen::MatrixXd border = (scale.asDiagonal() * datum).colwise().normalized();
        bordered.topRightCorner(unknowns, conditions) = border;
        bordered.bottomLeftCorner(conditions, unknowns) = border.transpose();
    }
    Eigen::FullPivLU<Eigen::MatrixXd> solver(bordered);
    solver.setThreshold(1e-10);
    if (!solver.isInvertible()) {
        throw std::invalid_argument("normal equations are singular");
    }
    const Eigen::MatrixXd inverse = solver.inverse().topLeftCorner(unknowns, unknowns);
    return scale.asDiagonal() * inverse * scale.asDiagonal();
}

double dot(const Equation& equation, const Eigen::VectorXd& vector) {
    double sum = 0.0;
    for (const Coefficient& c : equation.coefficients) {
        sum += c.value * vector(c.unknown);
    }
    return sum;
}

double quadratic_form(const Equation& equation, const Eigen::MatrixXd& matrix) {
    double sum = 0.0;
    for (const Coefficient& row : equation.coefficients) {
        for (const Coefficient& column : equation.coefficients) {
            sum += row.value * matrix(row.unknown, column.unknown) * column.value;
        }
    }
    return sum;
}

Residual residual_of(const Equation& equation, const Adjustment& adjustment) {
    Residual residual;
    residual.v = dot(equation, adjustment.corrections) - equation.misclosure;
    const double weight = 1.0 / (equation.sigma * equation.sigma);
    const double share = 1.0 - weight * quadratic_form(equation, adjustment.cofactors);
    residual.redundancy = std::clamp(share, 0.0, 1.0);
    if (residual.redundancy > kUncontrolled) {
        residual.normalised =
            std::abs(residual.v) / (equation.sigma * std::sqrt(residual.redundancy));
    }
    return residual;
}

}  // namespace

Adjustment adjust(const std::vector<Equation>& equations, int unknowns,
                  const Eigen::MatrixXd& datum) {
    Eigen::MatrixXd normals = Eigen::MatrixXd::Zero(unknowns, unknowns);
    Eigen::VectorXd right = Eigen::VectorXd::Zero(unknowns);
    for (const Equation& equation : equations) {
        const double weight = 1.0 / (equation.sigma * equation.sigma);
        for (const Coefficient& row : equation.coefficients) {
            right(row.unknown) += row.value * weight * equation.misclosure;
            for (const Coefficient& column : equation.coefficients) {
                normals(row.unknown, column.unknown) += row.value * weight * column.value;
            }
        }
    }
    Adjustment result;
    result.cofactors = invert_normals(normals, datum);
    result.corrections = result.cofactors * right;
    result.redundancy =
        static_cast<int>(equations.size()) - unknowns + static_cast<int>(datum.cols());

    double share_sum = 0.0;
    double weighted_squares = 0.0;
    for (const Equation& equation : equations) {
        const Residual residual = residual_of(equation, result);
        share_sum += residual.redundancy;
        weighted_squares += (residual.v * residual.v) / (equation.sigma * equation.sigma);
        result.residuals.push_back(residual);
    }
    if (std::abs(share_sum - result.redundancy) > 1e-6 * static_cast<double>(equations.size())) {
        throw std::logic_error("shares in the redundancy do not sum up to the redundancy");
    }
    if (result.redundancy > 0) {
        result.sigma0 = std::sqrt(weighted_squares / result.redundancy);
    }
    return result;
}

Reliability reliability(const Residual& residual, double lever) {
    Reliability values;
    values.ev = 100.0 * residual.redundancy;
    if (residual.redundancy > kUncontrolled) {
        const double gross_error = std::abs(residual.v) / residual.redundancy;
        values.nv = residual.normalised;
        values.ep = 100.0 * lever * (1.0 - residual.redundancy) * gross_error;
    }
    return values;
}

ErrorEllipse error_ellipse(double east_east, double east_north, double north_north) {
    const double mean = (east_east + north_north) / 2.0;
    const double half_width = std::hypot((north_north - east_east) / 2.0, east_north);
    ErrorEllipse ellipse;
    ellipse.a = std::sqrt(mean + half_width);
    ellipse.b = std::sqrt(std::max(0.0, mean - half_width));
    const double twice = std::atan2(2.0 * east_north, north_north - east_east);
    ellipse.azimuth = twice / 2.0 * 200.0 / std::numbers::pi;
    if (ellipse.azimuth < 0.0) {
        ellipse.azimuth += 200.0;
    }
    return ellipse;
}

}  // namespace veldra::netzsim
