#include "drawing/geometry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace veldra {

namespace {

constexpr double full_turn = 6.28318530717959;
constexpr double three_full_turns = 18.84955592153877;
constexpr double smallest_step = 0.001;

/// Where a coordinate is clipped: the end moves to the bound, its other coordinate follows.
void clip_coordinate(double bound, double& along, double& across, double other_along,
                     double other_across) {
    if (std::abs(other_along - along) >= smallest_step) {
        across = (bound - along) * (other_across - across) / (other_along - along) + across;
    }
    along = bound;
}

/// Clips one coordinate of an end to [min, max]; true if the end moved.
bool clip_to_range(double min, double max, double& along, double& across, double other_along,
                   double other_across) {
    bool moved = false;
    if (along < min) {
        clip_coordinate(min, along, across, other_along, other_across);
        moved = true;
    }
    if (along > max) {
        clip_coordinate(max, along, across, other_along, other_across);
        moved = true;
    }
    return moved;
}

bool outside_range(double min, double max, double a, double b) {
    return (a <= min && b <= min) || (a >= max && b >= max);
}

enum class EndClip { outside, stayed, moved };

/// Clips the end (ax, ay) of a segment towards (bx, by).
EndClip clip_end(const TargetBox& box, double& ax, double& ay, double bx, double by) {
    if (outside_range(box.xmin, box.xmax, ax, bx)) {
        return EndClip::outside;
    }
    const bool moved_x = clip_to_range(box.xmin, box.xmax, ax, ay, bx, by);
    if (outside_range(box.ymin, box.ymax, ay, by)) {
        return EndClip::outside;
    }
    const bool moved_y = clip_to_range(box.ymin, box.ymax, ay, ax, by, bx);
    return moved_x || moved_y ? EndClip::moved : EndClip::stayed;
}

/// Length of the way from a place inside of a box, in the unit direction (ux, uy), to the first of
/// its sides; 0 if there is none on the way.
double way_out(const TargetBox& box, double x, double y, double ux, double uy) {
    const auto to_side = [](double min, double max, double from, double step) {
        if (step == 0) {
            return std::numeric_limits<double>::infinity();
        }
        return ((step < 0 ? min : max) - from) / step;
    };
    const double way =
        std::min(to_side(box.xmin, box.xmax, x, ux), to_side(box.ymin, box.ymax, y, uy));
    return std::isfinite(way) ? std::max(way, 0.0) : 0;
}

void begin_outside_signature(Segment& part, double x, double y, const LineVector& vector,
                             float radius) {
    const auto r = static_cast<double>(radius);
    part.ax = x + r * vector.dx / vector.length;
    part.ay = y + r * vector.dy / vector.length;
    if (static_cast<float>(vector.length) < radius) {
        part.bx = part.ax;
        part.by = part.ay;
    }
}

void end_outside_signature(Segment& part, double x, double y, const LineVector& vector,
                           float radius) {
    const auto r = static_cast<double>(radius);
    part.bx = x - r * vector.dx / vector.length;
    part.by = y - r * vector.dy / vector.length;
    if (static_cast<float>(vector.length) < radius) {
        part.ax = part.bx;
        part.ay = part.by;
    }
}

TestPen ev_pen(const Settings& settings, double ev) {
    if (ev > 100) {
        return {settings.stnddrw, settings.stndrgb};
    }
    const std::size_t test_class = ev > settings.stevwert[1] ? 1 : 2;
    return {settings.stevdrw[test_class], settings.stevrgb[test_class]};
}

/// Class of a value by rising limits 1, 2, ...; a limit belongs to the class below.
template <std::size_t Size>
std::size_t class_below(const std::array<double, Size>& limits, double value) {
    std::size_t test_class = 1;
    while (test_class < Size && !(value <= limits[test_class])) {
        ++test_class;
    }
    return test_class;
}

}  // namespace

ClippedSegment ClipSegment(const TargetBox& box, const Segment& segment) {
    Segment clipped = segment;
    const EndClip first = clip_end(box, clipped.ax, clipped.ay, clipped.bx, clipped.by);
    if (first == EndClip::outside) {
        return {clipped, 0};
    }
    const EndClip second = clip_end(box, clipped.bx, clipped.by, clipped.ax, clipped.ay);
    if (second == EndClip::outside) {
        return {clipped, 0};
    }
    const int result = 1 + (first == EndClip::stayed ? 1 : 0) + (second == EndClip::stayed ? 2 : 0);
    return {clipped, static_cast<std::int16_t>(result)};
}

