#pragma once

#include <cstdint>
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

/// A plain decimal (a sign "-", digits, one point, 15 digits at most) at the beginning of a text up
/// to its end or a blank, which is what most tokens are: gives the value as zahl_wert would, and
/// the length of the token; 0 if the text begins otherwise.
[[nodiscard]] std::size_t read_plain_decimal(std::string_view text, double& value);

/// A value by format mask ("####0.0"): "#" is an optional digit, "0" a required one, "." the
/// decimal point, which stands even without a digit behind it. Rounds half away from zero on the
/// shortest decimal that reads back to the value; a result of zero has no minus sign. Pads with
/// `pad` on the left, once for each character that the result is shorter than the mask.
[[nodiscard]] std::string zahl_text(double value, std::string_view mask, std::string_view pad);

/// Rounds half to even into a 16-bit or 32-bit integer; none if the value is out of range.
[[nodiscard]] std::optional<std::int16_t> to_int16(double value);
[[nodiscard]] std::optional<std::int32_t> to_int32(double value);

/// A coordinate in whole centimetres, rounded as zahl_text does; none beyond 9e15.
[[nodiscard]] std::optional<std::int64_t> whole_centimetres(double metres);

}  // namespace veldra
