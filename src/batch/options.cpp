#include "batch/options.h"

#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

namespace veldra::batch {

namespace {

/// A selection scalar that a call may set.
struct ObjectField {
    std::string_view name;
    std::int16_t ObjectSelection::*small = nullptr;
    std::int32_t ObjectSelection::*large = nullptr;
    std::int32_t least = 0;
    std::int32_t greatest = 0;
    bool boolean = false;
};

constexpr std::array<ObjectField, 15> object_fields{{
    {"obj_pube", &ObjectSelection::obj_pube, nullptr, 0, 1},
    {"obj_pusi", &ObjectSelection::obj_pusi, nullptr, 0, 1},
    {"obj_puwe", &ObjectSelection::obj_puwe, nullptr, 0, 8},
    {"obj_epbe", &ObjectSelection::obj_epbe, nullptr, -1, 1, true},
    {"obj_test_restkl", &ObjectSelection::obj_test_restkl, nullptr, -1, 1, true},
    {"obj_nube", &ObjectSelection::obj_nube, nullptr, 0, 5},
    {"obj_nbez", &ObjectSelection::obj_nbez, nullptr, 0, 2},
    {"obj_beob", &ObjectSelection::obj_beob, nullptr, 0, 3},
    {"obj_test_beob", &ObjectSelection::obj_test_beob, nullptr, -1, 1, true},
    {"obj_test", &ObjectSelection::obj_test, nullptr, 1, 3},
    {"obj_verw", &ObjectSelection::obj_verw, nullptr, 0, 7},
    {"obj_bezu", &ObjectSelection::obj_bezu, nullptr, -99, 3},
    {"obj_bezu_elli", nullptr, &ObjectSelection::obj_bezu_elli, 1, 5},
    {"obj_bezu_abbi", nullptr, &ObjectSelection::obj_bezu_abbi, 1, 2},
    {"obj_nube_meridian", nullptr, &ObjectSelection::obj_nube_meridian,
     std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()},
}};

template <typename Number>
std::optional<Number> parse_whole(std::string_view text) {
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

bool is_allowed(const ObjectField& field, std::int32_t value) {
    constexpr std::int32_t unset = -99;
    const bool gap = field.least == unset && value > unset && value < 0;
    return value >= field.least && value <= field.greatest && !gap;
}

}  // namespace

void set_object(ObjectSelection& obj, const std::string& assignment) {
    const std::size_t equals = assignment.find('=');
    const std::string_view name = std::string_view(assignment).substr(0, equals);
    for (const ObjectField& field : object_fields) {
        if (field.name != name || equals == std::string::npos) {
            continue;
        }
        const auto value =
            parse_whole<std::int32_t>(std::string_view(assignment).substr(equals + 1));
        if (!value || !is_allowed(field, *value)) {
            throw UsageError(fmt::format("--obj {}: Wert nicht zulässig", assignment));
        }
        if (field.large != nullptr) {
            obj.*field.large = *value;
        } else if (field.boolean) {
            obj.*field.small = *value == 0 ? table_false : table_true;
        } else {
            obj.*field.small = static_cast<std::int16_t>(*value);
        }
        return;
    }
    throw UsageError(
        fmt::format("--obj {}: erwartet wird NAME=WERT mit dem Namen einer Auswahl, "
                    "z. B. obj_beob=2",
                    assignment));
}

std::array<double, 4> parse_window(const std::string& text) {
    std::array<double, 4> window{};
    std::string_view rest = text;
    for (std::size_t i = 0; i < window.size(); ++i) {
        const std::size_t comma = rest.find(',');
        const bool last = i + 1 == window.size();
        const auto value = parse_whole<double>(rest.substr(0, comma));
        if (!value || last != (comma == std::string_view::npos)) {
            throw UsageError(
                fmt::format("--ausschnitt {}: erwartet wird RW1,HW1,RW2,HW2 in Metern", text));
        }
        window[i] = *value;
        rest.remove_prefix(last ? rest.size() : comma + 1);
    }
    if (!(window[0] < window[2] && window[1] < window[3])) {
        throw UsageError(fmt::format(
            "--ausschnitt {}: RW1 muss kleiner als RW2 und HW1 kleiner als HW2 sein", text));
    }
    return window;
}

}  // namespace veldra::batch
