#pragma once

#include "model/session.h"
#include "plot/paper_frame.h"
#include "plot/plot_frame.h"
#include "plot/printer.h"
#include "text/user_interface.h"

namespace veldra {

/// What all sheets of a part have in common.
struct PartOnPaper {
    PaperFonts fonts;
    LegendSize legend;
};

/// Sets `session.blatt` to the ground of a sheet: sheets begin at the plotter zero point and lie
/// edge to edge.
void set_sheet_window(Session& session, const SheetPlace& place);

/// The ground under the whole printable area of the sheet in `session.blatt`, margins included.
struct PageGround {
    double left = 0;  ///< metres
    double top = 0;
    double right = 0;
    double bottom = 0;
};
[[nodiscard]] PageGround page_ground(const Session& session);

/// Draws one sheet of the current part on the page that the printer has open: frame and legend,
/// boundaries, then every layer that the selection asks for. The picture on the screen stays as it
/// is, but for the labels, which are placed for the sheet. Throws PrinterError.
void PlotPage(Session& session, Printer& printer, UserInterface& ui, const PartOnPaper& part,
              const SheetPlace& place);

}  // namespace veldra
