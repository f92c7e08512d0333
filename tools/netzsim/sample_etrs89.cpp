#include <cmath>

#include <fmt/format.h>

#include "part_writer.h"
#include "samples.h"

namespace veldra::netzsim {

namespace {

struct Place {
    const char* name;
    Position rough;
};

/// Hills and quarters around Bonn to ten metres.
constexpr Place kPlaces[] = {
    {"Drachenfels", {32373500.0, 5614100.0, 321.0}},
    {"Petersberg", {32373130.0, 5616220.0, 335.0}},
    {"Ölberg", {32376230.0, 5615930.0, 460.0}},
    {"Löwenburg", {32376240.0, 5613480.0, 455.0}},
    {"Nonnenstromberg", {32374270.0, 5616860.0, 336.0}},
    {"Lohrberg", {32375350.0, 5614840.0, 432.0}},
    {"Rolandsbogen", {32372990.0, 5610550.0, 152.0}},
    {"Godesburg", {32369320.0, 5616650.0, 122.0}},
    {"Venusberg", {32366180.0, 5618180.0, 175.0}},
    {"Kreuzberg", {32364590.0, 5619440.0, 158.0}},
    {"Röttgen", {32363340.0, 5615140.0, 170.0}},
    {"Hardtberg", {32361980.0, 5619620.0, 130.0}},
    {"Münsterplatz", {32365920.0, 5621860.0, 61.0}},
    {"Finkenberg", {32369640.0, 5621090.0, 114.0}},
    {"Holzlar", {32372550.0, 5621800.0, 92.0}},
    {"Vinxel", {32373060.0, 5619450.0, 187.0}},
    {"Stieldorf", {32375200.0, 5620070.0, 132.0}},
    {"Thomasberg", {32376980.0, 5617910.0, 229.0}},
    {"Oberkassel", {32370810.0, 5619620.0, 58.0}},
    {"Königswinter", {32371830.0, 5615140.0, 56.0}},
    {"Plittersdorf", {32370280.0, 5618410.0, 57.0}},
    {"Pützchen", {32370540.0, 5622960.0, 60.0}},
    {"Ippendorf", {32364470.0, 5617550.0, 167.0}},
    {"Mehlem", {32371860.0, 5613580.0, 58.0}},
    {"Wachtberg", {32366680.0, 5610270.0, 254.0}},
    {"Niederbachem", {32370120.0, 5611740.0, 118.0}},
    {"Pech", {32366540.0, 5613160.0, 171.0}},
    {"Villip", {32364240.0, 5611660.0, 206.0}},
    {"Heiderhof", {32368570.0, 5615000.0, 184.0}},
    {"Lessenich", {32362450.0, 5621500.0, 77.0}},
    {"Tannenbusch", {32363000.0, 5623710.0, 58.0}},
    {"Schwarzrheindorf", {32366890.0, 5623940.0, 55.0}},
};

bool is_control(std::size_t index) {
    const std::string_view name = kPlaces[index].name;
    return name == "Löwenburg" || name == "Wachtberg" || name == "Hardtberg" ||
           name == "Schwarzrheindorf" || name == "Stieldorf";
}

struct Site {
    std::vector<Position> truth;
    std::vector<Station> stations;
    std::vector<int> controls;
    std::vector<Edge> edges;
};

Site make_site(NormalSource& source) {
    Site site;
    for (std::size_t i = 0; i < std::size(kPlaces); ++i) {
        const auto within = [&](double value, double range) {
            return std::round((value + source.uniform(-range, range)) * 1000.0) / 1000.0;
        };
        const Position& rough = kPlaces[i].rough;
        const double east = within(rough.east, 60.0);
        const double north = within(rough.north, 60.0);
        site.truth.push_back({east, north, within(rough.height, 2.0)});
        Station station{kPlaces[i].name, i % 3 == 0 ? 0 : 1, static_cast<int>(i % 4)};
        if (is_control(i)) {
            station.control = true;
            station.kind_plane = 0;
            site.controls.push_back(static_cast<int>(i));
        }
        site.stations.push_back(station);
    }
    site.stations[5].label_east = 80.0;
    site.stations[5].label_north = 110.0;
    site.edges = triangulate(site.truth, 5200.0);
    return site;
}

void write_head(GraphicWriter& writer, const char* part, const char* title,
                const PartPoints& points, const NetworkResult& result, int observations) {
    writer.record("NETZTEIL", part);
    Paper paper;
    paper.denominator = 50000;
    paper.zero = paper_zero(points.positions, paper.denominator);
    paper.orientation = 2;
    writer.paper(paper);
    writer.record("TITEL2", title);
    writer.record("TITEL3", quality_text(result));
    Selection selection;
    selection.point_values = 7;
    selection.observations = observations;
    selection.test_observations = 1;
    selection.test_value = observations == 1 ? 3 : 1;
    selection.reference = 2;
    selection.ellipsoid = 4;
    selection.projection = 2;
    writer.selection(selection);
    write_stations(writer, points);
}

void write_plane_part(GraphicWriter& writer, const Site& site, NormalSource& source) {
    Network network;
    network.truth = site.truth;
    network.remote_targets = {{32356580.0, 5645350.0, 0.0}, {32384910.0, 5606120.0, 0.0}};
    plan_plane_observations(network, site.edges, PlaneAccuracy(), source);
    plan_orientation(network, nearest(site.truth, kPlaces[30].rough), 0);
    plan_orientation(network, nearest(site.truth, kPlaces[3].rough), 1);
    for (const int index : site.controls) {
        network.controls.push_back({index, {}, 0.010, 0.0});
    }
    simulate(network, source);
    spoil(network.observations[77], 8.0);
    const NetworkResult result = adjust_network(network);
    const PartPoints points{result.points, site.stations};
    write_head(writer, "Lage", "Lagenetz in ETRS 89, UTM-Koordinaten der Zone 32", points, result,
               1);
    write_observations(writer, points, network, result, {"Fernmeldeturm", "Linz, St. Marien"});
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
}

void write_gps_part(GraphicWriter& writer, const Site& site, NormalSource& source) {
    Network network;
    network.truth = site.truth;
    for (const Edge& edge : site.edges) {
        network.observations.push_back(gps_vector_between(network, edge.from, edge.to));
    }
    for (const int index : site.controls) {
        network.controls.push_back({index, {}, 0.008, 0.012});
    }
    simulate(network, source);
    spoil(network.observations[31], -7.0);
    const NetworkResult result = adjust_network(network);
    const PartPoints points{result.points, site.stations};
    write_head(writer, "GPS", "GPS-Raumvektoren, Auswertung in einem Guss", points, result, 3);
    write_observations(writer, points, network, result);
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
}

}  // namespace

std::string etrs89_sample() {
    NormalSource source(1989);
    const Site site = make_site(source);
    GraphicWriter writer;
    writer.record("VERFAHRENLEGENDE", "Netzausgleichung Siebengebirge (simulierte Messungen)");
    writer.vector_scales({2.0, 2.0, 1.0, 2.0, 2.0, 1.0});
    write_plane_part(writer, site, source);
    write_gps_part(writer, site, source);
    return writer.bytes();
}

}  // namespace veldra::netzsim
