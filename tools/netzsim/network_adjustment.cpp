#include <algorithm>
#include <cmath>
#include <numbers>

#include "network.h"

namespace veldra::netzsim {

namespace {

constexpr int kEast = 0;
constexpr int kNorth = 1;
constexpr int kHeight = 2;
constexpr int kSteps = 4;

double component(const Position& position, int axis) {
    if (axis == kEast) {
        return position.east;
    }
    return axis == kNorth ? position.north : position.height;
}

/// The difference of two angles between -pi and pi.
double turned(double angle) {
    return std::remainder(angle, 2.0 * std::numbers::pi);
}

bool is_direction(Kind kind) {
    return kind == Kind::kDirection || kind == Kind::kGpsDirection || kind == Kind::kOrientation;
}

bool is_plane(Kind kind) {
    return is_direction(kind) || kind == Kind::kDistance || kind == Kind::kGpsDistance ||
           kind == Kind::kGpsVector;
}

bool is_height(Kind kind) {
    return !is_plane(kind) || kind == Kind::kGpsVector;
}

/// Numbers the unknowns: only what an observation touches becomes one.
class Unknowns {
 public:
    explicit Unknowns(const Network& network)
        : of_point_(network.truth.size(), {-1, -1, -1}),
          of_set_(static_cast<std::size_t>(network.sets), -1) {
        for (const Observation& observation : network.observations) {
            add(observation.from, observation.kind);
            if (observation.kind != Kind::kOrientation) {
                add(observation.to, observation.kind);
            }
            if (is_direction(observation.kind)) {
                take(of_set_[static_cast<std::size_t>(observation.set)]);
            }
        }
    }

    [[nodiscard]] int point(int index, int axis) const {
        return of_point_[static_cast<std::size_t>(index)][static_cast<std::size_t>(axis)];
    }
    [[nodiscard]] int set(int index) const { return of_set_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int count() const { return count_; }

 private:
    void add(int index, Kind kind) {
        auto& numbers = of_point_[static_cast<std::size_t>(index)];
        if (is_plane(kind)) {
            take(numbers[kEast]);
            take(numbers[kNorth]);
        }
        if (is_height(kind)) {
            take(numbers[kHeight]);
        }
    }
    void take(int& number) {
        if (number < 0) {
            number = count_++;
        }
    }

    std::vector<std::array<int, 3>> of_point_;
    std::vector<int> of_set_;
    int count_ = 0;
};

/// The state of the iteration: present positions and orientations.
struct State {
    std::vector<Position> points;
    std::vector<double> orientations;
};

/// Approximate values for what is unknown, the truth for what is not observed.
State starting_state(const Network& network, const Unknowns& unknowns) {
    const auto decimetres = [](double value) { return std::round(value * 10.0) / 10.0; };
    State state;
    for (std::size_t i = 0; i < network.truth.size(); ++i) {
        const int index = static_cast<int>(i);
        const Position& truth = network.truth[i];
        const Position start = network.start.empty()
                                   ? Position{decimetres(truth.east), decimetres(truth.north),
                                              decimetres(truth.height)}
                                   : network.start[i];
        const bool plane = unknowns.point(index, kEast) >= 0;
        const bool height = unknowns.point(index, kHeight) >= 0;
        state.points.push_back({plane ? start.east : truth.east, plane ? start.north : truth.north,
                                height ? start.height : truth.height});
    }
    state.orientations.resize(static_cast<std::size_t>(network.sets), 0.0);
    return state;
}

const Position& target_of(const Network& network, const State& state,
                          const Observation& observation) {
    const auto& list =
        observation.kind == Kind::kOrientation ? network.remote_targets : state.points;
    return list[static_cast<std::size_t>(observation.to)];
}

/// Orientations from the first direction of each set.
void start_orientations(const Network& network, State& state) {
    std::vector<bool> known(state.orientations.size(), false);
    for (const Observation& observation : network.observations) {
        const auto set = static_cast<std::size_t>(observation.set);
        if (!is_direction(observation.kind) || known[set]) {
            continue;
        }
        const Position& from = state.points[static_cast<std::size_t>(observation.from)];
        const Position& to = target_of(network, state, observation);
        state.orientations[set] = turned(bearing(from, to) - observation.value[0]);
        known[set] = true;
    }
}

/// The linearised equations of one step, in the order of observations, then controls.
class EquationBuilder {
 public:
    EquationBuilder(const Network& network, const Unknowns& unknowns, const State& state)
        : network_(network), unknowns_(unknowns), state_(state) {}

    std::vector<Equation> build() {
        for (const Observation& observation : network_.observations) {
            add(observation);
        }
        for (const Control& control : network_.controls) {
            add(control);
        }
        return std::move(equations_);
    }

