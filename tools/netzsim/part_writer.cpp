#include "part_writer.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace veldra::netzsim {

namespace {

std::string_view keyword(Kind kind) {
    switch (kind) {
        case Kind::kDistance:
            return "DISTANZ";
        case Kind::kDirection:
            return "RICHTUNG";
        case Kind::kGpsDistance:
            return "GPS-STRECKE";
        case Kind::kGpsDirection:
            return "GPS-RICHTUNG";
        case Kind::kHeightDifference:
            return "HÖHENUNTERSCHIED";
        case Kind::kZenithAngle:
            return "ZENITWINKEL";
        case Kind::kGpsHeightDifference:
            return "GPS-HÖHENUNTERSCHIED";
        case Kind::kOrientation:
            return "ORIENTIERUNGSRICHTUNG";
        case Kind::kGpsVector:
            break;
    }
    return "GPS-RAUMVEKTOR";
}

Position centimetres(const Position& metres) {
    return {100.0 * metres.east, 100.0 * metres.north, 100.0 * metres.height};
}

double thousandths(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

/// The change from the first epoch in thousandths of a centimetre.
Position total_change(const std::vector<Epoch>& epochs, std::size_t epoch, std::size_t point) {
    const Position& now = epochs[epoch].positions[point];
    const Position& first = epochs.front().positions[point];
    const Position change =
        centimetres({now.east - first.east, now.north - first.north, now.height - first.height});
    return {thousandths(change.east), thousandths(change.north), thousandths(change.height)};
}

/// What one epoch adds to the one before.
Position step_change(const std::vector<Epoch>& epochs, std::size_t epoch, std::size_t point) {
    const Position now = total_change(epochs, epoch, point);
    const Position before = total_change(epochs, epoch - 1, point);
    return {now.east - before.east, now.north - before.north, now.height - before.height};
}

EpochLabel epoch_label(const std::vector<Epoch>& epochs, std::size_t epoch, std::size_t point) {
    EpochLabel label{epochs[epoch].name, 0.0, 0.0};
    if (point % 4 == 3) {
        label.east = 80.0;
        label.north = -40.0;
    }
    return label;
}

}  // namespace

std::string german(double value, int decimals) {
    std::string text = fixed(value, 0, decimals);
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

std::string quality_text(const NetworkResult& result) {
    return fmt::format("Redundanz {}, Standardabweichung der Gewichtseinheit {}", result.redundancy,
                       german(result.sigma0, 2));
}

Position paper_zero(const std::vector<Position>& positions, int denominator) {
    const double centimetre = denominator / 100.0;
    Position corner = positions.front();
    for (const Position& position : positions) {
        corner.east = std::min(corner.east, position.east);
        corner.north = std::min(corner.north, position.north);
    }
    const auto outside = [&](double value) {
        return std::floor((value - 2.0 * centimetre) / centimetre) * centimetre;
    };
    return {outside(corner.east), outside(corner.north), 0.0};
}

void write_stations(GraphicWriter& writer, const PartPoints& points) {
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        writer.station(points.positions[i], points.stations[i]);
    }
}

void write_observations(GraphicWriter& writer, const PartPoints& points, const Network& network,
                        const NetworkResult& result, const std::vector<std::string>& target_names) {
    for (std::size_t i = 0; i < network.observations.size(); ++i) {
        const Observation& observation = network.observations[i];
        const Position& from = at(points.positions, observation.from);
        if (observation.kind == Kind::kOrientation) {
            writer.orientation(from, at(network.remote_targets, observation.to),
                               target_names[static_cast<std::size_t>(observation.to)]);
            continue;
        }
        const Position& to = at(points.positions, observation.to);
        if (observation.kind == Kind::kGpsVector) {
            writer.gps_vector(from, to, result.observations[i]);
        } else {
            writer.observation(keyword(observation.kind), from, to, result.observations[i][0]);
        }
    }
}

void write_precision(GraphicWriter& writer, const PartPoints& points, const NetworkResult& result) {
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        if (points.stations[i].control) {
            continue;
        }
        if (result.ellipses[i]) {
            writer.ellipse(points.positions[i], *result.ellipses[i]);
        }
        if (result.height_errors[i]) {
            writer.height_error(points.positions[i], *result.height_errors[i]);
        }
    }
}

void write_control_residuals(GraphicWriter& writer, const PartPoints& points,
                             const NetworkResult& result) {
    for (const ControlResidual& control : result.controls) {
        const Position& position = at(points.positions, control.point);
        const Position v = centimetres(control.v);
        if (control.plane) {
            writer.plane_residual(position, v, true, control.reliability[0],
                                  control.reliability[1]);
        }
        if (control.height) {
            writer.height_residual(position, v.height, true, control.reliability[2]);
        }
    }
}

void write_changes(GraphicWriter& writer, const PartPoints& points,
                   const std::vector<Epoch>& epochs) {
    for (std::size_t i = 0; i < points.positions.size(); ++i) {
        const Position& position = points.positions[i];
        const bool control = points.stations[i].control;
        writer.plane_change(position, total_change(epochs, 1, i), control,
                            epoch_label(epochs, 1, i));
        for (std::size_t k = 2; k < epochs.size(); ++k) {
            writer.next_plane_epoch(step_change(epochs, k, i), epoch_label(epochs, k, i));
        }
        writer.height_change(position, total_change(epochs, 1, i).height, control,
                             epoch_label(epochs, 1, i));
        for (std::size_t k = 2; k < epochs.size(); ++k) {
            writer.next_height_epoch(step_change(epochs, k, i).height, epoch_label(epochs, k, i));
        }
    }
}

}  // namespace veldra::netzsim
