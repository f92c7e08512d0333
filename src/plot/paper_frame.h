#pragma once

#include <cstdint>

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/text_measurer.h"

namespace veldra {

/// Sizes in points of the labels on paper, fitted to the digit heights of the settings.
struct PaperFonts {
    std::int16_t point_labels = 0;     ///< for `pubsizplo`; 0: not fitted yet
    std::int16_t district_labels = 0;  ///< for `nubsizplo`
};

/// Metres of ground under a length on paper (millimetres) at the current plot scale.
[[nodiscard]] double ground_of_paper(const Session& session, double millimetres);

/// The ground of the sheet being plotted, the clip window of its layers.
[[nodiscard]] TargetBox sheet_window(const Session& session);

/// The frame of the sheet in `session.blatt` at the current plot scale: sizes are millimetres of
/// the plot settings, the origin is the sheet's lower left corner, lines are clipped to the sheet
/// and take `faktorStrich`. Colours that the layers can do without turn grey unless the printer is
/// a colour printer.
[[nodiscard]] LayerFrame paper_frame(const Session& session, const PaperFonts& fonts,
                                     TextMeasurer& measurer);

}  // namespace veldra
