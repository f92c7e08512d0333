#include "dialogs/legend_options.h"

#include <algorithm>

#include "drawing/title.h"
#include "model/paper_text.h"
#include "plot/fitted_font.h"
#include "plot/plot_frame.h"
#include "settings/profile_values.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

const Titelzeile& title_of(const Session& session, std::size_t line) {
    return session.titel[line - 1];
}
Titelzeile& title_of(Session& session, std::size_t line) {
    return session.titel[line - 1];
}

bool works(const Session& session, const Printer* printer) {
    return printer != nullptr && session.printer.drucker_ok == table_true;
}

/// Height that a line without a printer keeps for a typed one; larger letters than the largest of
/// a printer are not kept.
float kept_height(double typed) {
    constexpr double largest_line = 2161 * 25.4 / 72;  // millimetres
    return static_cast<float>(std::min(typed * line_height_per_digit, largest_line));
}

}  // namespace

std::string standard_legend_text(const Session& session, std::size_t line) {
    switch (line) {
        case 2:
            return from_utf8("(entfällt)");
        case 3:
            return BuildTitle(session, title_code::legend_line_3);
        case 4:
            return BuildTitle(session, title_code::legend_line_4);
        default:
            return {};
    }
}

LegendEntry legend_entry(const Session& session, std::size_t line) {
    const std::string& text = title_of(session, line).getTitelText();
    if (line > 1 && text.empty()) {
        return {standard_legend_text(session, line), true};
    }
    return {text, false};
}

void legend_accept(Session& session, const std::array<LegendEntry, legend_line_count>& entries,
                   std::int16_t position) {
    title_of(session, 1).setTitelText(trim(one_line(entries[0].text)));
    for (std::size_t line = 2; line <= legend_line_count; ++line) {
        const LegendEntry& entry = entries[line - 1];
        title_of(session, line).setTitelText(entry.standard ? std::string() : entry.text);
    }
    if (position >= 1 && position <= 4) {
        session.plot.plot_legendenlage = position;
    }
}

std::string legend_size_text(const Session& session, Printer* printer, std::size_t line) {
    const Titelzeile& zeile = title_of(session, line);
    float height = zeile.getTitelSize();
    if (works(session, printer)) {
        try {
            height = fitted_size(session, *printer, title_font(zeile), height).height;
        } catch (const PrinterError&) {
            // What was asked for is all that is known.
        }
    } else {
        height = static_cast<float>(static_cast<double>(height) / line_height_per_digit);
    }
    return NumberForm{"####0.0"}.text(height);
}

void set_legend_size(Session& session, Printer* printer, std::size_t line, std::string_view typed) {
    Titelzeile& zeile = title_of(session, line);
    const double value = zahl_wert(typed);
    if (works(session, printer)) {
        try {
            const float wanted = static_cast<float>(std::clamp(value, 0.0, 1e6));
            zeile.setTitelSize(fitted_size(session, *printer, title_font(zeile), wanted).height);
        } catch (const PrinterError&) {
            // The height that was set stays in force.
        }
    } else if (value > 0) {
        zeile.setTitelSize(kept_height(value));
    }
}

FontSpec legend_font(const Session& session, Printer* printer, std::size_t line) {
    const Titelzeile& zeile = title_of(session, line);
    FontSpec font = title_font(zeile);
    if (works(session, printer)) {
        try {
            font = fitted_size(session, *printer, font, zeile.getTitelSize()).font;
        } catch (const PrinterError&) {
            // Only the choice of a size starts elsewhere.
        }
    }
    return font;
}

void set_legend_font(Session& session, Printer* printer, std::size_t line, const FontSpec& font) {
    Titelzeile& zeile = title_of(session, line);
    zeile.setTitelFont(font.face);
    zeile.setTitelBold(font.bold);
    zeile.setTitelItal(font.italic);
    zeile.setTitelUndr(font.underline);
    if (works(session, printer)) {
        try {
            float height = zeile.getTitelSize();
            SetPrinterFont(session, *printer, font, height);
            zeile.setTitelSize(height);
        } catch (const PrinterError&) {
            // The height that was set stays in force.
        }
    }
}

}  // namespace veldra
