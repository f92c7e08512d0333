#pragma once

#include "model/paper_text.h"
#include "model/session.h"

namespace veldra {

/// Takes from the picture what stands on the edges of the sheets while they move: the border labels
/// of the districts and the legend.
void hide_sheet_texts(Session& session);

/// The user takes hold of the sheets: their texts are hidden and the step can be undone at once.
void begin_sheet_drag(Session& session);

/// Moves the plotter zero point by metres of ground.
void move_sheets(Session& session, double rechts, double hoch);

/// "Plotternullpunkt anpassen": the zero point goes to the lower left corner of what is shown.
void fit_plot_origin(Session& session, PaperTextSize& paper_text);

/// Puts the zero point back. As with every move of the sheets, the caller lays their texts out
/// again.
void undo_sheet_move(Session& session);

}  // namespace veldra
