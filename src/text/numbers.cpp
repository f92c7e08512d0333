#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

#include "text/plain_decimal.h"

namespace veldra {

namespace {

/// A decimal number cut out of a text. A comma that was read as a point is remembered, since the
/// library's reader knows points only.
struct Prefix {
    std::size_t begin = 0;  ///< first digit or point
    std::size_t end = 0;
    std::size_t comma = std::string_view::npos;
    bool negative = false;
    bool any_digit = false;
};

/// End of the exponent that begins at `at`; `at` itself if there is none with digits.
std::size_t exponent_end(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) {
        return at;
    }
    if (end < text.size() && (text[end] == '-' || text[end] == '+')) {
        ++end;
    }
    if (end >= text.size() || !is_decimal_digit(text[end])) {
        return at;
    }
    while (end < text.size() && is_decimal_digit(text[end])) {
        ++end;
    }
    return end;
}

Prefix scan_prefix(std::string_view text, bool comma_is_point) {
    Prefix found;
    std::size_t at = 0;
    while (at < text.size() && text[at] == ' ') {
        ++at;
    }
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
        found.negative = text[at] == '-';
        ++at;
    }
    found.begin = at;
    bool point_seen = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (is_decimal_digit(c)) {
            found.any_digit = true;
        } else if (!point_seen && c == '.') {
            point_seen = true;
        } else if (!point_seen && c == ',' && comma_is_point) {
            point_seen = true;
            found.comma = at;
        } else {
            break;
        }
    }
    found.end = found.any_digit ? exponent_end(text, at) : at;
    return found;
}

/// About the power of ten of a decimal's first digit that is not 0; enough to tell a number too
/// large from one too small.
double leading_digit_power(std::string_view digits) {
    const std::size_t e = digits.find_first_of("eE");
    const std::string_view mantissa = digits.substr(0, e);
    double power = 0;
    if (e != std::string_view::npos) {
        const bool negative = digits[e + 1] == '-';
        for (const char c : digits.substr(e + 1)) {
            power = is_decimal_digit(c) ? power * 10 + (c - '0') : power;
        }
        power = negative ? -power : power;
    }
    const auto point = static_cast<double>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<double>(mantissa.find_first_not_of("0."));
    return power + point - first;
}

/// The general case, by the library; the sign is not part of the text.
double parse_general(std::string_view text, const Prefix& found) {
    std::string digits(text.substr(found.begin, found.end - found.begin));
    if (found.comma != std::string_view::npos) {
        digits[found.comma - found.begin] = '.';
    }
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return leading_digit_power(digits) > 0 ? std::numeric_limits<double>::max() : 0.0;
    }
    return value;
}

double parse(std::string_view text, bool comma_is_point) {
    double value = 0;
    const char* const end = text.data() + text.size();
    if (read_plain_decimal(text.data(), end, value) == end && !text.empty()) {
        return value;
    }
    const Prefix found = scan_prefix(text, comma_is_point);
    if (!found.any_digit) {
        return 0;
    }
    value = parse_general(text, found);
    return found.negative ? -value : value;
}

/// The shortest decimal that reads back to a value: 0.digits times ten to the exponent.
struct ShortestDecimal {
    std::string digits;
    int exponent = 0;
};

ShortestDecimal shortest_decimal(double magnitude) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                      std::chars_format::scientific);
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(result.ptr - buffer.data()));
    const std::size_t e = text.find('e');
    ShortestDecimal decimal;
    decimal.digits = text[0];
    if (e > 1) {
        decimal.digits += text.substr(2, e - 2);
    }
    int exponent = 0;
    const char* begin = text.data() + e + 1 + (text[e + 1] == '+' ? 1 : 0);
    std::from_chars(begin, result.ptr, exponent);
    decimal.exponent = exponent + 1;
    return decimal;
}

