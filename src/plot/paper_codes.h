#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace veldra {

/// Paper code of a size that the user sets himself.
constexpr std::int16_t user_defined_paper_code = 256;

/// A paper by its code in the paper settings of printers; upright, millimetres.
struct PaperCode {
    std::int16_t code = 0;
    double width = 0;
    double height = 0;
};

/// All papers of known size: codes 1 to 41 and, for large formats, 268 to 276. Ascending codes.
[[nodiscard]] std::span<const PaperCode> known_papers();
/// The paper of a code; none for 256 and for codes that a driver has made up.
[[nodiscard]] std::optional<PaperCode> paper_of_code(std::int16_t code);
/// "A0" to "A4" (small letters too) as a paper; none for any other name.
[[nodiscard]] std::optional<PaperCode> paper_of_name(std::string_view name);

}  // namespace veldra
