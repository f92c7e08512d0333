#pragma once

#include "model/session.h"
#include "model/text_measurer.h"
#include "plot/plot_page.h"

namespace veldra {

/// Whether a sheet of the current part shows anything of the network (observations, signatures,
/// values, labels) or the legend; districts, boundaries and foot lines do not count. The labels in
/// the session are placed for the sheet.
[[nodiscard]] bool shows_anything(Session& session, const PartOnPaper& part,
                                  const SheetPlace& place, TextMeasurer& measurer);

}  // namespace veldra
