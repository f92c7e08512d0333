#pragma once

#include <optional>

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "plot/printer.h"

namespace veldra {

/// The ground beneath the legend; none for a part that has no place for one.
[[nodiscard]] std::optional<TargetBox> legend_ground(const Session& session);

/// The administrative boundaries of the level `obj_verw` on the sheet of `frame`, as filled
/// rectangles of the pens' true width that end flush with the sheet and the legend box. The page is
/// in millimetres; (page_left, page_top) is the ground under the upper left corner of its printable
/// area. Throws UnreadableBoundaries.
void PlotBoundaries(Session& session, const LayerFrame& frame, PageTarget& page, double page_left,
                    double page_top);

/// The numbering districts chosen by `obj_nube` on the sheet of `frame`, around the legend box. The
/// page is in local metres of ground.
void PlotDistricts(Session& session, const LayerFrame& frame, PageTarget& page);

/// The same for the sheets of topographic maps (`obj_nube` 1, 4, 5).
void PlotDistrictSheets(Session& session, const LayerFrame& frame, PageTarget& page);
/// The same for kilometre squares (`obj_nube` 2, 3).
void PlotDistrictSquares(Session& session, const LayerFrame& frame, PageTarget& page);

}  // namespace veldra
