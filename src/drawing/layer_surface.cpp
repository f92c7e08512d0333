#include "drawing/layer_surface.h"

#include "text/fatal_error.h"

namespace veldra {

namespace {

TargetBox widened(const TargetBox& box, double slack) {
    return {box.xmin - slack, box.ymin - slack, box.xmax + slack, box.ymax + slack};
}

/// Gives `sides` those sides of the window that a cut end lies on.
void take_sides(const TargetBox& window, double x, double y, TargetBox& sides) {
    if (x == window.xmin) {
        sides.xmin = x;
    }
    if (x == window.xmax) {
        sides.xmax = x;
    }
    if (y == window.ymin) {
        sides.ymin = y;
    }
    if (y == window.ymax) {
        sides.ymax = y;
    }
}

TargetBox extent_of(const EllipseCurve& curve) {
    const double across = std::hypot(curve.a * curve.sine, curve.b * curve.cosine);
    const double up = std::hypot(curve.a * curve.cosine, curve.b * curve.sine);
    return {curve.x - across, curve.y - up, curve.x + across, curve.y + up};
}

/// A segment of the curve passes the clip.
bool meets(const TargetBox& window, const EllipseCurve& curve) {
    for (std::size_t branch = 0; branch < 2; ++branch) {
        EllipseCurve::Point pen = curve.at(branch, 0);
        for (std::size_t n = 1; n < EllipseAngles::count; ++n) {
            const EllipseCurve::Point next = curve.at(branch, n);
            if (ClipSegment(window, {pen.x, pen.y, next.x, next.y}).result != clip::outside) {
                return true;
            }
            pen = next;
        }
    }
    return false;
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
    const TargetBox& window = *frame_.window;
    const ClippedSegment clipped = ClipSegment(window, whole);
    if (clipped.result == clip::outside) {
        return;
    }
    const Segment& part = clipped.segment;
    if (clipped.result == clip::inside) {
        hand_over_line(part, nullptr);
        return;
    }
    LineCut cut;
    TargetBox sides = no_sides;
    if (clipped.result != clip::first_end_inside) {
        cut.begun = std::hypot(part.ax - whole.ax, part.ay - whole.ay);
        take_sides(window, part.ax, part.ay, sides);
    }
    if (clipped.result != clip::second_end_inside) {
        cut.rest = std::hypot(part.bx - whole.bx, part.by - whole.by);
        take_sides(window, part.bx, part.by, sides);
    }
    cut.window = local(sides);
    hand_over_line(part, &cut);
}

void LayerSurface::ellipse(const EllipseCurve& curve) {
    const double reach = std::abs(curve.a) + std::abs(curve.b);
    const bool plain = is_number(curve.x - frame_.origin_rechts) &&
                       is_number(curve.y - frame_.origin_hoch) && is_number(4 * reach);
    if (!plain) {
        traced_ellipse(curve);
    } else if (frame_.window) {
        clipped_ellipse(curve);
    } else {
        target_.Ellipse(curve);
    }
}

void LayerSurface::clipped_ellipse(const EllipseCurve& curve) {
    const TargetBox& window = *frame_.window;
    const TargetBox box = extent_of(curve);
    if (box.xmin > window.xmin && box.xmax < window.xmax && box.ymin > window.ymin &&
        box.ymax < window.ymax) {
        target_.Ellipse(curve);
        return;
    }
    if (!boxes_touch(box, window) || !meets(window, curve)) {
        return;
    }
    const TargetBox sides{box.xmin < window.xmin ? window.xmin : no_sides.xmin,
                          box.ymin < window.ymin ? window.ymin : no_sides.ymin,
                          box.xmax > window.xmax ? window.xmax : no_sides.xmax,
                          box.ymax > window.ymax ? window.ymax : no_sides.ymax};
    if (!target_.EllipsePart(curve, local(sides))) {
        traced_ellipse(curve);
    }
}

void LayerSurface::traced_ellipse(const EllipseCurve& curve) {
    trace_ellipse(curve,
                  [this](double x1, double y1, double x2, double y2) { line(x1, y1, x2, y2); });
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
