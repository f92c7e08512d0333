#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "model/ellipse_curve.h"
#include "model/label.h"
#include "model/text_measurer.h"

namespace veldra {

/// A rectangle in metres of ground relative to the origin of the target.
struct TargetBox {
    double xmin = 0;
    double ymin = 0;
    double xmax = 0;
    double ymax = 0;
};

/// A box without sides.
constexpr TargetBox no_sides{
    -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};

/// What a clip window has cut off a line.
struct LineCut {
    double begun = 0;  ///< length of the whole line ahead of the piece that is drawn, metres
    double rest = 0;   ///< behind it
    /// The window, as the coordinates are. It has only the sides at which an end was cut.
    TargetBox window = no_sides;
};

/// Wider pens are drawn in this width, logical pixels: what a pen may reach into a picture from
/// outside stays small.
constexpr std::int16_t widest_pen = 128;

/// What every layer draws on: the picture, a recording, a page. Coordinates are metres of ground
/// in a local frame with its origin at the lower left corner of the view (or sheet); x grows to
/// the east, y to the north. Callers subtract the origin in 64 bits and then narrow.
class DrawingTarget {
 public:
    virtual ~DrawingTarget() = default;

    /// What follows belongs to this row of the table that the layer draws.
    virtual void begin_row(std::int32_t /*row*/) {}

    virtual void DrawStyle(std::int16_t style) = 0;   ///< 0 solid, 2 dotted
    virtual void DrawWidth(std::int16_t width) = 0;   ///< pen width in pixels
    virtual void ForeColor(std::int32_t colour) = 0;  ///< pen and text colour, 0x00BBGGRR
    virtual void FillStyle(std::int16_t style) = 0;   ///< 0 solid
    virtual void FillColor(std::int32_t colour) = 0;  ///< fill of following circles
    /// A segment in the pen; the current position is (x2, y2) afterwards.
    virtual void Line(float x1, float y1, float x2, float y2) = 0;
    /// A piece of a longer segment whose ends lie outside of a clip window. A target that can do so
    /// ends the piece flush with the window, whatever the width of the pen, and lets the dots run
    /// on from the start of the whole segment.
    virtual void LinePart(float x1, float y1, float x2, float y2, const LineCut& /*cut*/) {
        Line(x1, y1, x2, y2);
    }
    /// Makes (x, y) the current position. A target that can do so without a mark does.
    virtual void MoveTo(float x, float y) { Line(x, y, x, y); }
    /// A full circle, outlined in the pen and filled.
    virtual void Circle(float x, float y, float radius) = 0;
    /// The 200 segments of an error ellipse in the pen. A target that draws them otherwise must
    /// give the same picture; all points are finite and narrow to 32-bit floats.
    virtual void Ellipse(const EllipseCurve& curve) {
        trace_ellipse(curve, [&](double x1, double y1, double x2, double y2) {
            Line(static_cast<float>(x1 - curve.origin_x), static_cast<float>(y1 - curve.origin_y),
                 static_cast<float>(x2 - curve.origin_x), static_cast<float>(y2 - curve.origin_y));
        });
    }
    /// What of an error ellipse lies in a window, flush with it. The window is as the coordinates
    /// of `Line` are and has only the sides at which the curve is cut. False if the target leaves
    /// it to the caller to hand over the segments.
    virtual bool EllipsePart(const EllipseCurve& /*curve*/, const TargetBox& /*window*/) {
        return false;
    }
    /// A text turned by `escapement` tenths of a degree counter-clockwise, aligned to the current
    /// position with its bottom, and with its right (`align` 11) or left (`align` 9) end.
    virtual void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                             const FontSpec& font) = 0;
    /// A label that has just been placed. The picture paints its labels from their table, over
    /// everything; a page prints them here.
    virtual void LabelPlaced(LabelArray array, std::int32_t index, const Label& label,
                             const FontSpec& font, std::int32_t colour) = 0;

    /// The area outside which nothing of this target shows, pens included; none if everything
    /// must be handed over. Layers leave out what lies wholly outside.
    [[nodiscard]] virtual std::optional<TargetBox> visible_box() const { return std::nullopt; }
};

}  // namespace veldra
