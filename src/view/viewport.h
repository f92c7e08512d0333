#pragma once

#include <cstdint>

#include "model/session.h"
#include "model/undo.h"

namespace veldra {

/// Fits a rectangle of ground (metres) into the picture, centred and undistorted: the viewport then
/// holds the picture's whole area. `mode` 0 takes the rectangle as it is, 1 adds 5 % of the span on
/// each side. A picture below one twip counts as one twip.
void FitView(Session& session, double rw1, double hw1, double rw2, double hw2, std::int16_t mode);

/// The picture's own coordinate system: its left top corner is (0, hw_span), its right bottom
/// corner (rw_span, 0).
struct PictureScale {
    float rw_span = 0;
    float hw_span = 0;
};
[[nodiscard]] PictureScale picture_scale(const Viewport& view);

/// A place in the picture, metres from its lower left corner.
struct PicturePoint {
    float x = 0;
    float y = 0;
};
/// A place on the ground, metres.
struct WorldPoint {
    double rechts = 0;
    double hoch = 0;
};
/// Subtracts the origin in 64 bits before narrowing, so that eight-digit coordinates stay exact.
[[nodiscard]] PicturePoint to_picture(const Viewport& view, const WorldPoint& world);
[[nodiscard]] WorldPoint to_world(const Viewport& view, const PicturePoint& point);
/// A place in twips from the picture's left upper corner, y downward, as a mouse event has it.
[[nodiscard]] PicturePoint from_twips(const Viewport& view, double x, double y);

/// State of the main window, by the platform's numbers.
enum class WindowMode : std::int16_t { normal = 0, minimised = 1, maximised = 2 };

/// What a resize asks of the window.
struct ResizeResult {
    bool layout = false;  ///< the picture takes its new place
    bool redraw = false;  ///< the picture or the preview is to be drawn again
};

/// The main window has been resized or laid out: `last` is the state seen at the resize before,
/// `size` the picture's new size in twips. A change of state keeps the ground in view; otherwise
/// the top left corner and the scale stay. Undo is cleared in every case. The caller remembers
/// `now` for the next call.
ResizeResult resize_picture(Session& session, WindowMode last, WindowMode now,
                            const PictureSize& size);

}  // namespace veldra
