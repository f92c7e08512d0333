#pragma once

#include "plot/application_printer.h"

namespace veldra {

/// A size to print in while there is no working printer to measure on.
constexpr std::int16_t unfitted_points = 7;

/// `font` in the size at which its digits have the height `size`, millimetres of paper.
[[nodiscard]] inline FontSpec fitted_font(const Session& session, Printer& printer, FontSpec font,
                                          float size) {
    std::int16_t points = unfitted_points;
    FitPrinterFont(session, printer, size, font, points);
    font.points = points;
    return font;
}

/// A font in a whole size, and the height of its digits, millimetres of paper.
struct FittedSize {
    FontSpec font;
    float height = 0;
};

/// `font` in the size at which its digits come nearest to the height `size`, and the height that
/// they have then. Throws PrinterError.
[[nodiscard]] inline FittedSize fitted_size(const Session& session, Printer& printer,
                                            const FontSpec& font, float size) {
    FittedSize fitted{fitted_font(session, printer, font, size), size};
    SetPrinterFont(session, printer, fitted.font, fitted.height);
    return fitted;
}

}  // namespace veldra
