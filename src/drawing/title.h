#pragma once

#include <string>

#include "shell/session.h"

namespace veldra {

/// Text that names what is shown, Windows-1252: observations and values, each with its statistical
/// test, and with the scales of the values if `mit_massstab` is 1.
[[nodiscard]] std::string BuildTitle(const Session& session, int mit_massstab);

}  // namespace veldra
