#pragma once

#include <string>

/// What commands share when they write.
namespace veldra::batch {

/// Throws FatalError when the standard output cannot take the text.
void write_to_standard_output(const std::string& text);

/// Throws UsageError if both paths lead to one file.
void refuse_input_as_output(const std::string& input, const std::string& output);

/// Remarks that an output that is there already will not keep its owner or group, in a folder that
/// a group shares. Nothing for "".
void tell_ownership_loss(const std::string& output);

/// A message of several lines as one line, parts separated by commas.
[[nodiscard]] std::string one_line(std::string text);

/// A remark that does not keep the command from its result, as one line on the standard error.
void remark(const std::string& text);

}  // namespace veldra::batch
