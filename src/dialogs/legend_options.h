#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/session.h"
#include "model/text_measurer.h"
#include "plot/printer.h"

namespace veldra {

// The title lines of the legend, as they are edited. Lines are 1 to 4; texts are Windows-1252. The
// height of a line is that of its digits, millimetres of paper. With a printer it is the height
// that one of the printer's fonts gives. Without one (null, or one that does not work) the line
// keeps 1.68 times the height that was typed, and is shown as 1/1.68 of what it keeps.

constexpr std::size_t legend_line_count = 4;

/// Text of a line and whether it is the standard text, which line 1 has not.
struct LegendEntry {
    std::string text;
    bool standard = false;

    bool operator==(const LegendEntry&) const = default;
};

/// What a line says while no text of its own is set: "(entfällt)" for line 2, which is left out
/// then; "" for line 1.
[[nodiscard]] std::string standard_legend_text(const Session& session, std::size_t line);
/// The line as it stands.
[[nodiscard]] LegendEntry legend_entry(const Session& session, std::size_t line);
/// Stores the lines 1 to 4 and the place of the legend, 1 to 4; another place leaves the one that
/// is set. Line 1 loses the blanks at its ends; a line with the standard text is stored empty.
void legend_accept(Session& session, const std::array<LegendEntry, legend_line_count>& entries,
                   std::int16_t position);

/// Height of a line's digits as a text.
[[nodiscard]] std::string legend_size_text(const Session& session, Printer* printer,
                                           std::size_t line);
/// Takes a typed height over; one of 0 or less, which is also what no number counts as, is the
/// smallest that the printer has. Without a printer it leaves the height as it was.
void set_legend_size(Session& session, Printer* printer, std::size_t line, std::string_view typed);

/// Font of a line. Its size is fitted on the printer; without one it is any.
[[nodiscard]] FontSpec legend_font(const Session& session, Printer* printer, std::size_t line);
/// Sets face and style, and with a printer the height that the font has there.
void set_legend_font(Session& session, Printer* printer, std::size_t line, const FontSpec& font);

}  // namespace veldra
