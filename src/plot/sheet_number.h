#pragma once

#include <string>

#include "model/session.h"

namespace veldra {

/// Number of the selected kind of numbering district in which the lower left corner of the sheet
/// being plotted lies; empty without districts, without a reference system, and outside of the
/// numbered area.
[[nodiscard]] std::string SheetNumberText(const Session& session);

}  // namespace veldra
