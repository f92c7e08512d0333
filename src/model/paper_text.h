#pragma once

#include <string_view>

#include "model/text_measurer.h"

namespace veldra {

/// Ratio between the line height of a font and the height of its digits, the size that the profile
/// names.
constexpr double line_height_per_digit = 1.68;

/// Width and height in metres of paper.
struct PaperExtent {
    double width = 0;
    double height = 0;
};

/// Where the size of texts on paper comes from: the printer, or an estimate while there is none.
class PaperTextSize {
 public:
    virtual ~PaperTextSize() = default;
    /// Chooses the font of the following texts. `digit_height` is in millimetres of paper; the
    /// size in points of `font` is that of the label on the screen.
    virtual void set_font(const FontSpec& font, float digit_height) = 0;
    [[nodiscard]] virtual PaperExtent text_size(std::string_view text) = 0;
};

/// The estimate: the line height follows from the digit height, the width from the proportions of
/// the label on the screen.
class EstimatedTextSize final : public PaperTextSize {
 public:
    explicit EstimatedTextSize(TextMeasurer& measurer) : measurer_(measurer) {}

    void set_font(const FontSpec& font, float digit_height) override {
        face_ = &measurer_.face_metrics(font);
        points_ = font.points;
        height_ = static_cast<double>(digit_height) * line_height_per_digit / 1000;
    }

    PaperExtent text_size(std::string_view text) override {
        const TextExtent label = measure_text(*face_, points_, text);
        return {label.width * height_ / label.height, height_};
    }

 private:
    TextMeasurer& measurer_;
    const FaceMetrics* face_ = nullptr;
    double points_ = 0;
    double height_ = 0;
};

}  // namespace veldra
