#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "drawing/geometry.h"
#include "drawing/layer_frame.h"
#include "model/settings.h"
#include "model/target.h"
#include "model/view_index.h"

namespace veldra {

/// A target seen through a frame: takes ground coordinates, clips them to the frame's window,
/// subtracts the origin in 64 bits and narrows. What would be no number is not handed over.
class LayerSurface {
 public:
    LayerSurface(const LayerFrame& frame, DrawingTarget& target) : frame_(frame), target_(target) {}

    [[nodiscard]] const LayerFrame& frame() const { return frame_; }
    [[nodiscard]] DrawingTarget& target() const { return target_; }

    void style(std::int16_t draw_style) { target_.DrawStyle(draw_style); }

    /// Pen of a line layer: its width takes the frame's factor.
    void pen(std::int16_t width, std::int32_t colour) {
        target_.DrawWidth(scaled_width(width));
        target_.ForeColor(colour);
    }
    void pen(std::int16_t draw_style, std::int16_t width, std::int32_t colour) {
        style(draw_style);
        pen(width, colour);
    }

    void line(double x1, double y1, double x2, double y2) {
        if (frame_.window) {
            clipped_line({x1, y1, x2, y2});
        } else {
            hand_over_line({x1, y1, x2, y2}, nullptr);
        }
    }
    void line(const Segment& part) { line(part.ax, part.ay, part.bx, part.by); }

    void circle(double x, double y, float radius) {
        if (frame_.window && !CircleTouchesRect(*frame_.window, x, y, radius)) {
            return;
        }
        const double local_x = x - frame_.origin_rechts;
        const double local_y = y - frame_.origin_hoch;
        if (is_number(local_x) && is_number(local_y) && std::isfinite(radius)) {
            target_.Circle(static_cast<float>(local_x), static_cast<float>(local_y), radius);
        }
    }

    /// Pen and fill of the small dot that stands for a point without signature.
    void dot_pen(const Settings& settings) {
        pen(settings.punkt_breite, settings.punkt_farbe);
        target_.FillColor(settings.punkt_farbe);
        target_.FillStyle(0);
    }
    void dot(double x, double y) { circle(x, y, frame_.punkt_klein); }

    /// A curve traced by segments, as the target takes it.
    void ellipse(const EllipseCurve& curve);

    /// Makes a place on the ground the current position. Needed only where lines are clipped: there
    /// the last one may have ended elsewhere.
    void move_to(double x, double y) {
        const double local_x = x - frame_.origin_rechts;
        const double local_y = y - frame_.origin_hoch;
        if (is_number(local_x) && is_number(local_y)) {
            target_.MoveTo(static_cast<float>(local_x), static_cast<float>(local_y));
        }
    }

    /// Ground outside of which nothing shows, if the frame or the target knows it; a little larger
    /// than told, for what narrowing moves.
    [[nodiscard]] std::optional<TargetBox> visible_ground() const;

    /// A range that narrows to a 32-bit float.
    [[nodiscard]] static bool is_number(double value) {
        return std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
    }

 private:
    [[nodiscard]] std::int16_t scaled_width(std::int16_t width) const;

    void clipped_line(const Segment& whole);
    void clipped_ellipse(const EllipseCurve& curve);
    void traced_ellipse(const EllipseCurve& curve);
    [[nodiscard]] TargetBox local(const TargetBox& ground) const {
        return {ground.xmin - frame_.origin_rechts, ground.ymin - frame_.origin_hoch,
                ground.xmax - frame_.origin_rechts, ground.ymax - frame_.origin_hoch};
    }

    /// `cut` is null for a whole line.
    void hand_over_line(const Segment& part, const LineCut* cut) {
        const double ax = part.ax - frame_.origin_rechts;
        const double ay = part.ay - frame_.origin_hoch;
        const double bx = part.bx - frame_.origin_rechts;
        const double by = part.by - frame_.origin_hoch;
        if (is_number(ax) && is_number(ay) && is_number(bx) && is_number(by)) {
            if (cut != nullptr) {
                target_.LinePart(static_cast<float>(ax), static_cast<float>(ay),
                                 static_cast<float>(bx), static_cast<float>(by), *cut);
            } else {
                target_.Line(static_cast<float>(ax), static_cast<float>(ay), static_cast<float>(bx),
                             static_cast<float>(by));
            }
        }
    }

    const LayerFrame& frame_;
    DrawingTarget& target_;
};

/// Sets the pen for an observation or component by its test value. `code` above 0: solid, in width
/// and colour of the test class; 0: dotted, thin and black; below 0 the pen stays as it was.
void SetTestStyle(LayerSurface& surface, const Settings& settings, std::int16_t obj_test,
                  std::int16_t code, const TestValues& values);

/// Signature radius of a point class, metres; a class outside 0 to 3 is a range error.
[[nodiscard]] float signature_radius(const LayerFrame& frame, std::int16_t klasse);

}  // namespace veldra
