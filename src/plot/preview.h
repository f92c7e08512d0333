#pragma once

#include "drawing/layer_frame.h"
#include "model/desk.h"
#include "model/session.h"
#include "model/target.h"
#include "plot/paper_frame.h"

namespace veldra {

/// Fonts of the labels in the sizes that the printer of the desk needs; 0 points without one that
/// works.
[[nodiscard]] PaperFonts fitted_label_fonts(Session& session, const Desk& desk);

/// Points on paper for a digit height in millimetres, by the usual ratio of both.
[[nodiscard]] double estimated_points(TextMeasurer& measurer, const FontSpec& font,
                                      float digit_height);

/// The frame of the picture in plot mode: the origin and the unit of the view, and the sizes of the
/// plot, millimetres of paper at the plot scale. Fonts in `paper` that are not fitted to a printer
/// are estimated.
[[nodiscard]] LayerFrame preview_frame(const Session& session, const PaperFonts& paper,
                                       TextMeasurer& measurer);

/// Renders the current network part as it will come out on paper, in place of DrawAll: tries the
/// printer, divides the part into sheets, draws the layers in the sizes of the plot, and places the
/// numbers on the edges of the sheets and the legend. Throws FatalError when a count of sheets
/// leaves 16 bits. False if the user gave the drawing up.
bool PreviewAll(Session& session, DrawingTarget& target, const Desk& desk);

/// Draws DrawAll or, in plot mode, PreviewAll.
bool draw_picture(Session& session, DrawingTarget& target, const Desk& desk);

/// What lies over the layers of the preview and moves with the sheets: their outlines (dotted) and
/// corner marks and, while it is visible, the box of the legend. Outlines closer than three pixels
/// to each other are left out, but for that around all sheets. Nothing out of plot mode and while
/// the sheets are being moved.
void draw_sheet_frames(const Session& session, DrawingTarget& target);

/// Whether districts or boundaries leave out the ground beneath the legend, so that a legend that
/// has moved needs a new drawing.
[[nodiscard]] bool legend_cuts_layers(const Session& session);

/// Places legend and edge numbers for the sheets as they stand now, without drawing anything, as
/// after a move of the sheets, which ends with it. Counts the sheets first.
void place_sheet_texts(Session& session, const Desk& desk);

}  // namespace veldra
