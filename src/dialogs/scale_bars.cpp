#include "dialogs/scale_bars.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/pen.h"
#include "drawing/value_scale.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

using pen::black;
using pen::solid;

/// The power of ten nearest to the number that is meant.
double power_of_ten(int exponent) {
    return exponent < 0 ? 1 / std::pow(10.0, -exponent) : std::pow(10.0, exponent);
}

std::string ground_text(int exponent) {
    constexpr int kilometre = 3;
    if (exponent < 0) {
        return zahl_text(power_of_ten(exponent), "#####0.###", "") + " m";
    }
    const bool in_kilometres = exponent >= kilometre;
    const int shown = in_kilometres ? exponent - kilometre : exponent;
    return zahl_text(power_of_ten(shown), "#########0", "") + (in_kilometres ? " km" : " m");
}

/// Twips of the picture for a centimetre of value; 0 if the scales give no length.
double twips_a_centimetre(const Session& session, std::size_t slot) {
    const double twips =
        value_scale(session, static_cast<int>(slot)) / session.view.ansicht_masseinheit;
    return std::isfinite(twips) && twips > 0 ? twips : 0;
}

std::optional<ScaleMark> unit_mark(double centimetre, double width) {
    struct Unit {
        double centimetres;
        const char* name;
    };
    constexpr std::array units{Unit{100, "1 m"}, Unit{10, "1 dm"}, Unit{1, "1 cm"},
                               Unit{0.1, "1 mm"}};
    for (const Unit& unit : units) {
        const double length = unit.centimetres * centimetre;
        if (length > 0 && length < width) {
            return ScaleMark{length, unit.name};
        }
    }
    return std::nullopt;
}

/// How a maximum is named and drawn.
struct MaximumStyle {
    const char* name;
    std::int16_t width;
    std::int32_t colour;
};

MaximumBar maximum_bar(const Maximum& maximum, const MaximumStyle& style, double centimetre,
                       double width) {
    MaximumBar bar;
    bar.length = std::abs(maximum.wert) * centimetre;
    bar.width = style.width;
    bar.colour = style.colour;
    bar.text = style.name + zahl_text(maximum.wert, "####0.0", "") + " cm";
    if (style.width <= 0) {
        bar.text += " (nicht dargestellt)";
    } else if (bar.length > width) {
        bar.text += " >";
    }
    // A height change may be negative.
    if (maximum.wert != 0 && !maximum.bez.empty()) {
        bar.place = "bei: " + to_utf8(maximum.bez);
        if (!maximum.epoche.empty()) {
            bar.place += ", Epoche: " + to_utf8(maximum.epoche);
        }
    }
    return bar;
}

void draw_line(DrawingTarget& target, double x1, double y1, double x2, double y2) {
    target.Line(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                static_cast<float>(y2));
}

void use_pen(DrawingTarget& target, std::int16_t width, std::int32_t colour) {
    target.DrawStyle(solid);
    target.DrawWidth(width);
    target.ForeColor(colour);
}

void draw_tick(DrawingTarget& target, double at, double height) {
    use_pen(target, 1, black);
    draw_line(target, at, 0, at, height);
}

bool is_drawn(const MaximumBar& bar) {
    return bar.width > 0 && bar.length > 0;
}

}  // namespace

std::size_t shown_position_slot(const Session& session) {
    const std::int16_t kind = session.obj.obj_wert_lage;
    return kind >= 1 && kind <= 3 ? static_cast<std::size_t>(kind) : 0;
}

std::size_t shown_height_slot(const Session& session) {
    constexpr std::size_t before_height = 3;
    const std::int16_t kind = session.obj.obj_wert_hoehe;
    return kind >= 1 && kind <= 3 ? static_cast<std::size_t>(kind) + before_height : 0;
}

std::optional<ScaleMark> ground_mark(const Session& session, double width) {
    constexpr int largest = 12;
    constexpr int smallest = -2;
    for (int exponent = largest; exponent >= smallest; --exponent) {
        const double length = power_of_ten(exponent) / session.view.ansicht_masseinheit;
        if (length < width) {
            return ScaleMark{length, ground_text(exponent)};
        }
    }
    return std::nullopt;
}

ValueBars value_bars(const Session& session, std::size_t slot, double width) {
    const Settings& settings = session.settings;
    const double centimetre = twips_a_centimetre(session, slot);
    const MaximumStyle ap{"max. AP: ", settings.vektAdrw[slot], settings.vektArgb[slot]};
    const MaximumStyle np{"max. NP: ", settings.vektNdrw[slot], settings.vektNrgb[slot]};
    return {unit_mark(centimetre, width), maximum_bar(session.max_ap[slot], ap, centimetre, width),
            maximum_bar(session.max_np[slot], np, centimetre, width)};
}

void draw_ground_bar(DrawingTarget& target, const std::optional<ScaleMark>& mark, double height) {
    if (mark) {
        use_pen(target, 1, black);
        draw_line(target, 0, height / 2, mark->at, height / 2);
        draw_line(target, mark->at, 0, mark->at, height);
    }
}

void draw_value_bars(DrawingTarget& target, const ValueBars& bars, double width, double height) {
    const bool ap_first = bars.ap.length >= bars.np.length;
    const std::array in_order{ap_first ? &bars.ap : &bars.np, ap_first ? &bars.np : &bars.ap};
    // What reaches beyond the picture ends out of sight, within the range of a 32-bit float.
    const double farthest = 2 * width;
    for (const MaximumBar* bar : in_order) {
        if (is_drawn(*bar)) {
            use_pen(target, bar->width, bar->colour);
            draw_line(target, 0, height / 2, std::min(bar->length, farthest), height / 2);
        }
    }
    if (bars.unit) {
        draw_tick(target, bars.unit->at, height);
    }
    for (const MaximumBar* bar : in_order) {
        if (is_drawn(*bar) && bar->length < width) {
            draw_tick(target, bar->length, height);
        }
    }
}

void open_scale_bars(Session& session) {
    WindowState& window = session.window;
    window.frm_massstab_shown = true;
    window[MenuItem::m_ansicht_massstab].checked = true;
    window[ToolButton::massstaebe].enabled = false;
}

void close_scale_bars(Session& session) {
    WindowState& window = session.window;
    window.frm_massstab_shown = false;
    MenuItemState& entry = window[MenuItem::m_ansicht_massstab];
    entry.checked = false;
    // Entry and button are offered together; a file without anything to draw and the preview offer
    // neither.
    window[ToolButton::massstaebe].enabled = entry.enabled;
}

}  // namespace veldra
