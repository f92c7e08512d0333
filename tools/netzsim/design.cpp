#include "design.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <set>
#include <utility>

namespace veldra::netzsim {

namespace {

constexpr double kGon = std::numbers::pi / 200.0;

double millimetres(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

struct Circle {
    double east = 0.0;
    double north = 0.0;
    double radius = 0.0;
    bool proper = false;
};

Circle circumcircle(const Position& a, const Position& b, const Position& c) {
    const double be = b.east - a.east;
    const double bn = b.north - a.north;
    const double ce = c.east - a.east;
    const double cn = c.north - a.north;
    const double twice_area = be * cn - bn * ce;
    if (std::abs(twice_area) < 1e-6) {
        return {};
    }
    const double b_square = be * be + bn * bn;
    const double c_square = ce * ce + cn * cn;
    const double east = (cn * b_square - bn * c_square) / (2.0 * twice_area);
    const double north = (be * c_square - ce * b_square) / (2.0 * twice_area);
    return {a.east + east, a.north + north, std::hypot(east, north), true};
}

bool is_empty(const Circle& circle, const std::vector<Position>& points) {
    return std::all_of(points.begin(), points.end(), [&](const Position& p) {
        return std::hypot(p.east - circle.east, p.north - circle.north) > circle.radius - 1e-6;
    });
}

}  // namespace

std::vector<Position> staggered_points(const Box& box, double spacing, double jitter,
                                       NormalSource& source) {
    const double row_height = spacing * std::sqrt(3.0) / 2.0;
    const int rows = 1 + static_cast<int>((box.north_max - box.north_min) / row_height);
    std::vector<Position> points;
    for (int row = 0; row < rows; ++row) {
        const double north = box.north_min + row * row_height;
        const double first = box.east_min + (row % 2 == 1 ? spacing / 2.0 : 0.0);
        const int columns = 1 + static_cast<int>((box.east_max - first) / spacing);
        for (int column = 0; column < columns; ++column) {
            const double east = first + column * spacing + source.uniform(-jitter, jitter);
            const double moved_north = north + source.uniform(-jitter, jitter);
            points.push_back({millimetres(east), millimetres(moved_north), 0.0});
        }
    }
    return points;
}

std::vector<Edge> triangulate(const std::vector<Position>& points, double longest_edge) {
    std::set<std::pair<int, int>> found;
    const auto add = [&](int from, int to) {
        if (plane_distance(at(points, from), at(points, to)) <= longest_edge) {
            found.emplace(from, to);
        }
    };
    const int count = static_cast<int>(points.size());
    for (int a = 0; a < count; ++a) {
        for (int b = a + 1; b < count; ++b) {
            for (int c = b + 1; c < count; ++c) {
                const Circle circle = circumcircle(at(points, a), at(points, b), at(points, c));
                if (circle.proper && is_empty(circle, points)) {
                    add(a, b);
                    add(b, c);
                    add(a, c);
                }
            }
        }
    }
    std::vector<Edge> edges;
    edges.reserve(found.size());
    for (const auto& [from, to] : found) {
        edges.push_back({from, to});
    }
    return edges;
}

int nearest(const std::vector<Position>& points, const Position& position) {
    int best = 0;
    double shortest = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double distance = plane_distance(points[i], position);
        if (distance < shortest) {
            shortest = distance;
            best = static_cast<int>(i);
        }
    }
    return best;
}

Observation distance_between(const Network& network, int from, int to,
                             const PlaneAccuracy& accuracy) {
    const double distance = plane_distance(at(network.truth, from), at(network.truth, to));
    const double sigma = std::hypot(accuracy.distance, accuracy.distance_ppm * 1e-6 * distance);
    return {Kind::kDistance, from, to, 0, {}, {sigma, 1.0, 1.0}};
}

Observation direction_between(const Network& network, int from, int to,
                              const PlaneAccuracy& accuracy) {
    const double distance = plane_distance(at(network.truth, from), at(network.truth, to));
    const double sigma = std::hypot(accuracy.direction_gon * kGon, accuracy.centring / distance);
    return {Kind::kDirection, from, to, from, {}, {sigma, 1.0, 1.0}};
}

void plan_plane_observations(Network& network, const std::vector<Edge>& edges,
                             const PlaneAccuracy& accuracy, NormalSource& source) {
    network.sets = static_cast<int>(network.truth.size());
    for (const Edge& edge : edges) {
        if (source.uniform() < 0.75) {
            network.observations.push_back(distance_between(network, edge.from, edge.to, accuracy));
        }
        const double ways = source.uniform();
        if (ways < 0.85) {
            network.observations.push_back(
                direction_between(network, edge.from, edge.to, accuracy));
        }
        if (ways > 0.15) {
            network.observations.push_back(
                direction_between(network, edge.to, edge.from, accuracy));
        }
    }
}

void plan_orientation(Network& network, int from, int target) {
    constexpr double kSigma = 0.001 * kGon;
    network.observations.push_back(
        {Kind::kOrientation, from, target, from, {}, {kSigma, 1.0, 1.0}});
}

void append_polar_point(Network& network, int station, double azimuth_gon, double distance,
                        const PlaneAccuracy& accuracy) {
    const Position& from = at(network.truth, station);
    const double azimuth = azimuth_gon * kGon;
    const Position point = {millimetres(from.east + distance * std::sin(azimuth)),
                            millimetres(from.north + distance * std::cos(azimuth)), from.height};
    const int index = static_cast<int>(network.truth.size());
    network.truth.push_back(point);
    network.observations.push_back(distance_between(network, station, index, accuracy));
    network.observations.push_back(direction_between(network, station, index, accuracy));
}

void plan_height_observations(Network& network, const std::vector<Edge>& edges,
                              const HeightAccuracy& accuracy, NormalSource& source) {
    const auto add = [&](Kind kind, int from, int to, double sigma) {
        network.observations.push_back({kind, from, to, 0, {}, {sigma, 1.0, 1.0}});
    };
    const double zenith = accuracy.zenith_gon * kGon;
    for (const Edge& edge : edges) {
        const double distance =
            plane_distance(at(network.truth, edge.from), at(network.truth, edge.to));
        if (distance <= accuracy.levelled_up_to) {
            add(Kind::kHeightDifference, edge.from, edge.to,
                accuracy.levelled_per_root_km * std::sqrt(distance / 1000.0));
            continue;
        }
        const double choice = source.uniform();
        if (choice < 0.35) {
            add(Kind::kGpsHeightDifference, edge.from, edge.to, accuracy.gps);
            continue;
        }
        add(Kind::kZenithAngle, edge.from, edge.to, zenith);
        if (choice < 0.85) {
            add(Kind::kZenithAngle, edge.to, edge.from, zenith);
        }
    }
}

Observation gps_vector_between(const Network& network, int from, int to) {
    const double distance = plane_distance(at(network.truth, from), at(network.truth, to));
    const double plane = 0.004 + 1e-6 * distance;
    return {Kind::kGpsVector, from, to, 0, {}, {plane, plane, 2.0 * plane}};
}

}  // namespace veldra::netzsim
