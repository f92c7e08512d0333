#pragma once

#include <cstdint>
#include <string_view>

#include "drawing/district_grid.h"
#include "drawing/geometry.h"
#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// What the grid of the selected districts in `area` (ground coordinates) depends on.
/// The grid that the session's last drawing made.
[[nodiscard]] inline DistrictCache& district_cache(Session& session) {
    return session.districts.of<DistrictCache>();
}
[[nodiscard]] inline const DistrictCache& district_cache(const Session& session) {
    return session.districts.of<DistrictCache>();
}

[[nodiscard]] DistrictInputs district_inputs(const Session& session, const TargetBox& area);

/// The grid of the districts that the inputs choose.
[[nodiscard]] DistrictGrid build_district_grid(const DistrictInputs& inputs);

/// The grid of the selected districts in `area`, built when something has changed since the last
/// call. Valid until the next one.
const DistrictGrid& district_grid(Session& session, const TargetBox& area);

/// Draws the numbering district grid inside `area` (ground coordinates) and sets its labels
/// `lbl_nubez`. Nothing but the pen is set without a grid.
void DrawGrid(Session& session, const LayerFrame& frame, DrawingTarget& target,
              const TargetBox& area);

/// Hides and disables all labels of numbering districts.
void HideGridLabels(Session& session);

/// The stored place of a district's label.
struct NumbezOffset {
    std::int32_t row = 0;  ///< of the table `nuoff`; 0: none is stored
    double rechts = 0;     ///< metres of ground
    double hoch = 0;

    [[nodiscard]] bool found() const { return row > 0; }
};
/// The last stored place of the label `name` (Windows-1252), compared exactly.
[[nodiscard]] NumbezOffset FindNumbezOffset(const Session& session, std::string_view name);

/// The two lines of a node.
enum class GridLine : std::uint8_t { north, east };

/// Walks over the lines of a grid that touch `area` and over its nodes in there. For each node, in
/// order: `line(segment, node, which)` with its clipped line to the north, then with that to the
/// east, then `label(node)` if the node itself lies in the area and has a number. The last column
/// and row have no lines of their own: they lie outside of the view.
template <typename Line, typename NodeLabel>
void visit_grid(const DistrictGrid& grid, const TargetBox& area, Line&& line, NodeLabel&& label) {
    constexpr double at_the_node = 0.001;
    const auto clipped = [&](std::size_t from, std::size_t to) {
        return grid.valid[from] && grid.valid[to]
                   ? ClipSegment(area, {grid.grid_rechts[from], grid.grid_hoch[from],
                                        grid.grid_rechts[to], grid.grid_hoch[to]})
                   : ClippedSegment{};
    };
    for (std::int32_t column = 1; column < grid.grid_spalten; ++column) {
        for (std::int32_t row = 1; row < grid.grid_zeilen; ++row) {
            const std::size_t n = grid.node(column, row);
            const ClippedSegment north = clipped(n, n + 1);
            if (north.result != 0) {
                line(north.segment, n, GridLine::north);
            }
            const ClippedSegment east = clipped(n, grid.node(column + 1, row));
            if (east.result == 0) {
                continue;
            }
            line(east.segment, n, GridLine::east);
            const bool moved = std::abs(east.segment.ax - grid.grid_rechts[n]) >= at_the_node ||
                               std::abs(east.segment.ay - grid.grid_hoch[n]) >= at_the_node;
            if (!moved && !grid.grid_zu_gross && !grid.grid_bez[n].empty()) {
                label(n);
            }
        }
    }
}

}  // namespace veldra
