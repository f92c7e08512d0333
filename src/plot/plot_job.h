#pragma once

#include <cstdint>

#include "plot/plot_page.h"
#include "plot/printer.h"
#include "shell/lifecycle.h"
#include "shell/session.h"

namespace veldra {

/// Settles what all sheets of the current part share, and how many there are. Throws PrinterError,
/// and FatalError when a count leaves 16 bits.
PartOnPaper prepare_part(Session& session, Printer& printer, const Desk& desk);

/// Plots the current part once, all sheets, column by column from the left and in a column from the
/// bottom. `abbruch` becomes 1 if the printer could not be reached, which has been reported.
/// Throws FatalError when a count or a width leaves 16 bits.
void PlotNetworkPart(Session& session, Printer& printer, const Desk& desk, std::int16_t& abbruch);

/// Plots all marked parts: copy by copy, and in a copy part by part, each part read once. A part
/// without points and lines loses its mark. The part in view is then read again and the view is as
/// it was. `abbruch` as above; it ends all loops. Throws FatalError when a file cannot be read or
/// written.
void PlotAllMarked(Session& session, Printer& printer, const Desk& desk, std::int16_t& abbruch);

/// Command "aktuelles Netzteil": one document with `exemplare` copies. False if the printer could
/// not be reached, which has been reported, or the user gave no file.
bool plotten_aktuell(Session& session, const Desk& desk);

/// Command "alle gekennzeichneten", after a question. False also if the answer was No.
bool plotten_alle(Session& session, const Desk& desk);

}  // namespace veldra
