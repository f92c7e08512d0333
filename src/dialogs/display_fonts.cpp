#include "dialogs/display_fonts.h"

#include <algorithm>

#include "dialogs/display_options.h"
#include "drawing/fonts.h"
#include "plot/fitted_font.h"
#include "text/numbers.h"

namespace veldra {

namespace {

/// Largest size that is kept, points: beyond it nothing of a letter fits any sheet.
constexpr double largest_points = 2160;

void set_face(Settings& settings, bool districts, const FontChoice& choice) {
    (districts ? settings.nubfon : settings.pubfon) = choice.font.face;
    (districts ? settings.nubbol : settings.pubbol) = choice.font.bold;
    (districts ? settings.nubita : settings.pubita) = choice.font.italic;
    (districts ? settings.nubund : settings.pubund) = choice.font.underline;
    (districts ? settings.nubcolor : settings.pubcolor) = choice.colour;
}

float& plot_height(Settings& settings, bool districts) {
    return districts ? settings.nubsizplo : settings.pubsizplo;
}

}  // namespace

Printer* usable_printer(const Session& session, Printer* printer) {
    return session.printer.drucker_ok == table_false ? nullptr : printer;
}

FontChoice screen_font(const Settings& settings, bool districts) {
    return districts ? FontChoice{district_label_font(settings), settings.nubcolor}
                     : FontChoice{point_label_font(settings), settings.pubcolor};
}

void set_screen_font(Settings& settings, bool districts, const FontChoice& choice) {
    set_face(settings, districts, choice);
    const double points = std::clamp(choice.font.points, 1.0, largest_points);
    (districts ? settings.nubgrascr : settings.pubgrascr) = to_int16(points).value_or(1);
}

FontChoice plot_font(const Session& session, Printer* printer, bool districts) {
    const Settings& settings = session.settings;
    FontChoice choice = screen_font(settings, districts);
    if (printer != nullptr) {
        const float height = districts ? settings.nubsizplo : settings.pubsizplo;
        try {
            choice.font = fitted_font(session, *printer, choice.font, height);
        } catch (const PrinterError&) {
            // Only the choice of a size starts elsewhere.
        }
    }
    return choice;
}

void set_plot_font(Session& session, Printer* printer, bool districts, const FontChoice& choice) {
    Settings& settings = session.settings;
    set_face(settings, districts, choice);
    if (printer != nullptr) {
        try {
            SetPrinterFont(session, *printer, choice.font, plot_height(settings, districts));
        } catch (const PrinterError&) {
            // The height that was set stays in force.
        }
    }
}

void set_plot_height(Session& session, Printer* printer, bool districts, std::string_view typed) {
    float& height = plot_height(session.settings, districts);
    height = float_value(typed);
    if (printer != nullptr) {
        try {
            const FontSpec font = screen_font(session.settings, districts).font;
            height = fitted_size(session, *printer, font, height).height;
        } catch (const PrinterError&) {
            // What was typed is all that is known.
        }
    }
}

}  // namespace veldra