/// Digits of the magnitude rounded half away from zero to `decimals` places, as one integer text
/// ("1235" for 12.345 and two places); "0" when nothing is left.
std::string rounded_digits(double magnitude, int decimals) {
    ShortestDecimal decimal = shortest_decimal(magnitude);
    const int keep = decimal.exponent + decimals;  // digits that survive
    if (keep < 0) {
        return "0";
    }
    const auto kept = static_cast<std::size_t>(keep);
    if (kept >= decimal.digits.size()) {
        return decimal.digits + std::string(kept - decimal.digits.size(), '0');
    }
    const bool up = decimal.digits[kept] >= '5';
    std::string digits = "0" + decimal.digits.substr(0, kept);
    if (up) {
        std::size_t at = digits.size() - 1;
        while (digits[at] == '9') {
            digits[at--] = '0';
        }
        ++digits[at];
    }
    return digits;
}

struct Mask {
    std::size_t required = 0;  ///< required integer digits
    std::size_t decimals = 0;
    std::size_t required_decimals = 0;
    bool point = false;
};

Mask read_mask(std::string_view text) {
    Mask mask;
    for (const char c : text) {
        if (c == '.') {
            mask.point = true;
        } else if (mask.point) {
            ++mask.decimals;
            if (c == '0') {
                mask.required_decimals = mask.decimals;
            }
        } else if (c == '0' || mask.required > 0) {
            ++mask.required;
        }
    }
    return mask;
}

/// Round half to even, which is the default rounding of the processor.
template <typename Integer>
std::optional<Integer> to_integer(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        return std::nullopt;
    }
    return static_cast<Integer>(rounded);
}

}  // namespace

double numeric_prefix(std::string_view text) {
    return parse(text, false);
}

double zahl_wert(std::string_view text) {
    return parse(text, true);
}

std::string zahl_text(double value, std::string_view mask_text, std::string_view pad) {
    const Mask mask = read_mask(mask_text);
    const double magnitude =
        std::isnan(value) ? 0.0 : std::min(std::fabs(value), std::numeric_limits<double>::max());
    std::string digits = rounded_digits(magnitude, static_cast<int>(mask.decimals));
    if (digits.size() < mask.decimals) {
        digits.insert(0, mask.decimals - digits.size(), '0');
    }
    std::string integer = digits.substr(0, digits.size() - mask.decimals);
    std::string fraction = digits.substr(digits.size() - mask.decimals);
    integer.erase(0, integer.find_first_not_of('0'));
    if (integer.size() < mask.required) {
        integer.insert(0, mask.required - integer.size(), '0');
    }
    const bool zero = digits.find_first_not_of('0') == std::string::npos;
    while (fraction.size() > mask.required_decimals && fraction.back() == '0') {
        fraction.pop_back();
    }
    std::string text = std::signbit(value) && !zero ? "-" : "";
    text += integer;
    if (mask.point) {
        text += '.';
        text += fraction;
    }
    if (!pad.empty() && text.size() < mask_text.size()) {
        std::string padding;
        for (std::size_t i = text.size(); i < mask_text.size(); ++i) {
            padding += pad;
        }
        text.insert(0, padding);
    }
    return text;
}

std::optional<std::int16_t> to_int16(double value) {
    return to_integer<std::int16_t>(value);
}

std::optional<std::int32_t> to_int32(double value) {
    return to_integer<std::int32_t>(value);
}

std::int64_t whole_centimetres_by_digits(double metres) {
    const double magnitude = std::fabs(metres);
    if (!(magnitude < 9e15)) {
        return no_centimetres;
    }
    constexpr double millimetres_limit = 1e12;
    const double millimetres = std::nearbyint(magnitude * 1000.0);
    std::int64_t result = 0;
    if (millimetres < millimetres_limit && millimetres / 1000.0 == magnitude) {
        // The shortest decimal has three places.
        result = (static_cast<std::int64_t>(millimetres) + 5) / 10;
    } else {
        const std::string digits = rounded_digits(magnitude, 2);
        std::from_chars(digits.data(), digits.data() + digits.size(), result);
    }
    return metres < 0 ? -result : result;
}

}  // namespace veldra
