#pragma once

#include <cstdint>

#include "model/desk.h"
#include "model/session.h"
#include "plot/plot_page.h"
#include "plot/printer.h"

namespace veldra {

/// Settles what all sheets of the current part share, and how many there are. Throws PrinterError,
/// and FatalError when a count leaves 16 bits.
PartOnPaper prepare_part(Session& session, Printer& printer, const Desk& desk);

/// Plots the current part once, all sheets, column by column from the left and in a column from the
/// bottom. `abbruch` becomes 1 if the printer could not be reached, which has been reported.
/// Throws FatalError when a count or a width leaves 16 bits.
void PlotNetworkPart(Session& session, Printer& printer, const Desk& desk, std::int16_t& abbruch);

/// Command "aktuelles Netzteil": one document with `exemplare` copies. A job of more than
/// `announced_sheets` is asked about first. False if the answer was No, if the printer could not be
/// reached, which has been reported, or the user gave no file.
bool plotten_aktuell(Session& session, const Desk& desk);

/// Command "alle gekennzeichneten", after a question, and one more for many sheets: copy by copy,
/// and in a copy part by part; each part is read once to count its sheets, and once a copy. A part
/// without points and lines loses its mark; one whose sheets cannot be counted is told and left
/// out. The part in view is then read again and the view is as it was. False also if an answer was
/// No. Throws FatalError when a file cannot be read or written.
bool plotten_alle(Session& session, const Desk& desk);

/// Plots the current part once, as a document of its own on `device`, with the sheets of the
/// application printer: what `device` can print on must have the size that plot_paper() tells. The
/// plot is in colours and one copy, whatever is set for the application printer. Afterwards
/// printer and plot settings are as before; the picture is drawn anew, and nothing can be undone.
/// Throws PrinterError, and FatalError as PlotNetworkPart does; a document that has not been
/// finished is dropped. Many sheets are asked about first; after a No nothing has happened.
void plot_on_device(Session& session, Printer& device, const Desk& desk);

/// Paper of a plot as it lies.
struct PlotPaper {
    std::int16_t code = 0;  ///< paper code of the application printer
    float width = 0;        ///< whole paper, twips
    float height = 0;
    double printable_width = 0;  ///< millimetres
    double printable_height = 0;
};
/// Paper of the application printer in the orientation of the current part; A4 without one that
/// works.
[[nodiscard]] PlotPaper plot_paper(Session& session, const Desk& desk);

}  // namespace veldra
