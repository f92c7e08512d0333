#include <cmath>
#include <numbers>

#include <fmt/format.h>

#include "part_writer.h"
#include "samples.h"

namespace veldra::netzsim {

namespace {

constexpr double kLength = 180.0;
constexpr int kFields = 6;
constexpr double kHalfWidth = 6.0;
constexpr int kPlanScale = 500;

/// A vector along the axis and to the right of it, turned into the local system.
Position turned(double along, double right) {
    constexpr double kAzimuth = 62.0 * std::numbers::pi / 200.0;
    return {along * std::sin(kAzimuth) + right * std::cos(kAzimuth),
            along * std::cos(kAzimuth) - right * std::sin(kAzimuth), 0.0};
}

/// A place on the bridge: metres along the axis and to the right of it, whole millimetres.
Position on_bridge(double along, double right, double height) {
    const Position place = turned(along, right);
    return {std::round((1040.0 + place.east) * 1000.0) / 1000.0,
            std::round((510.0 + place.north) * 1000.0) / 1000.0, height};
}

struct Bridge {
    PartPoints points;
    std::vector<double> along;  ///< of each point
    std::vector<int> pillars;
};

void add_point(Bridge& bridge, double along, double right, double height, const Station& station) {
    bridge.points.positions.push_back(on_bridge(along, right, height));
    bridge.points.stations.push_back(station);
    bridge.along.push_back(along);
    if (station.control) {
        bridge.pillars.push_back(static_cast<int>(bridge.points.positions.size()) - 1);
    }
}

Bridge make_bridge() {
    Bridge bridge;
    const double pillars[][2] = {{-38.0, -34.0}, {-44.0, 30.0},  {70.0, -62.0},
                                 {112.0, 66.0},  {219.0, -30.0}, {226.0, 37.0}};
    int number = 0;
    for (const auto& place : pillars) {
        ++number;
        Station station{fmt::format("Pf {}", number), 0, number % 2, true};
        if (number == 2) {
            station.label_east = 60.0;
            station.label_north = -90.0;
        }
        add_point(bridge, place[0], place[1], 71.5 + number * 0.4, station);
    }
    for (int section = 0; section <= kFields; ++section) {
        const double along = section * kLength / kFields;
        const int name = 101 + section;
        add_point(bridge, along, -kHalfWidth, 84.2, {fmt::format("{} L", name), 1, 2});
        add_point(bridge, along, kHalfWidth, 84.2, {fmt::format("{} R", name), 1, 2});
    }
    for (const double along : {60.0, 120.0}) {
        const char* side = along < 90.0 ? "West" : "Ost";
        add_point(bridge, along + 3.0, -13.0, 74.0, {fmt::format("Pfeiler {} o", side), 1, 3});
        add_point(bridge, along + 3.0, 13.0, 74.0, {fmt::format("Pfeiler {} u", side), 5, 3});
    }
    return bridge;
}

/// The eastern pier settles and tilts upstream; the deck creeps towards the western abutment.
Position moved(const Bridge& bridge, std::size_t index, double share) {
    const Position& p = bridge.points.positions[index];
    if (bridge.points.stations[index].control) {
        return p;
    }
    const double along = bridge.along[index];
    const double at_pier = share * std::exp(-std::pow((along - 121.0) / 38.0, 2));
    const Position shift = turned(-share * 0.006 * along / kLength, -0.005 * at_pier);
    return {p.east + shift.east, p.north + shift.north, p.height - 0.011 * at_pier};
}

Network plan(const Bridge& bridge, double share) {
    Network network;
    for (std::size_t i = 0; i < bridge.points.positions.size(); ++i) {
        network.truth.push_back(moved(bridge, i, share));
    }
    network.sets = static_cast<int>(network.truth.size());
    const PlaneAccuracy accuracy{0.0003, 0.0001, 0.0004, 1.0};
    for (const int pillar : bridge.pillars) {
        for (int target = 0; target < network.sets; ++target) {
            const double distance = plane_distance(network.truth[static_cast<std::size_t>(pillar)],
                                                   network.truth[static_cast<std::size_t>(target)]);
            if (target == pillar || distance > 150.0) {
                continue;
            }
            network.observations.push_back(direction_between(network, pillar, target, accuracy));
            if (target > pillar && distance < 110.0) {
                network.observations.push_back(distance_between(network, pillar, target, accuracy));
            }
        }
    }
    for (const Edge& edge : triangulate(network.truth, 75.0)) {
        const double sigma = 0.0003;
        network.observations.push_back(
            {Kind::kHeightDifference, edge.from, edge.to, 0, {}, {sigma, 1.0, 1.0}});
    }
    network.datum_points = bridge.pillars;
    network.start = bridge.points.positions;
    return network;
}

Selection local_selection(int point_values, int observations) {
    Selection selection;
    selection.point_values = point_values;
    selection.observations = observations;
    selection.districts = 0;
    selection.district_labels = 0;
    selection.boundaries = 0;
    selection.reference = 0;
    return selection;
}

void write_head(GraphicWriter& writer, const char* part, const PartPoints& points) {
    writer.record("NETZTEIL", part);
    Paper paper;
    paper.denominator = kPlanScale;
    paper.zero = paper_zero(points.positions, kPlanScale);
    paper.orientation = 2;
    paper.margin = 1;
    paper.legend = 3;
    writer.paper(paper);
}

Epoch measure(const Bridge& bridge, const char* name, double share, NormalSource& source) {
    Network network = plan(bridge, share);
    simulate(network, source);
    return {name, adjust_network(network).points};
}

}  // namespace

std::string local_sample() {
    NormalSource source(500);
    const Bridge bridge = make_bridge();
    Network zero = plan(bridge, 0.0);
    simulate(zero, source);
    const NetworkResult result = adjust_network(zero);
    const PartPoints points{result.points, bridge.points.stations};

    GraphicWriter writer;
    writer.record("VERFAHRENLEGENDE", "Brückenüberwachung Talübergang (simulierte Messungen)");
    writer.vector_scales({0.2, 1.0, 0.1, 0.2, 1.0, 0.1});
    write_head(writer, "Nullmessung", points);
    writer.record("TITEL2", "Freies Netz auf sechs Pfeilern (Pf), März 2006");
    writer.record("TITEL3", quality_text(result));
    writer.selection(local_selection(7, 1));
    write_stations(writer, points);
    write_observations(writer, points, zero, result);
    write_precision(writer, points, result);

    const std::vector<Epoch> epochs = {{"März 2006", result.points},
                                       measure(bridge, "Sept. 2006", 0.35, source),
                                       measure(bridge, "März 2007", 0.60, source),
                                       measure(bridge, "März 2008", 0.85, source),
                                       measure(bridge, "März 2009", 1.00, source)};
    write_head(writer, "Bewegungen", points);
    writer.record("TITEL2", "Bewegungen der Überbau- und Pfeilerpunkte gegen März 2006");
    writer.record("TITEL3", "Datum auf den sechs Beobachtungspfeilern");
    Selection chosen = local_selection(1, 0);
    chosen.epoch_labels = 1;
    writer.selection(chosen);
    write_stations(writer, points);
    write_changes(writer, points, epochs);
    return writer.bytes();
}

}  // namespace veldra::netzsim
