#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "model/long_work.h"
#include "model/target.h"

namespace veldra {

/// Hands everything on to another target and lets long drawings be followed and given up.
class WatchedTarget final : public DrawingTarget {
 public:
    /// `work` may be null. What is drawn throws WorkCancelled when the work is to end. `share`
    /// tells how much of the drawing is done, 0 to 1; empty if that is not known.
    WatchedTarget(DrawingTarget& target, LongWork* work, std::function<double()> share = {})
        : target_(target), work_(work), share_(std::move(share)) {}

    void begin_row(std::int32_t row) override { target_.begin_row(row); }
    void DrawStyle(std::int16_t style) override { target_.DrawStyle(style); }
    void DrawWidth(std::int16_t width) override { target_.DrawWidth(width); }
    void ForeColor(std::int32_t colour) override { target_.ForeColor(colour); }
    void FillStyle(std::int16_t style) override { target_.FillStyle(style); }
    void FillColor(std::int32_t colour) override { target_.FillColor(colour); }
    void Line(float x1, float y1, float x2, float y2) override {
        count();
        target_.Line(x1, y1, x2, y2);
    }
    void LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) override {
        count();
        target_.LinePart(x1, y1, x2, y2, cut);
    }
    void MoveTo(float x, float y) override { target_.MoveTo(x, y); }
    void Circle(float x, float y, float radius) override {
        count();
        target_.Circle(x, y, radius);
    }
    void Ellipse(const EllipseCurve& curve) override {
        count();
        target_.Ellipse(curve);
    }
    bool EllipsePart(const EllipseCurve& curve, const TargetBox& window) override {
        count();
        return target_.EllipsePart(curve, window);
    }
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override {
        count();
        target_.TextRotated(text, escapement, align, font);
    }
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override {
        count();
        target_.LabelPlaced(array, index, label, font, colour);
    }
    [[nodiscard]] std::optional<TargetBox> visible_box() const override {
        return target_.visible_box();
    }

 private:
    void count() {
        constexpr std::uint32_t often = 1024;
        if (++operations_ % often == 0 && work_ != nullptr) {
            if (share_) {
                work_->tell_drawing(share_());
            }
            report_work(work_);
        }
    }

    DrawingTarget& target_;
    LongWork* work_;
    std::function<double()> share_;
    std::uint32_t operations_ = 0;
};

}  // namespace veldra
