#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldra {

/// A font as the profile file describes it. The face name is Windows-1252; styles are 0 or -1.
struct FontSpec {
    std::string face = "Arial";
    double points = 10;  ///< size in points of 1/72 inch
    std::int16_t bold = 0;
    std::int16_t italic = 0;
    std::int16_t underline = 0;

    bool operator==(const FontSpec&) const = default;
};

/// Widths of a face in fractions of the font size, unhinted, one for each byte of Windows-1252.
/// Texts are set without kerning, so a text's width is the sum over its bytes.
struct FaceMetrics {
    std::array<float, 256> advance{};
    float ascent = 0;
    float descent = 0;
};

/// Width and height of a text, in twips (1/1440 inch).
struct TextExtent {
    double width = 0;
    double height = 0;
};

/// Where text sizes come from; the platform looks the faces up.
class TextMeasurer {
 public:
    virtual ~TextMeasurer() = default;
    /// Metrics of the font's face and style; the reference stays valid as long as the measurer.
    virtual const FaceMetrics& face_metrics(const FontSpec& font) = 0;
};

/// Size of a text of one or more lines (CR LF between them) in a label that fits its text.
[[nodiscard]] TextExtent measure_text(const FaceMetrics& face, double points,
                                      std::string_view text);

}  // namespace veldra
