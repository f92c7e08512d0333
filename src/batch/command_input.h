#pragma once

#include <optional>
#include <string>
#include <vector>

#include "os/spool_file.h"

namespace veldra::batch {

/// A file that a command reads, as it was typed; "-" is the standard input. Readers open a file
/// several times, so what can be read only once (the standard input, a pipe, a device) is read to
/// its end into an intermediate file.
class CommandInput {
 public:
    /// Throws FatalError when the standard input or a pipe cannot be read.
    explicit CommandInput(const std::string& argument);

    /// What is to be opened; a regular file under its own name.
    [[nodiscard]] const std::string& path() const { return path_; }
    /// What messages and titles call it: the absolute path, "Standardeingabe" for "-".
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] bool is_copy() const { return copy_.has_value(); }
    /// The message with the name in the place of the path that was opened.
    [[nodiscard]] std::string named(std::string message) const;

 private:
    std::string path_;
    std::string name_;
    std::optional<SpoolFile> copy_;
};

/// Whether the argument stands for the standard input.
[[nodiscard]] bool is_standard_input(const std::string& argument);

/// Throws UsageError if more than one of the arguments is the standard input.
void refuse_standard_input_twice(const std::vector<std::string>& arguments);

}  // namespace veldra::batch
