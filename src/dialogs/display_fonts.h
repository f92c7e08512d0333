#pragma once

#include <cstdint>
#include <string_view>

#include "model/session.h"
#include "model/text_measurer.h"
#include "plot/printer.h"

namespace veldra {

/// A font and the colour of its letters, 0x00BBGGRR.
struct FontChoice {
    FontSpec font;
    std::int32_t colour = 0;

    bool operator==(const FontChoice&) const = default;
};

// The fonts of point labels and of numbering district labels (`districts`). Screen and plot share
// face, style and colour; each has a size of its own.

/// The printer if it works, else null.
[[nodiscard]] Printer* usable_printer(const Session& session, Printer* printer);

[[nodiscard]] FontChoice screen_font(const Settings& settings, bool districts);
/// The size is rounded to whole points, 1 at least.
void set_screen_font(Settings& settings, bool districts, const FontChoice& choice);

/// The size in points is fitted on the printer to the height of digits in the plot. Without a
/// printer, or when it fails, it is that of the screen.
[[nodiscard]] FontChoice plot_font(const Session& session, Printer* printer, bool districts);
/// The height of digits in the plot becomes what the printer measures for the font. Without a
/// printer, or when it fails, the height stays.
void set_plot_font(Session& session, Printer* printer, bool districts, const FontChoice& choice);
/// A typed height of digits in the plot, millimetres. It becomes that of the font size of the
/// printer which comes nearest; without a printer, or when it fails, it is taken as typed.
void set_plot_height(Session& session, Printer* printer, bool districts, std::string_view typed);

}  // namespace veldra
