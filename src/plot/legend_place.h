#pragma once

#include "model/desk.h"
#include "model/session.h"

namespace veldra {

/// Takes for the legend of the current part the first place that covers nothing of the network (no
/// signature, line, value or label), else the one that covers the fewest objects. The places are
/// tried from the default one on: right below, right above, left below, left above. `sheet` is the
/// paper that the part will be plotted on. Only `plot_legendenlage` changes. The place stays for a
/// part without points and lines, and where the sheets cannot be counted or the part not be drawn,
/// which is told by those who do so. Linear in the rows of the tables.
void choose_legend_place(Session& session, const Desk& desk, const SheetGeometry& sheet);

}  // namespace veldra
