#include "batch/plot_options.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "plot/paper_codes.h"

namespace veldra::batch {

namespace {

constexpr double smallest_side = 15;
constexpr double largest_side = 5000;

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

double parse_scale(const std::string& text) {
    const auto denominator = parse_number<double>(text);
    if (!denominator || *denominator < 1) {
        refuse("--massstab", text, "die Maßstabszahl M von 1:M, mindestens 1");
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

template <typename Parse>
auto if_given(const std::string& text, Parse parse) {
    return text.empty() ? std::nullopt : std::optional(parse(text));
}

}  // namespace

PlotChoice parse_plot_choice(const PlotArguments& arguments) {
    PlotChoice choice;
    choice.denominator = if_given(arguments.scale, parse_scale);
    choice.orientation = if_given(arguments.orientation, parse_orientation);
    choice.margin = if_given(arguments.margin, parse_margin);
    choice.legend = if_given(arguments.legend, parse_legend);
    choice.sheets = if_given(arguments.sheets, parse_sheets);
    choice.zero = if_given(arguments.zero, parse_zero);
    choice.paper = if_given(arguments.paper, parse_paper);
    return choice;
}

}  // namespace veldra::batch
