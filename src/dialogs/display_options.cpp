#include "dialogs/display_options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "plot/printer_adapters.h"
#include "plot/sheet_division.h"
#include "settings/defaults.h"
#include "text/numbers.h"
#include "text/text_forms.h"
#include "view/extents.h"

namespace veldra {

namespace {

constexpr int set_defaults = 1;
constexpr int save = 2;
constexpr int restore = 3;

using DefaultHelper = void (*)(Session&, int);

/// The helper of each tab, in the order of the tabs.
constexpr std::array<DefaultHelper, display_tab_count> tab_helpers{
    standard_punkt_screen, standard_punkt_plot,   standard_beob_screen, standard_beob_plot,
    standard_vektor_lage,  standard_vektor_hoehe, standard_test,        standard_grenzen};

constexpr std::string_view limit_mask = "####0.0";
constexpr std::string_view vector_scale_mask = "####0.#";

/// Pens of the picker go up to this width.
constexpr int widest_picked_pen = 6;

std::string without_final_point(std::string text) {
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string limit_text(double value) {
    return zahl_text(value, limit_mask, "");
}

/// Computes the extents anew; false, and they stay, if the sheets cannot be counted then.
bool take_extents(Session& session, TextMeasurer& measurer, Printer* printer) {
    const Extents before = session.extents;
    PaperTextOnDesk paper_text(session, measurer, printer);
    ComputeExtents(session, paper_text);
    if (!(session.plot.plot_massstab > 0) || part_is_empty(session) ||
        sheets_can_be_counted(session)) {
        return true;
    }
    session.extents = before;
    return false;
}

}  // namespace

double display_begin(Session& session) {
    standard_vektor_lage(session, save);
    standard_vektor_hoehe(session, save);
    return session.plot.plot_massstab;
}

void display_standard(Session& session, DisplayTab tab) {
    tab_helpers[static_cast<std::size_t>(tab)](session, set_defaults);
}

bool display_accept(Session& session, TextMeasurer& measurer, Printer* printer) {
    if (session.datei_geladen == 1 && !take_extents(session, measurer, printer)) {
        return false;
    }
    for (const DefaultHelper helper : tab_helpers) {
        helper(session, save);
    }
    session.plot_merk.plot_massstab = session.plot.plot_massstab;
    return true;
}

void display_reject(Session& session, double plot_massstab) {
    for (const DefaultHelper helper : tab_helpers) {
        helper(session, restore);
    }
    session.plot.plot_massstab = plot_massstab;
}

std::string number_text(double value, std::string_view mask) {
    std::string text = zahl_text(value, mask, "");
    return without_final_point(std::move(text));
}

float float_value(std::string_view text) {
    constexpr auto largest = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::clamp(zahl_wert(text), -largest, largest));
}

ScaleEntry ground_scale_entry(std::string_view text) {
    const GroupedNumber number = GroupDigits(text);
    return {number.value > 0 && number.grouped != "0", number.grouped, number.value};
}

ScaleEntry vector_scale_entry(std::string_view text) {
    const std::string normal = number_text(GroupDigits(text).value, vector_scale_mask);
    const double value = zahl_wert(normal);
    return {value > 0, normal, value};
}

ScaleEntry width_factor_entry(std::string_view text) {
    constexpr int largest = std::numeric_limits<std::int16_t>::max() / widest_picked_pen;
    const std::optional<std::int16_t> factor = to_int16(zahl_wert(text));
    if (!factor) {
        return {false, std::string(text), 0};
    }
    return {*factor >= 1 && *factor <= largest, std::to_string(*factor),
            static_cast<double>(*factor)};
}

std::string ground_scale_text(double plot_massstab) {
    return plot_massstab > 0 ? GroupDigits(zahl_text(1 / plot_massstab, "0.######", "")).grouped
                             : std::string();
}

std::string vector_scale_text(double vektor_massstab) {
    return number_text(1 / vektor_massstab, vector_scale_mask);
}

const std::vector<std::string>& offered_vector_scales() {
    static const std::vector<std::string> scales{"0.1", "0.2", "0.5", "1",  "2",
                                                 "5",   "10",  "20",  "50", "100"};
    return scales;
}

void set_vector_scale(Session& session, std::size_t slot, double denominator) {
    session.vektor_massstab[slot] = 1 / denominator;
    session.vektor_massstab_plot[slot] = 1 / denominator;
}

DisplayMessage scale_message(ScaleBox box) {
    switch (box) {
        case ScaleBox::ground:
            return {"Maßstabsvorgabe",
                    "Bitte überprüfen Sie die angegebene Grundriss-Maßstabszahl"};
        case ScaleBox::vector:
            return {"Maßstabsvorgabe", "Bitte übeprüfen Sie den angegebenen Vektormaßstab"};
        case ScaleBox::width_factor:
            break;
    }
    return {"Überhöhungsfaktor", "Bitte übeprüfen Sie die angegebene Strichstärkenüberhöhung"};
}

DisplayMessage scale_message_on_ok(ScaleBox box) {
    switch (box) {
        case ScaleBox::ground:
            return {"Maßstabsvorgabe", "Bitte übeprüfen Sie die angegebene Grundriss-Maßstabszahl"};
        case ScaleBox::vector:
            return {"Maßstabsvorgabe", "Bitte übeprüfen Sie die angegebenen Vektormaßstäbe"};
        case ScaleBox::width_factor:
            break;
    }
    return scale_message(box);
}

namespace {

/// The limit in settings that may be constant.
template <typename AnySettings>
auto& limit_of(AnySettings& settings, TestLimit limit) {
    switch (limit) {
        case TestLimit::ev:
            return settings.stevwert[1];
        case TestLimit::nv1:
            return settings.stnvwert[1];
        case TestLimit::nv2:
            return settings.stnvwert[2];
        case TestLimit::nv3:
            return settings.stnvwert[3];
        case TestLimit::ep1:
            return settings.stepwert[1];
        case TestLimit::ep2:
            return settings.stepwert[2];
        case TestLimit::grenzwert:
            break;
    }
    return settings.stndwert;
}

}  // namespace

double& test_limit(Settings& settings, TestLimit limit) {
    return limit_of(settings, limit);
}

double test_limit(const Settings& settings, TestLimit limit) {
    return limit_of(settings, limit);
}

LimitBounds test_limit_bounds(const Settings& settings, TestLimit limit) {
    constexpr double largest = 99999.9;
    switch (limit) {
        case TestLimit::grenzwert:
            return {0.5, 100.0};
        case TestLimit::ev:
            return {0.0, 100.0};
        case TestLimit::nv2:
            return {settings.stnvwert[1], largest};
        case TestLimit::nv3:
            return {settings.stnvwert[2], largest};
        case TestLimit::ep2:
            return {settings.stepwert[1], largest};
        case TestLimit::nv1:
        case TestLimit::ep1:
            break;
    }
    return {0.0, largest};
}

LimitEntry check_limit(std::string_view text, const LimitBounds& bounds) {
    constexpr const char* title = " Fehler ";
    LimitEntry entry;
    entry.typed = limit_text(zahl_wert(text));
    entry.value = zahl_wert(entry.typed);
    if (entry.value < bounds.lower) {
        entry.message = {title, "Wert kleiner " + limit_text(bounds.lower) + " nicht sinnvoll"};
        entry.value = bounds.lower;
    } else if (entry.value > bounds.upper) {
        // One n in "sinvoll": the message has always read so.
        entry.message = {title, "Wert größer " + limit_text(bounds.upper) + " nicht sinvoll"};
        entry.value = bounds.upper;
    }
    entry.text = limit_text(entry.value);
    return entry;
}

TestClass test_class(std::size_t index) {
    constexpr std::size_t first_ev = 1;
    constexpr std::size_t first_nv = 3;
    constexpr std::size_t first_ep = 7;
    if (index >= first_ep) {
        return {3, index - first_ep + 1};
    }
    if (index >= first_nv) {
        return {2, index - first_nv + 1};
    }
    if (index >= first_ev) {
        return {1, index - first_ev + 1};
    }
    return {0, 0};
}

void PenPlaces::set_width(std::int16_t width) const {
    for (std::int16_t* place : widths) {
        *place = width;
    }
}

void PenPlaces::set_colour(std::int32_t colour) const {
    for (std::int32_t* place : colours) {
        *place = colour;
    }
}

PenPlaces test_pen_places(Settings& settings, std::size_t index) {
    const TestClass test = test_class(index);
    switch (test.statistic) {
        case 1:
            return {{&settings.stevdrw[test.number]}, {&settings.stevrgb[test.number]}};
        case 2:
            return {{&settings.stnvdrw[test.number]}, {&settings.stnvrgb[test.number]}};
        case 3:
            return {{&settings.stepdrw[test.number]}, {&settings.steprgb[test.number]}};
        default:
            return {{&settings.stnddrw}, {&settings.stndrgb}};
    }
}

std::optional<TestLimit> test_class_limit(std::size_t index) {
    switch (index) {
        case 0:
            return TestLimit::grenzwert;
        case 2:
            return TestLimit::ev;
        case 3:
            return TestLimit::nv1;
        case 4:
            return TestLimit::nv2;
        case 5:
            return TestLimit::nv3;
        case 7:
            return TestLimit::ep1;
        case 8:
            return TestLimit::ep2;
        default:
            return std::nullopt;
    }
}

std::string_view test_class_relation(std::size_t index) {
    constexpr std::array<std::string_view, test_class_count> relations{"NV, EP, EH mit EV < ",
                                                                       "EV > ",
                                                                       "EV < ",
                                                                       "NV < ",
                                                                       "NV < ",
                                                                       "NV < ",
                                                                       "NV > ",
                                                                       "EP < ",
                                                                       "EP < ",
                                                                       "EP > "};
    return relations[index];
}

std::string test_class_text(const Settings& settings, std::size_t index) {
    // The class above the first or last limit names the limit of its neighbour.
    constexpr std::array<TestLimit, test_class_count> limits{
        TestLimit::grenzwert, TestLimit::ev,  TestLimit::ev,  TestLimit::nv1, TestLimit::nv2,
        TestLimit::nv3,       TestLimit::nv3, TestLimit::ep1, TestLimit::ep2, TestLimit::ep2};
    return std::string(test_class_relation(index)) +
           limit_text(test_limit(settings, limits[index]));
}

std::string test_class_caption(const Settings& settings, std::size_t index) {
    return "für " + test_class_text(settings, index);
}

std::string test_width_caption(std::size_t index) {
    switch (test_class(index).statistic) {
        case 1:
            return "Strichstärke EV";
        case 2:
            return "Strichstärke NV";
        case 3:
            return "Strichstärke EP /EH";
        default:
            return "Strichstärke Grenzwert";
    }
}

VectorItem vector_item(std::size_t first_slot, std::size_t index) {
    if (index == vector_item_count - 1) {
        return {first_slot + 2, true, true};
    }
    const bool control_points = index % 2 == 0;
    return {first_slot + index / 2, control_points, !control_points};
}

PenPlaces vector_pen_places(Settings& settings, const VectorItem& item) {
    PenPlaces places;
    if (item.new_points) {
        places.widths.push_back(&settings.vektNdrw[item.slot]);
        places.colours.push_back(&settings.vektNrgb[item.slot]);
    }
    if (item.control_points) {
        places.widths.push_back(&settings.vektAdrw[item.slot]);
        places.colours.push_back(&settings.vektArgb[item.slot]);
    }
    return places;
}

std::string vector_caption(const VectorItem& item) {
    constexpr std::array<const char*, 7> names{"",
                                               "Lageänderungen",
                                               "Lagerestklaffungen",
                                               "Lagefehlerellipsen",
                                               "Höhenänderungen",
                                               "Höhenrestklaffungen",
                                               "mittlere Höhenfehler"};
    std::string caption = std::string("für ") + names[item.slot];
    if (item.control_points != item.new_points) {
        caption += item.control_points ? " Anschlusspunkte" : " Neupunkte";
    }
    return caption;
}

double vector_maximum(const Session& session, const VectorItem& item) {
    const double control_points = item.control_points ? session.max_ap[item.slot].wert : 0;
    const double new_points = item.new_points ? session.max_np[item.slot].wert : 0;
    return std::fabs(control_points) > std::fabs(new_points) ? control_points : new_points;
}

std::string vector_maximum_text(const Session& session, std::size_t slot, bool control_points) {
    constexpr std::size_t ellipses = 3;
    const char* const new_points_name = slot == ellipses ? "max. a: " : "max. NP: ";
    const auto& maxima = control_points ? session.max_ap : session.max_np;
    const auto& widths = control_points ? session.settings.vektAdrw : session.settings.vektNdrw;
    const std::string text =
        (control_points ? "max. AP: " : new_points_name) + limit_text(maxima[slot].wert);
    return widths[slot] < 1 ? text + " (nicht dargestellt)" : text;
}

std::string_view point_class_name(std::size_t klasse) {
    constexpr std::array<std::string_view, 4> names{"TP", "AP(1)", "AP(2)", "sonst."};
    return names[klasse];
}

std::string point_radius_label(std::size_t klasse) {
    return "Radius Punktsignatur " + std::string(point_class_name(klasse)) + ":";
}

}  // namespace veldra
