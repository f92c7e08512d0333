#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "part_writer.h"
#include "samples.h"
#include "transformation.h"

namespace veldra::netzsim {

namespace {

/// Within the sheet 5208 of the TK 25.
constexpr Box kArea = {2571200.0, 5619500.0, 2581700.0, 5629200.0};
constexpr double kLongestEdge = 2500.0;
constexpr int kPlanScale = 50000;

struct RemoteTarget {
    const char* name;
    Position position;
};

constexpr RemoteTarget kTargets[] = {
    {"Köln, Dom (Nordturm)", {2566870.41, 5645310.22, 0.0}},
    {"Siegburg, Abtei Michaelsberg", {2585210.78, 5629480.06, 0.0}},
    {"Drachenfels, Ruine", {2585745.33, 5615020.91, 0.0}},
    {"Gr. Ölberg, Gipfelkreuz", {2588190.15, 5616940.37, 0.0}},
    {"Godesburg, Bergfried", {2581420.66, 5617330.84, 0.0}},
    {"Swisttal, Kirchturm Buschhoven", {2567105.27, 5617660.50, 0.0}},
    {"Brühl, St. Margareta", {2563930.09, 5632715.73, 0.0}},
};

/// Rhine plain in the middle, hills in the south-east and south-west.
double terrain(const Position& p) {
    const auto hill = [&](double east, double north, double radius, double rise) {
        const double square =
            std::pow((p.east - east) / radius, 2) + std::pow((p.north - north) / radius, 2);
        return rise * std::exp(-square);
    };
    const double metres = 58.0 + hill(2583000.0, 5619000.0, 3200.0, 260.0) +
                          hill(2572500.0, 5620500.0, 3000.0, 115.0) +
                          hill(2576800.0, 5618500.0, 2000.0, 105.0);
    return std::round(metres * 1000.0) / 1000.0;
}

/// Trigonometric points (TP), traverse points (AP) of several height kinds, and other points.
Station station_of(std::size_t index) {
    const int number = static_cast<int>(index) + 1;
    if (index % 5 == 0) {
        return {fmt::format("52080{:03d}00", number / 5 + 1), 0, number % 3};
    }
    if (index % 7 == 3) {
        return {fmt::format("52082{:05d}", 2000 + number), 5, 3};
    }
    constexpr int kHeightKinds[] = {0, 1, 2, 3, 2, 1};
    return {fmt::format("52081{:05d}", 100 + number), 1, kHeightKinds[number % 6]};
}

/// The points with their true positions, in all parts the same.
struct Site {
    std::vector<Position> truth;
    std::vector<Station> stations;
    std::vector<Edge> edges;
    std::vector<int> controls;
};

Site make_site(NormalSource& source) {
    Site site;
    site.truth = staggered_points(kArea, 1650.0, 270.0, source);
    for (std::size_t i = 0; i < site.truth.size(); ++i) {
        site.truth[i].height = terrain(site.truth[i]);
        site.stations.push_back(station_of(i));
    }
    site.edges = triangulate(site.truth, kLongestEdge);
    const Position corners[] = {{2571300.0, 5619600.0, 0.0}, {2581500.0, 5619600.0, 0.0},
                                {2571300.0, 5629000.0, 0.0}, {2581500.0, 5629000.0, 0.0},
                                {2576400.0, 5624300.0, 0.0}, {2576400.0, 5629000.0, 0.0}};
    for (const Position& corner : corners) {
        const int index = nearest(site.truth, corner);
        Station& station = site.stations[static_cast<std::size_t>(index)];
        station.kind_plane = 0;
        station.control = true;
        station.label = fmt::format("52080{:03d}00", 51 + site.controls.size());
        site.controls.push_back(index);
    }
    site.stations[4].label_east = -260.0;
    site.stations[4].label_north = 120.0;
    site.stations[13].label_east = 90.0;
    site.stations[13].label_north = -70.0;
    site.stations[22].label_east = -240.0;
    site.stations[22].label_north = -60.0;
    return site;
}

Selection selection(int point_values, int observations) {
    Selection chosen;
    chosen.point_values = point_values;
    chosen.observations = observations;
    return chosen;
}

Paper paper(const std::vector<Position>& positions, int denominator, int orientation) {
    Paper settings;
    settings.denominator = denominator;
    settings.zero = paper_zero(positions, denominator);
    settings.orientation = orientation;
    return settings;
}

/// Points on the end of a single direction and distance: their observations are uncontrolled.
void append_polar_points(Network& network, PartPoints& points) {
    const PlaneAccuracy accuracy;
    const int bases[] = {8, 17, 29};
    const double azimuths[] = {160.0, 255.0, 40.0};
    for (std::size_t i = 0; i < std::size(bases); ++i) {
        append_polar_point(network, bases[i], azimuths[i], 520.0, accuracy);
        points.stations.push_back({fmt::format("52080{:03d}50", 3 + 2 * i), 1, 2});
    }
    points.stations.push_back({"Schacht 7", 2, 0});
    append_polar_point(network, 35, 320.0, 480.0, accuracy);
}

/// Returns the adjusted positions of the site's points, the drawn coordinates of other parts.
std::vector<Position> write_plane_part(GraphicWriter& writer, const Site& site,
                                       NormalSource& source) {
    Network network;
    network.truth = site.truth;
    PartPoints points{{}, site.stations};
    std::vector<std::string> names;
    for (const RemoteTarget& target : kTargets) {
        network.remote_targets.push_back(target.position);
        names.emplace_back(target.name);
    }
    plan_plane_observations(network, site.edges, PlaneAccuracy(), source);
    for (std::size_t i = 0; i < site.controls.size(); ++i) {
        plan_orientation(network, site.controls[i], static_cast<int>(i));
        network.controls.push_back({site.controls[i], {}, 0.012, 0.0});
    }
    const int south_west = site.controls[0];
    plan_orientation(network, south_west, 5);
    plan_orientation(network, nearest(site.truth, {2580000.0, 5622500.0, 0.0}), 2);
    plan_orientation(network, nearest(site.truth, {2573000.0, 5627000.0, 0.0}), 6);
    append_polar_points(network, points);
    simulate(network, source);
    spoil(network.observations[41], 7.0);
    spoil(network.observations[150], -9.0);
    spoil(network.observations[233], 6.0);
    const NetworkResult result = adjust_network(network);
    points.positions = result.points;

    writer.record("NETZTEIL", "Lage");
    writer.paper(paper(points.positions, kPlanScale, 1));
    writer.record("TITEL2", "Lagenetz 2004, Anschluss an sechs TP mit 12 mm Standardabweichung");
    writer.record("TITEL3", quality_text(result));
    writer.record("TITEL4", "Fehlerellipsen und statistischer Test der Beobachtungen");
    Selection chosen = selection(7, 1);
    chosen.test_observations = 1;
    chosen.test_value = 2;
    writer.selection(chosen);
    writer.record("BEARBEITUNG",
                  "\"Gruppe Süd\" 17.05.2004 \"drei Beobachtungen grob verfälscht\"");
    write_stations(writer, points);
    writer.district_label("5208", {2577250.0, 5625150.0, 0.0});
    write_observations(writer, points, network, result, names);
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
    return {result.points.begin(),
            result.points.begin() + static_cast<std::ptrdiff_t>(site.truth.size())};
}

void write_height_part(GraphicWriter& writer, const Site& site, const std::vector<Position>& drawn,
                       NormalSource& source) {
    Network network;
    network.truth = site.truth;
    HeightAccuracy accuracy;
    accuracy.levelled_up_to = 1600.0;
    plan_height_observations(network, site.edges, accuracy, source);
    for (const int index : site.controls) {
        network.controls.push_back({index, {}, 0.0, 0.003});
    }
    simulate(network, source);
    spoil(network.observations[60], 8.0);
    const NetworkResult result = adjust_network(network);
    const PartPoints points{drawn, site.stations};

    writer.record("NETZTEIL", "Höhe");
    writer.paper(paper(drawn, kPlanScale, 1));
    writer.record("TITEL2", "Höhennetz 2004: Nivellement, Zenitwinkel und GPS-Höhenunterschiede");
    writer.record("TITEL3", quality_text(result));
    writer.selection(selection(8, 2));
    write_stations(writer, points);
    write_observations(writer, points, network, result);
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
}

/// Every second point and the control points, in the order of the site.
std::vector<int> gps_points(const Site& site) {
    std::vector<int> chosen = site.controls;
    for (int i = 0; i < static_cast<int>(site.truth.size()); i += 2) {
        chosen.push_back(i);
    }
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    return chosen;
}

void plan_gps(Network& network, NormalSource& source) {
    const std::vector<Edge> edges = triangulate(network.truth, 4200.0);
    network.sets = 1;  // all directions come from one system with one unknown turn
    for (const Edge& edge : edges) {
        const double choice = source.uniform();
        if (choice < 0.85) {
            network.observations.push_back(gps_vector_between(network, edge.from, edge.to));
        }
        if (choice < 0.15) {  // a second session, measured the other way
            network.observations.push_back(gps_vector_between(network, edge.to, edge.from));
        }
        if (choice > 0.45) {
            network.observations.push_back(
                {Kind::kGpsDistance, edge.from, edge.to, 0, {}, {0.006, 1.0, 1.0}});
        }
        if (choice > 0.60) {
            const double distance =
                plane_distance(network.truth[static_cast<std::size_t>(edge.from)],
                               network.truth[static_cast<std::size_t>(edge.to)]);
            network.observations.push_back(
                {Kind::kGpsDirection, edge.from, edge.to, 0, {}, {0.006 / distance, 1.0, 1.0}});
        }
    }
}

void write_gps_part(GraphicWriter& writer, const Site& site, NormalSource& source) {
    Network network;
    PartPoints points;
    for (const int index : gps_points(site)) {
        const auto i = static_cast<std::size_t>(index);
        if (site.stations[i].control) {
            network.controls.push_back({static_cast<int>(network.truth.size()), {}, 0.010, 0.015});
        }
        network.truth.push_back(site.truth[i]);
        points.stations.push_back(site.stations[i]);
    }
    plan_gps(network, source);
    simulate(network, source);
    spoil(network.observations[12], 6.0);
    const NetworkResult result = adjust_network(network);
    points.positions = result.points;

    writer.record("NETZTEIL", "GPS");
    writer.paper(paper(points.positions, kPlanScale, 2));
    writer.record("TITEL2", "GPS-Netz 2004 mit Raumvektoren, Strecken und Richtungen");
    writer.record("TITEL3", quality_text(result));
    writer.selection(selection(7, 3));
    write_stations(writer, points);
    write_observations(writer, points, network, result);
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
}

/// A slope that slides and sinks towards its centre, with the share of the whole movement.
Position moved(const Position& p, double share) {
    const Position centre = {2576900.0, 5622700.0, 0.0};
    const double east = centre.east - p.east;
    const double north = centre.north - p.north;
    const double square = (east * east + north * north) / (1100.0 * 1100.0);
    const double sinking = 0.085 * share * std::exp(-square);
    // The horizontal movement follows the inclination of the trough.
    const double pull = 1.5 * sinking / 1100.0;
    return {p.east + pull * east, p.north + pull * north, p.height - sinking};
}

struct SlopeCampaign {
    PartPoints points;
    std::vector<Edge> edges;
    std::vector<int> datum;
};

SlopeCampaign make_slope(NormalSource& source) {
    SlopeCampaign slope;
    const Box area = {2574700.0, 5620900.0, 2579300.0, 5624700.0};
    slope.points.positions = staggered_points(area, 830.0, 130.0, source);
    slope.edges = triangulate(slope.points.positions, 1300.0);
    for (std::size_t i = 0; i < slope.points.positions.size(); ++i) {
        Position& position = slope.points.positions[i];
        position.height = terrain(position);
        const double distance = plane_distance(position, {2576900.0, 5622700.0, 0.0});
        Station station{fmt::format("52081{:05d}", 701 + i), 1, static_cast<int>(i % 4)};
        if (distance > 2200.0) {
            station.control = true;
            if (i % 3 == 0) {
                station.kind_plane = 0;
                station.label = fmt::format("52080{:03d}00", 71 + slope.datum.size());
            }
            slope.datum.push_back(static_cast<int>(i));
        }
        slope.points.stations.push_back(station);
    }
    return slope;
}

Epoch measure_epoch(const SlopeCampaign& slope, const char* name, double share,
                    NormalSource& source) {
    Network network;
    for (const Position& position : slope.points.positions) {
        network.truth.push_back(moved(position, share));
    }
    PlaneAccuracy plane;
    plane.distance = 0.003;
    plane.centring = 0.002;
    HeightAccuracy height;
    height.levelled_per_root_km = 0.0008;
    plan_plane_observations(network, slope.edges, plane, source);
    plan_height_observations(network, slope.edges, height, source);
    network.datum_points = slope.datum;
    network.start = slope.points.positions;
    simulate(network, source);
    return {name, adjust_network(network).points};
}

void write_deformation_part(GraphicWriter& writer, NormalSource& source) {
    SlopeCampaign slope = make_slope(source);
    const std::vector<Epoch> epochs = {
        measure_epoch(slope, "1995", 0.0, source), measure_epoch(slope, "1998", 0.4, source),
        measure_epoch(slope, "2001", 0.68, source), measure_epoch(slope, "2004", 0.86, source),
        measure_epoch(slope, "2007", 1.0, source)};
    PartPoints drawn = slope.points;
    drawn.positions = epochs.front().positions;
    writer.record("NETZTEIL", "Deformation");
    Paper sheets = paper(drawn.positions, 10000, 2);
    sheets.legend = 2;
    sheets.sheets_across = 2;
    sheets.sheets_up = 3;
    writer.paper(sheets);
    writer.record("TITEL2", "Rutschhang: Änderungen gegen die Nullmessung 1995");
    writer.record("TITEL3", fmt::format("Freie Ausgleichung jeder Epoche auf {} Stützpunkte",
                                        slope.datum.size()));
    writer.record("TITEL4", "Lage- und Höhenänderungen 1998, 2001, 2004 und 2007");
    Selection chosen = selection(3, 0);
    chosen.epoch_labels = 1;
    chosen.districts = 2;
    chosen.district_labels = 2;
    writer.selection(chosen);
    write_stations(writer, drawn);
    write_changes(writer, drawn, epochs);
}

/// An older network, shifted, turned, and strained in itself.
Position old_position(const Position& p, NormalSource& source) {
    const double east = p.east - 2576400.0;
    const double north = p.north - 5624300.0;
    const double strain_east = 0.018 * std::sin(north / 2600.0);
    const double strain_north = 0.022 * std::cos(east / 3100.0);
    return {
        p.east + 0.314 - 4.1e-6 * north + 2.3e-6 * east + strain_east + 0.008 * source.normal(),
        p.north - 0.207 + 4.1e-6 * east + 2.3e-6 * north + strain_north + 0.008 * source.normal(),
        p.height + 0.041 + 3.0e-6 * east + 0.006 * source.normal()};
}

void write_control_part(GraphicWriter& writer, const Site& site, const std::vector<Position>& drawn,
                        NormalSource& source) {
    PartPoints points;
    std::vector<IdenticalPoint> identical;
    for (std::size_t i = 0; i < drawn.size(); i += i % 3 == 1 ? 2 : 1) {
        Station station = site.stations[i];
        station.control = station.control || station.kind_plane == 0;
        IdenticalPoint point;
        point.source = old_position(site.truth[i], source);
        point.target = {drawn[i].east, drawn[i].north, site.truth[i].height};
        point.control = station.control;
        points.positions.push_back(drawn[i]);
        points.stations.push_back(station);
        identical.push_back(point);
    }
    const TransformationResult result = transform(identical, 0.015, 0.008);
    writer.record("NETZTEIL", "Stützpunkte");
    writer.paper(paper(points.positions, kPlanScale, 1));
    writer.record("TITEL2", "Umformung des Netzes 1956 auf das Netz 2004");
    writer.record(
        "TITEL3",
        fmt::format("Vier Parameter der Lage (Redundanz {}), drei der Höhe (Redundanz {})",
                    result.redundancy_plane, result.redundancy_height));
    writer.record("TITEL4", "Restklaffungen der Stützpunkte und der Umformungspunkte");
    Selection chosen = selection(4, 0);
    chosen.test_residuals = 1;
    chosen.test_value = 2;
    writer.selection(chosen);
    write_stations(writer, points);
    for (std::size_t i = 0; i < identical.size(); ++i) {
        const TransformationResidual& r = result.points[i];
        const Position& position = points.positions[i];
        writer.plane_residual(position, {100.0 * r.v.east, 100.0 * r.v.north, 0.0},
                              identical[i].control, r.reliability[0], r.reliability[1]);
        writer.height_residual(position, 100.0 * r.v.height, identical[i].control,
                               r.reliability[2]);
    }
}

void write_overview_part(GraphicWriter& writer, const Site& site,
                         const std::vector<Position>& drawn) {
    writer.record("NETZTEIL", "Übersicht");
    writer.record("TITEL2", "Punktübersicht ohne Maßstab und ohne eigene Objektauswahl");
    write_stations(writer, {drawn, site.stations});
}

}  // namespace

std::string dhdn_sample() {
    NormalSource source(5208);
    const Site site = make_site(source);
    GraphicWriter writer;
    writer.record("VERFAHRENLEGENDE", "Netzausgleichung Bonn-Süd (simulierte Messungen)");
    writer.vector_scales({1.0, 2.0, 2.0, 2.0, 1.0, 1.0});
    const std::vector<Position> drawn = write_plane_part(writer, site, source);
    write_height_part(writer, site, drawn, source);
    write_gps_part(writer, site, source);
    write_deformation_part(writer, source);
    write_control_part(writer, site, drawn, source);
    write_overview_part(writer, site, drawn);
    return writer.bytes();
}

}  // namespace veldra::netzsim
