#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "pdf/document.h"

namespace veldra {

/// How outlines are drawn.
struct CirclePen {
    double width = 0;  ///< 1/1000 mm
    double dot = 0;    ///< length of dots and of the gaps between them, 1/1000 mm; 0: solid
    std::int32_t colour = 0;

    bool operator==(const CirclePen&) const = default;
};

/// A circle without its place.
struct CircleLook {
    std::int32_t radius = 0;  ///< 1/1000 mm
    CirclePen pen;
    bool filled = true;
    std::int32_t fill = 0;

    bool operator==(const CircleLook&) const = default;
};

/// The circles of a document: each look becomes one form, which costs a few bytes wherever it is
/// shown.
class CircleForms {
 public:
    /// Number of the form of this look.
    std::size_t number_of(PdfDocument& document, const CircleLook& look);

 private:
    using Key = std::tuple<std::int32_t, double, double, std::int32_t, bool, std::int32_t>;
    std::map<Key, std::size_t> numbers_;
    std::optional<CircleLook> last_;
    std::size_t last_number_ = 0;
};

/// "r g b " or "g " in shares of 1 of a colour 0x00BBGGRR, and whether it is a grey.
struct WrittenColour {
    std::string numbers;
    bool grey = false;
};
[[nodiscard]] WrittenColour written_colour(std::int32_t colour);

}  // namespace veldra
