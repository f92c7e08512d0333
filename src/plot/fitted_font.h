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

}  // namespace veldra
