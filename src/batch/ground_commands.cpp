#include "batch/ground_commands.h"

#include <charconv>
#include <iostream>
#include <system_error>

#include <fmt/format.h>

#include "batch/batch_session.h"
#include "batch/json_output.h"
#include "batch/output.h"
#include "graphikdatei/numbers.h"
#include "graphikdatei/tokens.h"
#include "platform/os/files.h"
#include "platform/qt/qt_text_measurer.h"
#include "reference/boundaries.h"
#include "reference/boundary_reduction.h"
#include "reference/districts.h"
#include "settings/profile_values.h"
#include "shell/fatal_error.h"

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

DatumRow parse_datum(const std::string& text) {
    DatumRow row;
    if (text.empty()) {
        return row;
    }
    for (int n = 1; n <= 5; ++n) {
        const Word word = suche_wort(text, n);
        std::string number(word.text);
        const std::size_t comma = number.find(',');
        if (comma != std::string::npos) {
            number[comma] = '.';
        }
        double value = 0;
        if (!word.found() || !parse_all(std::string_view(number), value)) {
            throw UsageError(fmt::format(
                "--datum {}: erwartet werden fünf Zahlen, durch Leerzeichen getrennt", text));
        }
    }
    DatumForm{}.take(text, {}, row);
    return row;
}

/// Two numbers of a line; none if it holds anything else.
std::optional<PlanePoint> parse_point(std::string_view line) {
    const Word rechts = suche_wort(line, 1);
    const Word hoch = suche_wort(line, 2);
    PlanePoint point;
    if (!rechts.found() || !hoch.found() || suche_wort(line, 3).found() ||
        !parse_all(rechts.text, point.rechts) || !parse_all(hoch.text, point.hoch)) {
        return std::nullopt;
    }
    return point;
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
    write_to_standard_output(district_json(session.obj, grid));
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
    write_to_standard_output(results);
    if (outside > 0) {
        throw FatalError(
            fmt::format("Standardeingabe: {} Punkte liegen außerhalb der Abbildung, der erste in "
                        "Zeile {}",
                        outside, first_outside));
    }
}

void command_grenzen(const std::string& input, const std::string& output) {
    constexpr std::uint64_t long_file = 20'000'000;
    const std::string target = output.empty() ? input + "_neu" : output;
    refuse_input_as_output(input, target);
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
    const ReductionResult result = reduce_boundaries(input, target, progress);
    write_to_standard_output(
        fmt::format("{}: {} von {} Strecken entfallen\n", target, result.dropped, result.segments));
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