 private:
    void add(const Observation& observation) {
        switch (observation.kind) {
            case Kind::kDistance:
            case Kind::kGpsDistance:
                add_distance(observation);
                break;
            case Kind::kDirection:
            case Kind::kGpsDirection:
            case Kind::kOrientation:
                add_direction(observation);
                break;
            case Kind::kHeightDifference:
            case Kind::kGpsHeightDifference:
                add_difference(observation, kHeight, 0);
                break;
            case Kind::kZenithAngle:
                add_zenith_angle(observation);
                break;
            case Kind::kGpsVector:
                add_difference(observation, kEast, 0);
                add_difference(observation, kNorth, 1);
                add_difference(observation, kHeight, 2);
                break;
        }
    }

    void add(const Control& control) {
        const Position& present = state_.points[static_cast<std::size_t>(control.point)];
        for (const int axis : {kEast, kNorth, kHeight}) {
            const double sigma = axis == kHeight ? control.sigma_height : control.sigma_plane;
            if (sigma > 0.0) {
                Equation& equation =
                    append(component(control.given, axis) - component(present, axis), sigma);
                put(equation, unknowns_.point(control.point, axis), 1.0);
            }
        }
    }

    void add_distance(const Observation& observation) {
        const Position& from = point(observation.from);
        const Position& to = point(observation.to);
        const double distance = plane_distance(from, to);
        Equation& equation = append(observation.value[0] - distance, observation.sigma[0]);
        put_pair(equation, observation, kEast, (to.east - from.east) / distance);
        put_pair(equation, observation, kNorth, (to.north - from.north) / distance);
    }

    void add_direction(const Observation& observation) {
        const Position& from = point(observation.from);
        const Position& to = target_of(network_, state_, observation);
        const double orientation = state_.orientations[static_cast<std::size_t>(observation.set)];
        const double square = std::pow(plane_distance(from, to), 2);
        Equation& equation = append(turned(observation.value[0] + orientation - bearing(from, to)),
                                    observation.sigma[0]);
        put_pair(equation, observation, kEast, (to.north - from.north) / square);
        put_pair(equation, observation, kNorth, -(to.east - from.east) / square);
        put(equation, unknowns_.set(observation.set), -1.0);
    }

    void add_difference(const Observation& observation, int axis, std::size_t index) {
        const double difference =
            component(point(observation.to), axis) - component(point(observation.from), axis);
        Equation& equation =
            append(observation.value[index] - difference, observation.sigma[index]);
        put_pair(equation, observation, axis, 1.0);
    }

    void add_zenith_angle(const Observation& observation) {
        const Position& from = point(observation.from);
        const Position& to = point(observation.to);
        const double angle = zenith_angle(from, to);
        Equation& equation = append(observation.value[0] - angle, observation.sigma[0]);
        // z = atan2(s, h): dz/dh = -s / (s^2 + h^2) = -sin^2(z) / s; the plane positions are held.
        put_pair(equation, observation, kHeight,
                 -std::pow(std::sin(angle), 2) / plane_distance(from, to));
    }

    Equation& append(double misclosure, double sigma) {
        equations_.push_back({{}, misclosure, sigma});
        return equations_.back();
    }

    static void put(Equation& equation, int unknown, double value) {
        equation.coefficients.push_back({unknown, value});
    }

    /// Derivative `value` at the second point and its negative at the first.
    void put_pair(Equation& equation, const Observation& observation, int axis,
                  double value) const {
        put(equation, unknowns_.point(observation.from, axis), -value);
        if (observation.kind != Kind::kOrientation) {
            put(equation, unknowns_.point(observation.to, axis), value);
        }
    }

    [[nodiscard]] const Position& point(int index) const {
        return state_.points[static_cast<std::size_t>(index)];
    }

