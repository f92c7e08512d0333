#pragma once

#include <array>
#include <string>
#include <string_view>

namespace veldra {

/// The offered scale denominators, largest first, with a blank between groups of three digits.
using ScaleList = std::array<std::string_view, 25>;

/// The list of the plot settings; the same for the whole run.
[[nodiscard]] const ScaleList& ApplyScaleList();

/// A typed scale denominator in its normal form.
struct GroupedNumber {
    std::string grouped;  ///< whole number with a blank between groups of three digits
    double value = 0;     ///< the number as typed, decimals included
};

/// Normalises a typed denominator. Blanks are dropped, the first comma reads as a point; what is
/// no number counts as 0. Four groups of digits are told apart, longer numbers keep their rest.
[[nodiscard]] GroupedNumber GroupDigits(std::string_view text);

/// Short form of a point number for labels: the last five digits without leading zeros, or
/// "12.50" for a nine or ten digit number that ends in 001250. A text that is no whole number is
/// only trimmed. Texts are Windows-1252.
[[nodiscard]] std::string ShortPointNumber(std::string_view text);

/// What to tell of a typed number in whose place another one stands, UTF-8: that it was none, or
/// that the one in force is off by more than a tenth of it. "" if there is nothing to tell. `shown`
/// is the number in force in its normal form.
[[nodiscard]] std::string taken_otherwise(std::string_view typed, std::string_view shown);

}  // namespace veldra