CutLine lengthened(const CutLine& line, const TargetBox& window, double pen_width) {
    const Segment& piece = line.piece;
    const double dx = piece.bx - piece.ax;
    const double dy = piece.by - piece.ay;
    const double length = std::hypot(dx, dy);
    if (!(length > 0)) {
        return line;
    }
    const double ux = dx / length;
    const double uy = dy / length;
    const TargetBox outer{window.xmin - pen_width, window.ymin - pen_width, window.xmax + pen_width,
                          window.ymax + pen_width};
    const double ahead = std::min(line.begun, way_out(outer, piece.ax, piece.ay, -ux, -uy));
    const double behind = std::min(line.rest, way_out(outer, piece.bx, piece.by, ux, uy));
    return {{piece.ax - ahead * ux, piece.ay - ahead * uy, piece.bx + behind * ux,
             piece.by + behind * uy},
            line.begun - ahead,
            line.rest - behind};
}

bool CircleTouchesRect(const TargetBox& box, double x, double y, float radius) {
    const auto r = static_cast<double>(radius);
    return x + r >= box.xmin && x - r <= box.xmax && y + r >= box.ymin && y - r <= box.ymax;
}

Segment ObservationSegment(const LineCoordinates& ends, const LineVector& vector, std::int32_t code,
                           const SegmentOptions& options) {
    const double divisor = options.tested ? 3 : 2;
    const double dx = vector.dx;
    const double dy = vector.dy;
    Segment part{ends.x1, ends.y1, ends.x2, ends.y2};
    switch (code) {
        case piece::first:
        case piece::height_first:
            part.bx = ends.x1 + dx / divisor;
            part.by = ends.y1 + dy / divisor;
            break;
        case piece::second:
        case piece::height_second:
            part.ax = ends.x2 - dx / divisor;
            part.ay = ends.y2 - dy / divisor;
            if (options.signatures) {
                end_outside_signature(part, ends.x2, ends.y2, vector, options.radius2);
            }
            return part;
        case piece::middle:
        case piece::height_middle:
            return {ends.x1 + dx / 3, ends.y1 + dy / 3, ends.x2 - dx / 3, ends.y2 - dy / 3};
        case piece::stub_near:
            part.bx = ends.x1 + dx * options.length / vector.length / 2;
            part.by = ends.y1 + dy * options.length / vector.length / 2;
            break;
        case piece::stub_far:
            part.bx = ends.x1 + dx * options.length / vector.length;
            part.by = ends.y1 + dy * options.length / vector.length;
            part.ax = part.bx - (part.bx - ends.x1) / 2;
            part.ay = part.by - (part.by - ends.y1) / 2;
            return part;
        default:
            return part;
    }
    if (options.signatures) {
        begin_outside_signature(part, ends.x1, ends.y1, vector, options.radius1);
    }
    return part;
}

TestPen test_pen(const Settings& settings, std::int16_t obj_test, const TestValues& values) {
    if (obj_test == 1) {
        return ev_pen(settings, values.ev);
    }
    if (obj_test == 2) {
        if (values.nv < 0) {
            return {settings.stnddrw, settings.stndrgb};
        }
        const std::size_t test_class = class_below(settings.stnvwert, values.nv);
        return {settings.stnvdrw[test_class], settings.stnvrgb[test_class]};
    }
    if (values.ep < 0) {
        return {settings.stnddrw, settings.stndrgb};
    }
    const std::size_t test_class = class_below(settings.stepwert, values.ep);
    return {settings.stepdrw[test_class], settings.steprgb[test_class]};
}

double SlopeAngle(double numerator, double denominator) {
    constexpr double nothing = 1e-10;
    const bool no_numerator = std::abs(numerator) < nothing;
    const bool no_denominator = std::abs(denominator) < nothing;
    if (!no_numerator && !no_denominator) {
        const double angle = std::atan(numerator / denominator);
        return angle < 0 ? angle + full_turn : angle;
    }
    if (no_numerator) {
        return denominator < 0 ? full_turn / 2 : 0;
    }
    return numerator >= 0 ? full_turn / 4 : three_full_turns / 4;
}

std::int32_t GreyOf(std::int32_t colour) {
    const int red = colour & 255;
    const int green = (colour / 256) & 255;
    const int blue = (colour / 65536) & 255;
    // Thirds are never halfway between two whole numbers, so adding a third rounds.
    const int mean = (red + green + blue + 1) / 3;
    return mean * 65793;
}

}  // namespace veldra
