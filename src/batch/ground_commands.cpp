#include "batch/ground_commands.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <system_error>

#include <fmt/format.h>

#include "batch/batch_session.h"
#include "batch/command_input.h"
#include "batch/json_output.h"
#include "batch/output.h"
#include "drawing/boundaries.h"
#include "drawing/boundary_reduction.h"
#include "drawing/districts.h"
#include "os/files.h"
#include "os/system_error.h"
#include "text/fatal_error.h"
#include "text/numbers.h"
#include "text/shown_text.h"
#include "text/tokens.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra::batch {

namespace {

template <typename Number>
bool parse_all(std::string_view text, Number& value) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc{} && result.ptr == text.data() + text.size();
}

PlaneSystem parse_system(const char* option, const std::string& text) {
    const std::size_t comma = text.find(',');
    PlaneSystem system;
    const std::string_view all = text;
    const bool numbers = comma != std::string::npos &&
                         parse_all(all.substr(0, comma), system.ellipsoid) &&
                         parse_all(all.substr(comma + 1), system.mapping);
    if (!numbers || system.ellipsoid < 1 || system.ellipsoid > 5 || system.mapping < 1 ||
        system.mapping > 2) {
        throw UsageError(
            fmt::format("{} {}: erwartet wird ELLI,ABBI mit dem Ellipsoid 1 bis 5 und der "
                        "Abbildung 1 (Gauß-Krüger) oder 2 (UTM)",
                        option, text));
    }
    return system;
}

/// The text as a finite number; its first comma counts as a point, as in all files.
bool parse_decimal(std::string_view text, double& value) {
    std::string number(text);
    const std::size_t comma = number.find(',');
    if (comma != std::string::npos) {
        number[comma] = '.';
    }
    return parse_all(number, value) && std::isfinite(value);
}

/// The numbers of a line; false if it holds fewer, more, or anything else.
template <std::size_t Count>
bool parse_numbers(std::string_view line, std::array<double, Count>& values) {
    int n = 0;
    for (double& value : values) {
        const Word word = suche_wort(line, ++n);
        if (!word.found() || !parse_decimal(word.text, value)) {
            return false;
        }
    }
    return !suche_wort(line, n + 1).found();
}

DatumRow parse_datum(const std::string& text) {
    std::array<double, 5> values{};
    if (!text.empty() && !parse_numbers(text, values)) {
        throw UsageError(fmt::format(
            "--datum {}: erwartet werden fünf Zahlen, durch Leerzeichen getrennt", text));
    }
    return {.dphi0 = values[0],
            .dlam0 = values[1],
            .sphi = values[2],
            .slam = values[3],
            .rot = values[4]};
}

/// Two numbers of a line; none if it holds anything else.
std::optional<PlanePoint> parse_point(std::string_view line) {
    std::array<double, 2> values{};
    return parse_numbers(line, values) ? std::optional(PlanePoint{values[0], values[1]})
                                       : std::nullopt;
}

std::string point_text(const PlanePoint& point) {
    constexpr const char* mask = "0.0000";
    return zahl_text(point.rechts, mask, "") + " " + zahl_text(point.hoch, mask, "");
}

}  // namespace

void command_bezirk(const FileOptions& options, const PictureOptions& picture) {
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    open_view(session, options, picture, measurer, ui);
    const Viewport& view = session.view;
    const DistrictGrid& grid = district_grid(session, {view.ansicht_rw_min, view.ansicht_hw_min,
                                                       view.ansicht_rw_max, view.ansicht_hw_max});
    write_to_standard_output(json_for_terminal(district_json(session.obj, grid)));
}

void command_koordinaten(const TransformationOptions& options) {
    constexpr std::size_t piece = 1 << 16;
    const ChainSetup setup{parse_system("--nach", options.to), options.meridian,
                           parse_system("--von", options.from), parse_datum(options.datum)};
    const CoordinateChain chain(setup);
    std::string line;
    std::string results;
    std::int64_t number = 0;
    std::int64_t outside = 0;
    std::int64_t first_outside = 0;
    while (std::getline(std::cin, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.find_first_not_of(' ') == std::string::npos) {
            results += '\n';
            continue;
        }
        const std::optional<PlanePoint> point = parse_point(line);
        if (!point) {
            write_to_standard_output(results);
            throw FatalError(fmt::format(
                "Standardeingabe: Zeile {}: erwartet werden Rechtswert und Hochwert", number));
        }
        const std::optional<PlanePoint> result = chain.to_document(*point);
        if (!result && outside++ == 0) {
            first_outside = number;
        }
        results += (result ? point_text(*result) : std::string("* *")) + "\n";
        if (results.size() > piece) {
            write_to_standard_output(results);
            results.clear();
        }
    }
    const int error = errno;
    write_to_standard_output(results);
    if (std::ferror(stdin) != 0) {
        throw file_error("kann nicht gelesen werden", "Standardeingabe", error);
    }
    if (outside > 0) {
        throw FatalError(
            fmt::format("Standardeingabe: {} Punkte liegen außerhalb der Abbildung, der erste in "
                        "Zeile {}",
                        outside, first_outside));
    }
}

void command_grenzen(const std::string& argument, const std::string& output) {
    constexpr std::uint64_t long_file = 20'000'000;
    if (output.empty() && is_standard_input(argument)) {
        throw UsageError("nötig ist -o, wenn die Standardeingabe gelesen wird");
    }
    const std::string target = output.empty() ? argument + "_neu" : output;
    const NamedBy named_by = output.empty() ? NamedBy::program : NamedBy::user;
    refuse_input_as_output(argument, target);
    tell_ownership_loss(target);
    const CommandInput source(argument);
    const std::string& input = source.path();
    ReductionProgress progress;
    int told = 0;
    if (file_stamp(input).size > long_file) {
        progress = [&told](double share) {
            constexpr int step = 10;
            const int percent = static_cast<int>(share * 100) / step * step;
            if (percent > told) {
                told = percent;
                remark(fmt::format("{} %", percent));
            }
        };
    }
    const ReductionResult result = reduce_boundaries(input, target, progress, named_by);
    write_to_standard_output(for_terminal(fmt::format("{}: {} von {} Strecken entfallen\n", target,
                                                      result.dropped, result.segments)));
}

void load_boundaries(Session& session) {
    if (session.obj.obj_verw == 0) {
        return;
    }
    const BoundaryLines* lines = boundary_lines(session);
    if (lines != nullptr && lines->outside > 0) {
        remark(
            fmt::format("{}: {} Punkte liegen außerhalb der Abbildung und werden nicht gezeichnet",
                        boundary_path(session), lines->outside));
    }
}

}  // namespace veldra::batch
