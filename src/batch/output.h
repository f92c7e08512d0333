#pragma once

#include <string>

/// What commands share when they write.
namespace veldra::batch {

/// Throws FatalError when the standard output cannot take the text.
void write_to_standard_output(const std::string& text);

/// Throws UsageError if both paths lead to one file; the input "-" is the standard input.
void refuse_input_as_output(const std::string& input, const std::string& output);

/// Remarks that an output that is there already will not keep its owner or group, in a folder that
/// a group shares. Nothing for "".
void tell_ownership_loss(const std::string& output);

/// A message of several lines as one line, parts separated by commas.
[[nodiscard]] std::string one_line(std::string text);

/// JSON in UTF-8 whose texts cannot steer a terminal: JSON leaves U+007F to U+009F as they are,
/// here they are written as escapes.
[[nodiscard]] std::string json_for_terminal(const std::string& json);

/// A message or a remark as one line on the standard error. Whether it can be written decides
/// nothing.
void remark(const std::string& text);

}  // namespace veldra::batch
