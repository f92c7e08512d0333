#pragma once

#include <string>
#include <string_view>

namespace veldra {

/// A UTF-8 text for a terminal: every control character but a line feed becomes "?", so that names
/// from files cannot steer it.
[[nodiscard]] std::string for_terminal(std::string_view utf8);

/// Writes the text as a line to the standard error. Whether anybody can read it decides nothing.
void tell_on_terminal(std::string_view utf8);

}  // namespace veldra
