#include <cmath>

#include <fmt/format.h>

#include "part_writer.h"
#include "samples.h"

namespace veldra::netzsim {

std::string sample_without_part() {
    NormalSource source(5309);
    Network network;
    const Box area = {2583150.0, 5617250.0, 2584600.0, 5618350.0};
    network.truth = staggered_points(area, 330.0, 60.0, source);
    PartPoints points;
    for (std::size_t i = 0; i < network.truth.size(); ++i) {
        Position& position = network.truth[i];
        position.height = std::round(5600.0 + 0.45 * (position.east - area.east_min)) / 100.0;
        points.stations.push_back(
            {fmt::format("53091{:05d}", 201 + i), 1, static_cast<int>(i % 4)});
    }
    const Position corners[] = {{area.east_min, area.north_min, 0.0},
                                {area.east_max, area.north_min, 0.0},
                                {area.east_min, area.north_max, 0.0},
                                {area.east_max, area.north_max, 0.0}};
    for (const Position& corner : corners) {
        const int index = nearest(network.truth, corner);
        Station& station = points.stations[static_cast<std::size_t>(index)];
        station.control = true;
        station.kind_plane = 0;
        station.label = fmt::format("53090{:03d}00", 11 + network.controls.size());
        network.controls.push_back({index, {}, 0.010, 0.004});
    }
    const std::vector<Edge> edges = triangulate(network.truth, 480.0);
    plan_plane_observations(network, edges, PlaneAccuracy(), source);
    plan_height_observations(network, edges, HeightAccuracy(), source);
    simulate(network, source);
    const NetworkResult result = adjust_network(network);
    points.positions = result.points;

    GraphicWriter writer;
    writer.record("VERFAHRENLEGENDE", "Aufnahmenetz Oberdollendorf (simulierte Messungen)");
    writer.vector_scales({2.0, 1.0, 0.5, 2.0, 1.0, 0.2});
    Paper paper;
    paper.denominator = 5000;
    paper.zero = paper_zero(points.positions, paper.denominator);
    writer.paper(paper);
    writer.record("TITEL2", "Aufnahmepunkte mit Anschluss an vier TP");
    writer.record("TITEL3", quality_text(result));
    Selection selection;
    selection.point_values = 7;
    writer.selection(selection);
    write_stations(writer, points);
    write_observations(writer, points, network, result);
    write_precision(writer, points, result);
    write_control_residuals(writer, points, result);
    return writer.bytes();
}

}  // namespace veldra::netzsim
