#pragma once

#include <vector>

#include "network.h"

namespace veldra::netzsim {

struct Box {
    double east_min = 0.0;
    double north_min = 0.0;
    double east_max = 0.0;
    double north_max = 0.0;
};

struct Edge {
    int from = 0;
    int to = 0;
};

/// Points in staggered rows, `spacing` metres apart, each moved by up to `jitter` metres in both
/// coordinates; whole millimetres.
[[nodiscard]] std::vector<Position> staggered_points(const Box& box, double spacing, double jitter,
                                                     NormalSource& source);

/// Edges of the Delaunay triangulation up to a length, by the empty circumcircle; sorted.
[[nodiscard]] std::vector<Edge> triangulate(const std::vector<Position>& points,
                                            double longest_edge);

/// Index of the point next to a position.
[[nodiscard]] int nearest(const std::vector<Position>& points, const Position& position);

/// Standard deviations of an instrument.
struct PlaneAccuracy {
    double direction_gon = 0.0005;
    double centring = 0.003;  ///< metres, added to directions
    double distance = 0.005;  ///< metres
    double distance_ppm = 2.0;
};

[[nodiscard]] Observation distance_between(const Network& network, int from, int to,
                                           const PlaneAccuracy& accuracy);
/// A direction of the set of its station.
[[nodiscard]] Observation direction_between(const Network& network, int from, int to,
                                            const PlaneAccuracy& accuracy);

/// Distances on about three quarters of the edges, directions in both ways on most and in one way
/// on the others. Each point has its own set of directions.
void plan_plane_observations(Network& network, const std::vector<Edge>& edges,
                             const PlaneAccuracy& accuracy, NormalSource& source);

/// An orientation direction to a remote target in the set of the station.
void plan_orientation(Network& network, int from, int target);

/// A point determined by one distance and one direction from a station, without any control.
void append_polar_point(Network& network, int station, double azimuth_gon, double distance,
                        const PlaneAccuracy& accuracy);

struct HeightAccuracy {
    double levelled_per_root_km = 0.0015;  ///< metres
    double zenith_gon = 0.0008;
    double gps = 0.010;              ///< metres
    double levelled_up_to = 1500.0;  ///< longer edges are measured in other ways, metres
};

/// Levelled differences on the short edges; zenith angles, mostly reciprocal, and GPS height
/// differences on the others.
void plan_height_observations(Network& network, const std::vector<Edge>& edges,
                              const HeightAccuracy& accuracy, NormalSource& source);

/// A GPS vector of 4 mm and 1 ppm in the plane and twice as much in height.
[[nodiscard]] Observation gps_vector_between(const Network& network, int from, int to);

}  // namespace veldra::netzsim
