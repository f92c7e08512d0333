#pragma once

#include <string>

#include "model/session.h"
#include "view/viewport.h"

namespace veldra {

/// Texts of the status line, UTF-8.

/// "Rechtswert 3500000.00   Hochwert 5600000.00"; "" beyond ten million kilometres.
[[nodiscard]] std::string place_text(const WorldPoint& place);

/// "1 : 12 500", the scale of a screen of 96 dots per inch; "unter 1 : 1 000 000 000" for those
/// smaller than that.
[[nodiscard]] std::string scale_text(const Viewport& view);

}  // namespace veldra
