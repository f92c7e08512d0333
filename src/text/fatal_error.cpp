#include "text/fatal_error.h"

#include <fmt/format.h>

namespace veldra {

FatalError runtime_error_at(int code, const ErrorPlace& place) {
    const char* text = code == 5   ? "Ungültiger Prozeduraufruf oder ungültiges Argument"
                       : code == 6 ? "Überlauf"
                       : code == 9 ? "Index außerhalb des gültigen Bereichs"
                                   : "Anwendungs- oder objektdefinierter Fehler";
    std::string message = fmt::format("Laufzeitfehler '{}': {}", code, text);
    if (!place.file.empty()) {
        message += fmt::format("\nDatei: {}", place.file);
    }
    if (place.line > 0) {
        message += fmt::format("\nZeile: {}", place.line);
    }
    if (!place.field.empty()) {
        message += fmt::format("\nFeld: {}", place.field);
    }
    return FatalError(message);
}

}  // namespace veldra
