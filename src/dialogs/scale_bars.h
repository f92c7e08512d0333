#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/session.h"
#include "model/target.h"

namespace veldra {

// What lengths in the picture mean: the ground, and the values at their scales. Lengths are twips
// of the picture, counted from the left edge of a small picture; texts are UTF-8.

/// A round length with its name.
struct ScaleMark {
    double at = 0;
    std::string text;
};

/// The largest value at control points or at new points.
struct MaximumBar {
    double length = 0;        ///< 0: nothing is drawn
    std::int16_t width = 0;   ///< of its pen, pixels; 0: not drawn
    std::int32_t colour = 0;  ///< 0x00BBGGRR
    std::string text;         ///< "max. NP: 1.5 cm" and what the bar does not show
    std::string place;        ///< "bei: " its point and epoch; "" if it has none
};

/// A kind of values.
struct ValueBars {
    std::optional<ScaleMark> unit;
    MaximumBar ap;
    MaximumBar np;
};

/// Slot of the position values that are shown, 1 to 3; 0 if there are none.
[[nodiscard]] std::size_t shown_position_slot(const Session& session);
/// Slot of the height values that are shown, 4 to 6; 0 if there are none.
[[nodiscard]] std::size_t shown_height_slot(const Session& session);

/// The largest power of ten, from 10^12 m to 0.01 m, that is shorter than `width`.
[[nodiscard]] std::optional<ScaleMark> ground_mark(const Session& session, double width);
/// The largest of 1 m, 1 dm, 1 cm and 1 mm of value that is shorter than `width`, and the maxima of
/// the slot, 1 to 6.
[[nodiscard]] ValueBars value_bars(const Session& session, std::size_t slot, double width);

/// Draws the ground's length at half the height and the tick at its end, in a picture whose
/// coordinates are twips from its lower left corner.
void draw_ground_bar(DrawingTarget& target, const std::optional<ScaleMark>& mark, double height);
/// Draws both maxima, the longer one first so that the shorter one is seen on it, and the ticks of
/// unit and maxima.
void draw_value_bars(DrawingTarget& target, const ValueBars& bars, double width, double height);

// The window that shows all this. It can be opened while its entry or its button is enabled.

/// The window is to be open: its entry is checked, its button disabled.
void open_scale_bars(Session& session);
/// The window is closed.
void close_scale_bars(Session& session);

}  // namespace veldra
