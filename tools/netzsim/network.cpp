#include "network.h"

#include <cmath>
#include <numbers>

namespace veldra::netzsim {

namespace {

constexpr double kEarthRadius = 6380000.0;
constexpr double kRefraction = 0.13;

double wrapped(double angle) {
    constexpr double kFull = 2.0 * std::numbers::pi;
    return angle - kFull * std::floor(angle / kFull);
}

/// The true values of an observation; directions count from the orientation of their set.
std::array<double, 3> true_values(const Network& network, const Observation& observation,
                                  const std::vector<double>& orientations) {
    const auto at = [](const std::vector<Position>& list, int i) {
        return list[static_cast<std::size_t>(i)];
    };
    const Position from = at(network.truth, observation.from);
    const Position to =
        at(observation.kind == Kind::kOrientation ? network.remote_targets : network.truth,
           observation.to);
    switch (observation.kind) {
        case Kind::kDistance:
        case Kind::kGpsDistance:
            return {plane_distance(from, to), 0.0, 0.0};
        case Kind::kDirection:
        case Kind::kGpsDirection:
        case Kind::kOrientation:
            return {wrapped(bearing(from, to) -
                            orientations[static_cast<std::size_t>(observation.set)]),
                    0.0, 0.0};
        case Kind::kHeightDifference:
        case Kind::kGpsHeightDifference:
            return {to.height - from.height, 0.0, 0.0};
        case Kind::kZenithAngle:
            return {zenith_angle(from, to), 0.0, 0.0};
        case Kind::kGpsVector:
            break;
    }
    return {to.east - from.east, to.north - from.north, to.height - from.height};
}

}  // namespace

double bearing(const Position& from, const Position& to) {
    return wrapped(std::atan2(to.east - from.east, to.north - from.north));
}

double plane_distance(const Position& from, const Position& to) {
    return std::hypot(to.east - from.east, to.north - from.north);
}

double zenith_angle(const Position& from, const Position& to) {
    const double distance = plane_distance(from, to);
    const double drop = (1.0 - kRefraction) * distance * distance / (2.0 * kEarthRadius);
    return std::atan2(distance, to.height - from.height - drop);
}

void simulate(Network& network, NormalSource& source) {
    std::vector<double> orientations;
    orientations.reserve(static_cast<std::size_t>(network.sets));
    for (int set = 0; set < network.sets; ++set) {
        orientations.push_back(source.uniform(0.0, 2.0 * std::numbers::pi));
    }
    for (Observation& observation : network.observations) {
        observation.value = true_values(network, observation, orientations);
        const std::size_t components = observation.kind == Kind::kGpsVector ? 3 : 1;
        for (std::size_t i = 0; i < components; ++i) {
            observation.value[i] += observation.sigma[i] * source.normal();
        }
    }
    for (Control& control : network.controls) {
        const Position& truth = network.truth[static_cast<std::size_t>(control.point)];
        control.given.east = truth.east + control.sigma_plane * source.normal();
        control.given.north = truth.north + control.sigma_plane * source.normal();
        control.given.height = truth.height + control.sigma_height * source.normal();
    }
}

void spoil(Observation& observation, double sigmas) {
    for (std::size_t i = 0; i < observation.value.size(); ++i) {
        observation.value[i] += sigmas * observation.sigma[i];
    }
}

}  // namespace veldra::netzsim
