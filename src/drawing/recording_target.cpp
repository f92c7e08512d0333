#include "drawing/recording_target.h"

namespace veldra {

void RecordingTarget::DrawStyle(std::int16_t style) {
    operations_.emplace_back(operation::DrawStyle{style});
}

void RecordingTarget::DrawWidth(std::int16_t width) {
    operations_.emplace_back(operation::DrawWidth{width});
}

void RecordingTarget::ForeColor(std::int32_t colour) {
    operations_.emplace_back(operation::ForeColor{colour});
}

void RecordingTarget::FillStyle(std::int16_t style) {
    operations_.emplace_back(operation::FillStyle{style});
}

void RecordingTarget::FillColor(std::int32_t colour) {
    operations_.emplace_back(operation::FillColor{colour});
}

void RecordingTarget::Line(float x1, float y1, float x2, float y2) {
    operations_.emplace_back(operation::Line{x1, y1, x2, y2});
}

void RecordingTarget::Circle(float x, float y, float radius) {
    operations_.emplace_back(operation::Circle{x, y, radius});
}

void RecordingTarget::TextRotated(std::string_view text, std::int32_t escapement,
                                  std::int32_t align, const FontSpec& font) {
    operations_.emplace_back(operation::TextRotated{std::string(text), escapement, align, font});
}

void RecordingTarget::LabelPlaced(LabelArray array, std::int32_t index, const Label& label,
                                  const FontSpec& font, std::int32_t colour) {
    operations_.emplace_back(operation::LabelPlaced{array, index, label.caption, label.left,
                                                    label.top, label.width, label.height, colour,
                                                    font});
}

}  // namespace veldra
