#pragma once

#include <string>

#include "text/fatal_error.h"

namespace veldra {

/// The system's reason (an errno value) in German where it is a frequent one; UTF-8.
[[nodiscard]] std::string reason_text(int error);
/// What went wrong with a path, and why.
[[nodiscard]] FatalError file_error(const char* what, const std::string& path, int error);

}  // namespace veldra
