#pragma once

#include <cmath>
#include <cstdint>

#include "model/settings.h"
#include "model/tables.h"
#include "model/target.h"

namespace veldra {

/// A straight piece from a to b, metres.
struct Segment {
    double ax = 0;
    double ay = 0;
    double bx = 0;
    double by = 0;
};

struct ClippedSegment {
    Segment segment;
    /// 0: wholly outside; else 1, plus 1 if the first end stayed, plus 2 if the second end stayed.
    std::int16_t result = 0;
};

/// Clips a segment to a rectangle. A segment on an edge is outside. An end that is less than 0.001
/// away from the other in the clipped axis is moved to the edge without interpolation.
[[nodiscard]] ClippedSegment ClipSegment(const TargetBox& box, const Segment& segment);

/// Results of ClipSegment: which ends lie in the box.
namespace clip {
constexpr std::int16_t outside = 0;
constexpr std::int16_t first_end_inside = 2;
constexpr std::int16_t second_end_inside = 3;
constexpr std::int16_t inside = 4;
}  // namespace clip

/// Hands over what of a segment lies outside of a box: nothing, one piece or two.
template <typename Take>
void visit_outside(const TargetBox& box, const Segment& segment, Take&& take) {
    const ClippedSegment beneath = ClipSegment(box, segment);
    const Segment& covered = beneath.segment;
    if (beneath.result == clip::outside) {
        take(segment);
        return;
    }
    const bool all = beneath.result == clip::inside;
    if (!all && beneath.result != clip::first_end_inside) {
        take(Segment{segment.ax, segment.ay, covered.ax, covered.ay});
    }
    if (!all && beneath.result != clip::second_end_inside) {
        take(Segment{covered.bx, covered.by, segment.bx, segment.by});
    }
}

/// A line of which windows have cut off the ends, in the units of a device.
struct CutLine {
    Segment piece;
    double begun = 0;  ///< length of the whole line ahead of the piece, not drawn
    double rest = 0;   ///< behind it
};

/// Gives back to each cut end of a line what a pen of this width needs to cover the window up to
/// its sides: the line goes on, as far as it does, until it is a pen's width outside. What is drawn
/// of it must be clipped to the window. A line of no length has no direction and stays.
[[nodiscard]] CutLine lengthened(const CutLine& line, const TargetBox& window, double pen_width);

/// The square around a circle and a rectangle have a point in common, edges included.
[[nodiscard]] bool CircleTouchesRect(const TargetBox& box, double x, double y, float radius);

/// Two rectangles have a point in common, edges included.
[[nodiscard]] inline bool boxes_touch(const TargetBox& a, const TargetBox& b) {
    return a.xmin <= b.xmax && b.xmin <= a.xmax && a.ymin <= b.ymax && b.ymin <= a.ymax;
}

/// Two rectangles have more in common than their edges.
[[nodiscard]] inline bool overlap(const TargetBox& a, const TargetBox& b) {
    return a.xmin < b.xmax && b.xmin < a.xmax && a.ymin < b.ymax && b.ymin < a.ymax;
}

/// Direction and length of an observation line.
struct LineVector {
    double dx = 0;
    double dy = 0;
    double length = 0;
};

[[nodiscard]] inline LineVector line_vector(const LineCoordinates& ends) {
    const double dx = ends.x2 - ends.x1;
    const double dy = ends.y2 - ends.y1;
    return {dx, dy, std::sqrt(dx * dx + dy * dy)};
}

/// Pieces of an observation line. The second set serves heights and GPS vectors.
namespace piece {
constexpr std::int32_t first = 1;
constexpr std::int32_t second = 2;
constexpr std::int32_t middle = 3;
constexpr std::int32_t stub_near = 8;
constexpr std::int32_t stub_far = 9;
constexpr std::int32_t height_first = 11;
constexpr std::int32_t height_second = 12;
constexpr std::int32_t height_middle = 13;
}  // namespace piece

/// What ObservationSegment needs beside the line.
struct SegmentOptions {
    float radius1 = 0;  ///< signature radius at the first end, metres
    float radius2 = 0;
    double length = 0;        ///< length of an orientation stub, metres
    bool tested = false;      ///< pieces are thirds, not halves (`obj_test_beob`)
    bool signatures = false;  ///< pieces begin outside of the signatures (`obj_pusi` 1)
};

/// The piece `code` of an observation line. A line of no length gives no numbers.
[[nodiscard]] Segment ObservationSegment(const LineCoordinates& ends, const LineVector& vector,
                                         std::int32_t code, const SegmentOptions& options);

/// Test values of an observation or a component.
struct TestValues {
    double ev = 1000.0;
    double nv = -99.0;
    double ep = -99.0;
};

/// Width and colour of a test class.
struct TestPen {
    std::int16_t width = 1;
    std::int32_t colour = 0;
};

/// Pen of the class that a test value falls into; `obj_test` 1 EV, 2 NV, 3 EP or EH.
[[nodiscard]] TestPen test_pen(const Settings& settings, std::int16_t obj_test,
                               const TestValues& values);

/// Angle of the slope numerator/denominator in radians, 0 to 2 pi: one angle for a direction and
/// its reverse, so callers give a denominator that is not negative.
[[nodiscard]] double SlopeAngle(double numerator, double denominator);

/// The grey of a colour's mean brightness.
[[nodiscard]] std::int32_t GreyOf(std::int32_t colour);

}  // namespace veldra
