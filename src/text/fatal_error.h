#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace veldra {

/// A condition after which the program cannot go on. It is caught once, at the top of a program,
/// which shows `what()` (UTF-8, German) and ends. Whoever throws it leaves the user's file whole.
class FatalError : public std::runtime_error {
 public:
    explicit FatalError(const std::string& message) : std::runtime_error(message) {}
};

/// Where in a file a run-time error arose.
struct ErrorPlace {
    std::string file;       ///< path as the user knows it
    std::int64_t line = 0;  ///< from 1; 0 if no single line is at fault
    std::string field;      ///< name of the field or record, "" if none
};

/// The platform's form of a run-time error: "Laufzeitfehler '6': Überlauf", then file, line, field.
/// Known codes: 5, 6, 9; others get no text of their own.
[[nodiscard]] FatalError runtime_error_at(int code, const ErrorPlace& place);

}  // namespace veldra