    const Network& network_;
    const Unknowns& unknowns_;
    const State& state_;
    std::vector<Equation> equations_;
};

/// The conditions of a free network on its datum points, in the starting positions.
Eigen::MatrixXd datum_conditions(const Network& network, const Unknowns& unknowns,
                                 const State& start) {
    if (network.datum_points.empty()) {
        return {};
    }
    const int first = network.datum_points.front();
    const bool plane = unknowns.point(first, kEast) >= 0;
    const bool height = unknowns.point(first, kHeight) >= 0;
    const bool rotation =
        plane && std::none_of(network.observations.begin(), network.observations.end(),
                              [](const Observation& o) { return o.kind == Kind::kGpsVector; });
    const int columns = (plane ? 2 : 0) + (height ? 1 : 0) + (rotation ? 1 : 0);
    Eigen::MatrixXd conditions = Eigen::MatrixXd::Zero(unknowns.count(), columns);
    const Position& pivot = start.points[static_cast<std::size_t>(first)];
    for (const int index : network.datum_points) {
        const Position& position = start.points[static_cast<std::size_t>(index)];
        int column = 0;
        if (plane) {
            conditions(unknowns.point(index, kEast), column++) = 1.0;
            conditions(unknowns.point(index, kNorth), column++) = 1.0;
        }
        if (height) {
            conditions(unknowns.point(index, kHeight), column++) = 1.0;
        }
        if (rotation) {
            conditions(unknowns.point(index, kEast), column) = position.north - pivot.north;
            conditions(unknowns.point(index, kNorth), column) = pivot.east - position.east;
        }
    }
    return conditions;
}

void apply(const Adjustment& adjustment, const Unknowns& unknowns, State& state) {
    const auto correction = [&](int unknown) {
        return unknown < 0 ? 0.0 : adjustment.corrections(unknown);
    };
    for (std::size_t i = 0; i < state.points.size(); ++i) {
        const int index = static_cast<int>(i);
        state.points[i].east += correction(unknowns.point(index, kEast));
        state.points[i].north += correction(unknowns.point(index, kNorth));
        state.points[i].height += correction(unknowns.point(index, kHeight));
    }
    for (std::size_t i = 0; i < state.orientations.size(); ++i) {
        state.orientations[i] += correction(unknowns.set(static_cast<int>(i)));
    }
}

/// What turns an error of the observation into metres at the point.
double lever_of(const Network& network, const State& state, const Observation& observation) {
    if (!is_direction(observation.kind) && observation.kind != Kind::kZenithAngle) {
        return 1.0;
    }
    return plane_distance(state.points[static_cast<std::size_t>(observation.from)],
                          target_of(network, state, observation));
}

void collect_reliability(const Network& network, const State& state, const Adjustment& adjustment,
                         NetworkResult& result) {
    std::size_t row = 0;
    for (const Observation& observation : network.observations) {
        const double lever = lever_of(network, state, observation);
        auto& values = result.observations.emplace_back();
        const std::size_t components = observation.kind == Kind::kGpsVector ? 3 : 1;
        for (std::size_t i = 0; i < components; ++i) {
            values[i] = reliability(adjustment.residuals[row++], lever);
        }
    }
    for (const Control& control : network.controls) {
        ControlResidual& values = result.controls.emplace_back();
        values.point = control.point;
        values.plane = control.sigma_plane > 0.0;
        values.height = control.sigma_height > 0.0;
        if (values.plane) {
            values.v.east = adjustment.residuals[row].v;
            values.reliability[0] = reliability(adjustment.residuals[row++], 1.0);
            values.v.north = adjustment.residuals[row].v;
            values.reliability[1] = reliability(adjustment.residuals[row++], 1.0);
        }
        if (values.height) {
            values.v.height = adjustment.residuals[row].v;
            values.reliability[2] = reliability(adjustment.residuals[row++], 1.0);
        }
    }
}

void collect_precision(const Unknowns& unknowns, const Adjustment& adjustment,
                       NetworkResult& result) {
    const double centimetres = 100.0 * adjustment.sigma0;
    for (std::size_t i = 0; i < result.points.size(); ++i) {
        const int index = static_cast<int>(i);
        const int east = unknowns.point(index, kEast);
        const int north = unknowns.point(index, kNorth);
        const int height = unknowns.point(index, kHeight);
        auto& ellipse = result.ellipses.emplace_back();
        if (east >= 0) {
            const Eigen::MatrixXd& q = adjustment.cofactors;
            ellipse = error_ellipse(q(east, east), q(east, north), q(north, north));
            ellipse->a *= centimetres;
            ellipse->b *= centimetres;
        }
        auto& height_error = result.height_errors.emplace_back();
        if (height >= 0) {
            height_error = centimetres * std::sqrt(adjustment.cofactors(height, height));
        }
    }
}

}  // namespace

NetworkResult adjust_network(const Network& network) {
    const Unknowns unknowns(network);
    State state = starting_state(network, unknowns);
    start_orientations(network, state);
    const Eigen::MatrixXd datum = datum_conditions(network, unknowns, state);

    Adjustment adjustment;
    for (int step = 0; step < kSteps; ++step) {
        const std::vector<Equation> equations = EquationBuilder(network, unknowns, state).build();
        adjustment = adjust(equations, unknowns.count(), datum);
        apply(adjustment, unknowns, state);
    }

    NetworkResult result;
    result.points = state.points;
    result.redundancy = adjustment.redundancy;
    result.sigma0 = adjustment.sigma0;
    collect_reliability(network, state, adjustment, result);
    collect_precision(unknowns, adjustment, result);
    return result;
}

}  // namespace veldra::netzsim
