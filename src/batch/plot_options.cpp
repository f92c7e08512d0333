#include "batch/plot_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "plot/paper_codes.h"
#include "plot/printer.h"
#include "plot/sheet_division.h"
#include "text/plain_decimal.h"

namespace veldra::batch {

namespace {

constexpr double smallest_side = 15;
constexpr double largest_side = 5000;
constexpr double smallest_net_side = 50;  // millimetres

[[noreturn]] void refuse(const char* option, const std::string& value, const char* expected) {
    throw UsageError(fmt::format("{} {}: erwartet wird {}", option, value, expected));
}

/// The whole text as a finite number of this type.
template <typename Number>
std::optional<Number> parse_number(std::string_view text) {
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = result.ec == std::errc{} && result.ptr == text.data() + text.size();
    return whole && std::isfinite(static_cast<double>(value)) ? std::optional(value) : std::nullopt;
}

/// Two numbers with one of the separators between them.
template <typename Number>
std::optional<std::pair<Number, Number>> parse_pair(std::string_view text,
                                                    std::string_view separators) {
    const std::size_t at = text.find_first_of(separators);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    const auto first = parse_number<Number>(text.substr(0, at));
    const auto second = parse_number<Number>(text.substr(at + 1));
    return first && second ? std::optional(std::pair(*first, *second)) : std::nullopt;
}

/// A number as people write it: the first comma is a point, single blanks may part digits.
std::optional<double> parse_written_number(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool parts_digits = text[i] == ' ' && i > 0 && is_decimal_digit(text[i - 1]) &&
                                  i + 1 < text.size() && is_decimal_digit(text[i + 1]);
        if (!parts_digits) {
            plain += text[i];
        }
    }
    if (const std::size_t comma = plain.find(','); comma != std::string::npos) {
        plain[comma] = '.';
    }
    return parse_number<double>(plain);
}

double parse_scale(const std::string& text) {
    const auto denominator = parse_written_number(text);
    if (!denominator || *denominator < 1) {
        refuse("--massstab", text,
               "die Maßstabszahl M von 1:M, mindestens 1, etwa 2500 oder \"25 000\"");
    }
    return *denominator;
}

std::int16_t parse_orientation(const std::string& text) {
    if (text != "hoch" && text != "quer") {
        refuse("--ausrichtung", text, "hoch oder quer");
    }
    return text == "hoch" ? std::int16_t{1} : std::int16_t{2};
}

std::int16_t parse_margin(const std::string& text) {
    if (text != "oben" && text != "links" && text != "kein") {
        refuse("--heftrand", text, "oben, links oder kein");
    }
    return text == "oben" ? std::int16_t{1} : text == "links" ? std::int16_t{2} : std::int16_t{3};
}

std::int16_t parse_legend(const std::string& text) {
    const auto place = parse_number<std::int16_t>(text);
    if (!place || *place < 1 || *place > 4) {
        refuse("--legende", text,
               "1 (links oben), 2 (links unten), 3 (rechts oben) oder 4 (rechts unten)");
    }
    return *place;
}

SheetCounts parse_sheets(const std::string& text) {
    const auto counts = parse_pair<std::int16_t>(text, "xX");
    if (!counts || counts->first < 1 || counts->second < 1) {
        refuse("--blaetter", text, "RxH, die Zahl der Blätter nach rechts und nach oben");
    }
    return {counts->first, counts->second};
}

ZeroPoint parse_zero(const std::string& text) {
    const auto point = parse_pair<double>(text, ",");
    if (!point) {
        refuse("--null", text, "RW,HW in Metern");
    }
    return {point->first, point->second};
}

PaperChoice parse_paper(const std::string& text) {
    if (const auto known = paper_of_name(text)) {
        return {known->code, known->width, known->height};
    }
    const auto size = parse_pair<double>(text, "xX");
    const auto allowed = [](double side) { return side >= smallest_side && side <= largest_side; };
    if (!size || !allowed(size->first) || !allowed(size->second)) {
        refuse("--papier", text, "A4, A3, A2, A1, A0 oder BxH in Millimetern (15 bis 5000)");
    }
    return {user_defined_paper_code, size->first, size->second};
}

/// Whether a document can have sheets of this paper in an orientation and with a binding margin
/// that the options leave open.
bool can_leave_room(const PlotChoice& choice) {
    // What the device for documents cannot print on, both sides together.
    constexpr double edges = 10;
    const std::int16_t margin = choice.margin.value_or(kein_heftrand);
    for (const std::int16_t orientation : {hochformat, querformat}) {
        if (choice.orientation.value_or(orientation) != orientation) {
            continue;
        }
        const bool lying = orientation == querformat;
        const double across = lying ? choice.paper->height : choice.paper->width;
        const double up = lying ? choice.paper->width : choice.paper->height;
        SheetGeometry sheet;
        sheet.papier_breite = (across - edges) / 1000;
        sheet.papier_hoehe = (up - edges) / 1000;
        take_off_margins(sheet, margin);
        if (leaves_room(sheet)) {
            return true;
        }
    }
    return false;
}

template <typename Parse>
auto if_given(const std::string& text, Parse parse) {
    return text.empty() ? std::nullopt : std::optional(parse(text));
}

}  // namespace

bool leaves_room(const SheetGeometry& sheet) {
    // Papers come in whole twips.
    constexpr double slack = 0.0254 / 1440;
    return std::min(sheet.papier_breite, sheet.papier_hoehe) >= smallest_net_side / 1000 - slack;
}

PlotChoice parse_plot_choice(const PlotArguments& arguments) {
    PlotChoice choice;
    choice.denominator = if_given(arguments.scale, parse_scale);
    choice.orientation = if_given(arguments.orientation, parse_orientation);
    choice.margin = if_given(arguments.margin, parse_margin);
    choice.legend = if_given(arguments.legend, parse_legend);
    choice.sheets = if_given(arguments.sheets, parse_sheets);
    choice.zero = if_given(arguments.zero, parse_zero);
    choice.paper = if_given(arguments.paper, parse_paper);
    if (choice.paper && arguments.printer.empty() && !can_leave_room(choice)) {
        refuse("--papier", arguments.paper,
               "eine Größe, von der ohne Ränder mindestens 50 x 50 mm bleiben");
    }
    return choice;
}

}  // namespace veldra::batch
