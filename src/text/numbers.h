#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace veldra {

/// The longest numeric prefix of a text as a 64-bit float: leading blanks, one sign, digits with
/// at most one point, an exponent e or E with digits. 0 if there is none. A magnitude beyond the
/// range gives the largest finite value.
[[nodiscard]] double numeric_prefix(std::string_view text);

/// As numeric_prefix, with the first comma of the text read as a point.
[[nodiscard]] double zahl_wert(std::string_view text);

/// A value by format mask ("####0.0"): "#" is an optional digit, "0" a required one, "." the
/// decimal point, which stands even without a digit behind it. Rounds half away from zero on the
/// shortest decimal that reads back to the value; a result of zero has no minus sign. Pads with
/// `pad` on the left, once for each character that the result is shorter than the mask.
[[nodiscard]] std::string zahl_text(double value, std::string_view mask, std::string_view pad);

/// Rounds half to even into a 16-bit or 32-bit integer; none if the value is out of range.
[[nodiscard]] std::optional<std::int16_t> to_int16(double value);
[[nodiscard]] std::optional<std::int32_t> to_int32(double value);

/// Instead of centimetres for a coordinate that is too large.
inline constexpr std::int64_t no_centimetres = std::numeric_limits<std::int64_t>::max();

/// The general case of whole_centimetres.
[[nodiscard]] std::int64_t whole_centimetres_by_digits(double metres);

/// A coordinate in whole centimetres, rounded as zahl_text does; no_centimetres beyond 9e15.
[[nodiscard]] inline std::int64_t whole_centimetres(double metres) {
    // Away from a tie the product decides; its error is far below the distance kept to the tie.
    constexpr double product_limit = 1e11;
    const double product = std::fabs(metres) * 100.0;
    if (product < product_limit) {
        const auto floor = static_cast<std::int64_t>(product);
        const double fraction = product - static_cast<double>(floor);
        if (std::fabs(fraction - 0.5) > 1e-3) {
            const std::int64_t rounded = floor + (fraction > 0.5 ? 1 : 0);
            return metres < 0 ? -rounded : rounded;
        }
    }
    return whole_centimetres_by_digits(metres);
}

}  // namespace veldra
