#include "drawing/layer_surface.h"

#include "shell/fatal_error.h"

namespace veldra {

namespace {

TargetBox widened(const TargetBox& box, double slack) {
    return {box.xmin - slack, box.ymin - slack, box.xmax + slack, box.ymax + slack};
}

}  // namespace

std::int16_t LayerSurface::scaled_width(std::int16_t width) const {
    const int scaled = width * frame_.width_factor;
    if (scaled > std::numeric_limits<std::int16_t>::max() ||
        scaled < std::numeric_limits<std::int16_t>::min()) {
        throw runtime_error_at(6, {"", 0, "DrawWidth"});
    }
    return static_cast<std::int16_t>(scaled);
}

void LayerSurface::clipped_line(const Segment& whole) {
    const ClippedSegment clipped = ClipSegment(*frame_.window, whole);
    if (clipped.result == 0) {
        return;
    }
    const Segment& part = clipped.segment;
    const bool first_end_stayed = ((clipped.result - 1) & 1) != 0;
    const double begun = first_end_stayed ? 0 : std::hypot(part.ax - whole.ax, part.ay - whole.ay);
    hand_over_line(part.ax, part.ay, part.bx, part.by, begun);
}

bool LayerSurface::is_within_window(double x, double y, double reach) const {
    if (!frame_.window) {
        return true;
    }
    const TargetBox& window = *frame_.window;
    return x - reach > window.xmin && x + reach < window.xmax && y - reach > window.ymin &&
           y + reach < window.ymax;
}

void LayerSurface::ellipse(const EllipseCurve& curve) {
    const double reach = std::abs(curve.a) + std::abs(curve.b);
    const bool plain = is_number(curve.x - frame_.origin_rechts) &&
                       is_number(curve.y - frame_.origin_hoch) && is_number(4 * reach);
    if (plain && is_within_window(curve.x, curve.y, reach)) {
        target_.Ellipse(curve);
    } else {
        trace_ellipse(curve,
                      [this](double x1, double y1, double x2, double y2) { line(x1, y1, x2, y2); });
    }
}

std::optional<TargetBox> LayerSurface::visible_ground() const {
    if (frame_.window) {
        const TargetBox& window = *frame_.window;
        return widened(window, 1e-6 * (window.xmax - window.xmin + window.ymax - window.ymin));
    }
    const std::optional<TargetBox> box = target_.visible_box();
    if (!box) {
        return std::nullopt;
    }
    const double slack = 1e-6 * (std::abs(box->xmin) + std::abs(box->xmax) + std::abs(box->ymin) +
                                 std::abs(box->ymax));
    const TargetBox local = widened(*box, slack);
    return TargetBox{local.xmin + frame_.origin_rechts, local.ymin + frame_.origin_hoch,
                     local.xmax + frame_.origin_rechts, local.ymax + frame_.origin_hoch};
}

void SetTestStyle(LayerSurface& surface, const Settings& settings, std::int16_t obj_test,
                  std::int16_t code, const TestValues& values) {
    if (code > 0) {
        surface.style(0);
        if (obj_test >= 1 && obj_test <= 3) {
            const TestPen pen = test_pen(settings, obj_test, values);
            surface.pen(pen.width, pen.colour);
        }
    } else if (code == 0) {
        surface.pen(2, 1, rgb(0, 0, 0));
    }
}

float signature_radius(const LayerFrame& frame, std::int16_t klasse) {
    if (klasse < 0 || klasse > 3) {
        throw runtime_error_at(9, {"", 0, "punsigscr"});
    }
    return frame.punsig[static_cast<std::size_t>(klasse)];
}

}  // namespace veldra
