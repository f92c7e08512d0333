#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/district_grid.h"
#include "drawing/layer_frame.h"
#include "model/label.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// `obj_nbez`: where numbers of districts stand.
namespace district_numbers {
constexpr std::int16_t at_nodes = 1;
constexpr std::int16_t on_edges = 2;
}  // namespace district_numbers

/// Colour of district lines and numbers.
[[nodiscard]] std::int32_t district_colour(const Session& session, const LayerFrame& frame);

/// Makes the labels of a grid's nodes. Lives for one drawing: finds the stored places of labels in
/// constant time. Session, frame and grid outlive it.
class NodeLabels {
 public:
    NodeLabels(const Session& session, const LayerFrame& frame, const DistrictGrid& grid);

    /// The label of a node that has a number: above and to the right of the node or at the place it
    /// was moved to; blank unless numbers stand at the nodes. Its box is relative to the frame.
    [[nodiscard]] Label label(std::size_t node) const;

 private:
    const Session& session_;
    const LayerFrame& frame_;
    const DistrictGrid& grid_;
    const FaceMetrics& face_;
    std::unordered_map<std::string_view, std::int32_t> moved_;  ///< row of `nuoff` by number
};

/// Numbers of districts on the edge of a sheet, metres of ground. The caption has one or two lines
/// (CR LF between them), Windows-1252.
struct EdgeLabel {
    std::string caption;
    TargetBox box;
};

/// The numbers along the four edges of `sheet`: where a grid line leaves the sheet, those of the
/// districts on both sides of it, side by side at the lower and upper edge and one above the other
/// at the left and right one. All stand on the sheet, and none overlaps another or the legend;
/// where there is no room for both numbers one stands, or none. None for a grid without numbers.
[[nodiscard]] std::vector<EdgeLabel> edge_labels(const DistrictGrid& grid, const TargetBox& sheet,
                                                 const std::optional<TargetBox>& legend,
                                                 const LayerFrame& frame);

}  // namespace veldra
