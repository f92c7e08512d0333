#pragma once

#include <cstdint>
#include <functional>

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"
#include "model/text_measurer.h"
#include "text/user_interface.h"

namespace veldra {

/// The two ways to look at a network part.
enum class PictureMode : std::uint8_t { screen, preview };

/// Renders the current network part at the current viewport into an empty target, places the
/// labels, and brings window caption, menus and toolbar in `session.window` into line. A part
/// without anything to draw is reported in a message box and loses its mark for plotting. False if
/// the user gave the drawing up.
bool DrawAll(Session& session, DrawingTarget& target, TextMeasurer& measurer, UserInterface& ui);

/// What every drawing of the picture begins with: the hourglass, no legend, the caption.
void begin_picture(Session& session, UserInterface& ui);
/// What it ends with: menus and toolbar in line with what was drawn and with the mode, or the
/// report that there is nothing to draw; the mouse pointer.
void end_picture(Session& session, UserInterface& ui, PictureMode mode);

/// The layers that the selection asks for, one kind of object each.
void draw_observations(Session& session, const LayerFrame& frame, DrawingTarget& target);
void draw_signatures(Session& session, const LayerFrame& frame, DrawingTarget& target);
void draw_values(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// The two layers of draw_values: values of the position, values of the height.
void draw_position_values(Session& session, const LayerFrame& frame, DrawingTarget& target);
void draw_height_values(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// Draws boundaries by `draw`. A boundary file that cannot be read is reported once, in a message
/// box; the rest of the picture goes on.
void draw_boundaries_or_report(Session& session, UserInterface& ui,
                               const std::function<void()>& draw);

/// The layers of observations, signatures and values in their fixed order, without boundaries,
/// grid and labels.
void draw_network(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// Draws on a target that `session.work` follows. A drawing that the user gives up leaves what has
/// been drawn, without any labels, and gives false.
bool draw_or_give_up(Session& session, DrawingTarget& target,
                     const std::function<void(DrawingTarget&)>& draw);

}  // namespace veldra
