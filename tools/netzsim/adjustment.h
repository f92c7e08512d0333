#pragma once

#include <vector>

#include <Eigen/Core>

namespace veldra::netzsim {

/// Derivative of an observation by one unknown.
struct Coefficient {
    int unknown = 0;
    double value = 0.0;
};

/// One linearised, uncorrelated observation: its derivatives, observed minus computed, and its
/// a priori standard deviation in the unit of the observation.
struct Equation {
    std::vector<Coefficient> coefficients;
    double misclosure = 0.0;
    double sigma = 1.0;
};

struct Residual {
    double v = 0.0;           ///< adjusted minus observed, unit of the observation
    double redundancy = 0.0;  ///< share r of the observation in the redundancy, 0 to 1
    double normalised = 0.0;  ///< |v| / (sigma * sqrt(r)); 0 for an uncontrolled observation
};

struct Adjustment {
    Eigen::VectorXd corrections;  ///< of the unknowns
    Eigen::MatrixXd cofactors;    ///< of the unknowns, a priori standard deviation of unit weight 1
    std::vector<Residual> residuals;
    int redundancy = 0;
    double sigma0 = 1.0;  ///< a posteriori standard deviation of unit weight; 1 without redundancy
};

/// An observation with a smaller share in the redundancy counts as uncontrolled.
inline constexpr double kUncontrolled = 1e-6;

/// Least squares in the Gauss-Markov model with the weights 1/sigma^2. Each column of `datum` is a
/// condition (column)^T * corrections = 0 that removes a datum defect; the columns must be a basis
/// of that defect on the points that carry the datum. The number of conditions adds to the
/// redundancy n - u + d. Throws std::invalid_argument when the normal equations stay singular and
/// std::logic_error when the shares in the redundancy do not sum up to the redundancy.
///
/// Formulas: W. Niemeier, "Ausgleichungsrechnung", 2nd ed., de Gruyter 2008 (adjustment, free
/// networks); W. Baarda, "A testing procedure for use in geodetic networks", Netherlands Geodetic
/// Commission 2(5), 1968 (normalised residuals).
[[nodiscard]] Adjustment adjust(const std::vector<Equation>& equations, int unknowns,
                                const Eigen::MatrixXd& datum = Eigen::MatrixXd());

/// The test values of an observation as the graphic file holds them.
struct Reliability {
    double ev = 0.0;  ///< "Einfluss auf die Verbesserung": 100 r, percent
    double nv = 0.0;  ///< "normierte Verbesserung": normalised residual
    double ep = 0.0;  ///< "Einfluss auf den Punkt" (EP, for heights EH), centimetres
};

/// EP = (1 - r) * |GF| * lever * 100, where GF = -v / r is the gross error estimated from the
/// residual; the share 1 - r of it goes into the coordinates. `lever` turns the unit of the
/// observation into metres at the point: 1 for lengths, the distance for angles in radians.
/// NV and EP are 0 for an uncontrolled observation. Formula: W. Förstner, "Das Programm TRINA zur
/// Ausgleichung und Gütebeurteilung geodätischer Lagenetze", ZfV 104 (1979), 61-72.
[[nodiscard]] Reliability reliability(const Residual& residual, double lever);

/// Helmert's error ellipse.
struct ErrorEllipse {
    double a = 0.0;        ///< major semi-axis, unit of the square root of the cofactors
    double b = 0.0;        ///< minor semi-axis
    double azimuth = 0.0;  ///< of a, gon, clockwise from north, 0 to 200
};

/// The ellipse of the 2x2 (co)variance matrix of easting and northing (Niemeier 2008).
[[nodiscard]] ErrorEllipse error_ellipse(double east_east, double east_north, double north_north);

}  // namespace veldra::netzsim
