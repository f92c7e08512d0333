#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "model/target.h"

namespace veldra {

/// Operations of a target as plain values, named as the operations. Texts are Windows-1252.
namespace operation {

struct DrawStyle {
    std::int16_t style = 0;
    bool operator==(const DrawStyle&) const = default;
};
struct DrawWidth {
    std::int16_t width = 0;
    bool operator==(const DrawWidth&) const = default;
};
struct ForeColor {
    std::int32_t colour = 0;
    bool operator==(const ForeColor&) const = default;
};
struct FillStyle {
    std::int16_t style = 0;
    bool operator==(const FillStyle&) const = default;
};
struct FillColor {
    std::int32_t colour = 0;
    bool operator==(const FillColor&) const = default;
};
struct Line {
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    bool operator==(const Line&) const = default;
};
struct Circle {
    float x = 0;
    float y = 0;
    float radius = 0;
    bool operator==(const Circle&) const = default;
};
struct TextRotated {
    std::string text;
    std::int32_t escapement = 0;
    std::int32_t align = 0;
    FontSpec font;
    bool operator==(const TextRotated&) const = default;
};
struct LabelPlaced {
    LabelArray array = LabelArray::lbl_pubez;
    std::int32_t index = 0;
    std::string caption;
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    std::int32_t colour = 0;
    FontSpec font;
    bool operator==(const LabelPlaced&) const = default;
};

}  // namespace operation

using Operation = std::variant<operation::DrawStyle, operation::DrawWidth, operation::ForeColor,
                               operation::FillStyle, operation::FillColor, operation::Line,
                               operation::Circle, operation::TextRotated, operation::LabelPlaced>;

/// Keeps every operation, one by one and in order.
class RecordingTarget final : public DrawingTarget {
 public:
    void DrawStyle(std::int16_t style) override;
    void DrawWidth(std::int16_t width) override;
    void ForeColor(std::int32_t colour) override;
    void FillStyle(std::int16_t style) override;
    void FillColor(std::int32_t colour) override;
    void Line(float x1, float y1, float x2, float y2) override;
    void Circle(float x, float y, float radius) override;
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override;
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override;
    [[nodiscard]] std::optional<TargetBox> visible_box() const override { return visible_box_; }

    /// Pretends that only this area shows.
    void set_visible_box(const std::optional<TargetBox>& box) { visible_box_ = box; }
    [[nodiscard]] const std::vector<Operation>& operations() const { return operations_; }

 private:
    std::vector<Operation> operations_;
    std::optional<TargetBox> visible_box_;
};

}  // namespace veldra
