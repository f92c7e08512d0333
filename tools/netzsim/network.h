#pragma once

#include <array>
#include <optional>
#include <vector>

#include "adjustment.h"
#include "normal_source.h"

namespace veldra::netzsim {

/// A position in the plane of projection and a height, metres.
struct Position {
    double east = 0.0;
    double north = 0.0;
    double height = 0.0;
};

inline const Position& at(const std::vector<Position>& positions, int index) {
    return positions[static_cast<std::size_t>(index)];
}

enum class Kind {
    kDistance,             ///< in the plane, metres
    kDirection,            ///< of a set with an unknown orientation, radians
    kGpsDistance,          ///< as kDistance
    kGpsDirection,         ///< as kDirection
    kOrientation,          ///< direction to a remote target of known coordinates
    kHeightDifference,     ///< levelled, metres
    kZenithAngle,          ///< radians, with curvature of the earth and refraction
    kGpsHeightDifference,  ///< metres
    kGpsVector,            ///< east, north and height components, metres
};

/// Observations are reduced into the plane of projection; the components of a vector count as
/// uncorrelated. Values and standard deviations use only their first element except for vectors.
struct Observation {
    Kind kind = Kind::kDistance;
    int from = 0;
    int to = 0;   ///< index of a point, of a remote target for kOrientation
    int set = 0;  ///< set of directions that share an orientation unknown
    std::array<double, 3> value = {};
    std::array<double, 3> sigma = {1.0, 1.0, 1.0};
};

/// A control point enters by its given coordinates as observations. A standard deviation of 0
/// leaves a component out.
struct Control {
    int point = 0;
    Position given;
    double sigma_plane = 0.0;
    double sigma_height = 0.0;
};

struct Network {
    std::vector<Position> truth;
    std::vector<Position> remote_targets;
    std::vector<Observation> observations;
    std::vector<Control> controls;
    std::vector<int> datum_points;  ///< points that carry the datum of a free network
    std::vector<Position> start;    ///< approximate positions; empty: the truth in decimetres
    int sets = 0;
};

/// What the adjustment says of a control point; v is adjusted minus given, metres.
struct ControlResidual {
    int point = 0;
    Position v;
    std::array<Reliability, 3> reliability = {};
    bool plane = false;
    bool height = false;
};

struct NetworkResult {
    std::vector<Position> points;
    std::vector<std::array<Reliability, 3>> observations;  ///< in the order of the network
    std::vector<ControlResidual> controls;
    std::vector<std::optional<ErrorEllipse>> ellipses;  ///< a posteriori, semi-axes in cm
    std::vector<std::optional<double>> height_errors;   ///< a posteriori, cm
    int redundancy = 0;
    double sigma0 = 1.0;
};

/// Directions from 0 to 2 pi, clockwise from north.
[[nodiscard]] double bearing(const Position& from, const Position& to);
[[nodiscard]] double plane_distance(const Position& from, const Position& to);

/// Zenith angle in radians over a plane distance with the curvature of the earth (6 380 km) and
/// the coefficient of refraction 0.13 (Gauss).
[[nodiscard]] double zenith_angle(const Position& from, const Position& to);

/// Gives every observation and every control point its true value plus a random error of its
/// standard deviation.
void simulate(Network& network, NormalSource& source);

/// Spoils an observation by a multiple of its standard deviation (all components of a vector).
void spoil(Observation& observation, double sigmas);

/// Adjusts with Gauss-Newton steps from the approximate positions. Components without an
/// observation stay as they are in `truth`. With `datum_points` the network is free: the
/// corrections of these points to the starting positions have no translation and no rotation.
/// Throws as `adjust` does.
[[nodiscard]] NetworkResult adjust_network(const Network& network);

}  // namespace veldra::netzsim
