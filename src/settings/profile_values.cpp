#include "settings/profile_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "text/codepage.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace veldra {

namespace {

constexpr int overflow = 6;
constexpr std::string_view datum_mask = "########0.0###";

/// The 64-bit float with the same shortest decimal, so that 0.35 rounds as 0.35 and not as the
/// 0.3499999940 that its 32-bit form stands for.
double widen(float value) {
    std::array<char, 64> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    double wide = value;
    std::from_chars(digits.data(), written.ptr, wide);
    return wide;
}

template <typename Integer>
Integer in_range(std::optional<Integer> value, const ErrorPlace& place) {
    if (!value) {
        throw runtime_error_at(overflow, place);
    }
    return *value;
}

bool begins_as_number(std::string_view text) {
    constexpr std::string_view digits = "0123456789";
    const std::size_t first = text.find_first_not_of("+-.,");
    return first <= 2 && first < text.size() && digits.find(text[first]) != std::string_view::npos;
}

double token_number(std::string_view line, int n) {
    return zahl_wert(suche_wort(line, n).text);
}

}  // namespace

std::string NumberForm::text(double value) const {
    return zahl_text(value, mask, "");
}

std::string NumberForm::text(float value) const {
    return text(widen(value));
}

std::string NumberForm::text(std::int32_t value) const {
    return text(static_cast<double>(value));
}

void NumberForm::take(std::string_view text, const ErrorPlace& /*place*/, double& value) const {
    value = zahl_wert(text);
}

void NumberForm::take(std::string_view text, const ErrorPlace& place, float& value) const {
    const double wide = zahl_wert(text);
    constexpr float largest = std::numeric_limits<float>::max();
    // The largest float is written by its shortest decimal, which lies a little above it.
    if (std::fabs(wide) > widen(largest)) {
        throw runtime_error_at(overflow, place);
    }
    const auto limit = static_cast<double>(largest);
    value = static_cast<float>(std::clamp(wide, -limit, limit));
}

void NumberForm::take(std::string_view text, const ErrorPlace& place, std::int16_t& value) const {
    value = in_range(to_int16(zahl_wert(text)), place);
}

void NumberForm::take(std::string_view text, const ErrorPlace& place, std::int32_t& value) const {
    value = in_range(to_int32(zahl_wert(text)), place);
}

std::string BooleanForm::text(std::int16_t value) const {
    return value != 0 ? "True" : "False";
}

void BooleanForm::take(std::string_view text, const ErrorPlace& /*place*/,
                       std::int16_t& value) const {
    const std::string word = upper_case(trim(text));
    if (word == "TRUE" || word == "WAHR") {
        value = -1;
    } else if (word == "FALSE" || word == "FALSCH") {
        value = 0;
    } else if (begins_as_number(word)) {
        value = zahl_wert(word) != 0 ? std::int16_t{-1} : std::int16_t{0};
    }
}

void TextForm::take(std::string_view text, const ErrorPlace& /*place*/, std::string& value) const {
    value = text;
}

std::string DatumForm::text(const DatumRow& value) const {
    std::string line;
    for (const double number : {value.dphi0, value.dlam0, value.sphi, value.slam, value.rot}) {
        line += line.empty() ? "" : " ";
        line += zahl_text(number, datum_mask, "");
    }
    return line;
}

void DatumForm::take(std::string_view text, const ErrorPlace& /*place*/, DatumRow& value) const {
    value = {.dphi0 = token_number(text, 1),
             .dlam0 = token_number(text, 2),
             .sphi = token_number(text, 3),
             .slam = token_number(text, 4),
             .rot = token_number(text, 5)};
    const bool older_order = token_number(text, 6) == 1;
    if (older_order) {
        std::swap(value.dlam0, value.sphi);
        value.rot = 0;
    }
}

}  // namespace veldra
