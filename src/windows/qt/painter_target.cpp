#include "windows/qt/painter_target.h"

#include <QFontMetricsF>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "drawing/geometry.h"
#include "windows/qt/pixel_canvas.h"
#include "windows/qt/qt_font.h"
#include "windows/qt/raster_target.h"

namespace veldra {

namespace {

/// Devices calculate in 32-bit floats or whole numbers: nothing farther out is handed to them.
constexpr double far_out = 1e6;

QColor to_colour(std::int32_t colour) {
    return QColor(static_cast<QRgb>(to_pixel_colour(colour)));
}

bool is_finite(const QPointF& p) {
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

/// The area and as much again on each side, more than a margin or a pen takes. A painter counts the
/// dots of a line, and gives up on one with very many.
PixelBox around(const PainterArea& painted) {
    const QRectF& area = painted.area;
    const double x = area.width() + widest_pen * painted.units_per_pen_pixel;
    const double y = area.height() + widest_pen * painted.units_per_pen_pixel;
    return {area.left() - x, area.top() - y, area.right() + x, area.bottom() + y};
}

}  // namespace

PainterTarget::PainterTarget(QPainter& painter, const PainterArea& area, Labels labels)
    : painter_(painter), area_(area), labels_(labels), pen_width_(area.units_per_pen_pixel) {}

void PainterTarget::Scale(double left, double top, double right, double bottom) {
    left_ = left;
    top_ = top;
    units_x_ = area_.area.width() / (right - left);
    units_y_ = area_.area.height() / (bottom - top);
    // The widest pen reaches in from half its width beyond the edge.
    constexpr double reach_of_pen = widest_pen / 2.0;
    const double reach = reach_of_pen * area_.units_per_pen_pixel;
    const double reach_x = reach / std::abs(units_x_);
    const double reach_y = reach / std::abs(units_y_);
    visible_ = TargetBox{std::min(left, right) - reach_x, std::min(top, bottom) - reach_y,
                         std::max(left, right) + reach_x, std::max(top, bottom) + reach_y};
}

void PainterTarget::scale_millimetres() {
    Scale(0, 0, area_.area.width() / area_.units_per_millimetre,
          area_.area.height() / area_.units_per_millimetre);
}

QPointF PainterTarget::to_device(double x, double y) const {
    return {area_.area.left() + (x - left_) * units_x_, area_.area.top() + (y - top_) * units_y_};
}

TargetBox PainterTarget::to_device(const TargetBox& box) const {
    const QPointF a = to_device(box.xmin, box.ymin);
    const QPointF b = to_device(box.xmax, box.ymax);
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
            std::max(a.y(), b.y())};
}

void PainterTarget::DrawStyle(std::int16_t style) {
    if (dotted_ != (style == 2)) {
        dotted_ = style == 2;
        in_force_ = PenUse::none;
    }
}

void PainterTarget::DrawWidth(std::int16_t width) {
    const double wanted = std::clamp<double>(width, 1, widest_pen) * area_.units_per_pen_pixel;
    if (pen_width_ != wanted) {
        pen_width_ = wanted;
        in_force_ = PenUse::none;
    }
}

void PainterTarget::ForeColor(std::int32_t colour) {
    const QColor wanted = to_colour(colour);
    if (pen_ != wanted) {
        pen_ = wanted;
        in_force_ = PenUse::none;
    }
}

void PainterTarget::FillStyle(std::int16_t style) {
    filled_ = style == 0;
}

void PainterTarget::FillColor(std::int32_t colour) {
    fill_ = to_colour(colour);
}

/// `begun` units of the device are the length of the line ahead of what is drawn of it.
void PainterTarget::use_line_pen(double begun) {
    if (!dotted_) {
        begun = 0;
    }
    if (in_force_ != PenUse::lines || begun_ != begun) {
        QPen pen(pen_, pen_width_, Qt::SolidLine, dotted_ ? Qt::FlatCap : Qt::RoundCap,
                 Qt::RoundJoin);
        if (dotted_) {
            // Three logical pixels on and three off, as on the picture; a pen counts in its width.
            const double dot = 3 * area_.units_per_pen_pixel / pen_width_;
            pen.setDashPattern({dot, dot});
            pen.setDashOffset(std::fmod(begun / pen_width_, 2 * dot));
        }
        pen.setCosmetic(true);
        painter_.setPen(pen);
        in_force_ = PenUse::lines;
        begun_ = begun;
    }
}

void PainterTarget::use_label_font(const FontSpec& font, const QColor& colour) {
    if (!label_font_known_ || label_spec_ != font) {
        label_spec_ = font;
        label_font_ = text_font(font);
        label_ascent_ = QFontMetricsF(label_font_, painter_.device()).ascent();
        label_font_known_ = true;
        in_force_ = PenUse::none;
    }
    if (in_force_ != PenUse::text || painter_.pen().color() != colour) {
        painter_.setFont(label_font_);
        painter_.setPen(colour);
        in_force_ = PenUse::text;
    }
}

void PainterTarget::draw_line(const QPointF& from, const QPointF& to, double begun) {
    if (!is_finite(from) || !is_finite(to) || !std::isfinite(begun)) {
        return;
    }
    PixelPoint a{from.x(), from.y()};
    PixelPoint b{to.x(), to.y()};
    if (clip_to_box(around(area_), a, b)) {
        use_line_pen(begun + std::hypot(a.x - from.x(), a.y - from.y()));
        painter_.drawLine(QPointF(a.x, a.y), QPointF(b.x, b.y));
    }
}

void PainterTarget::begin_clip(const TargetBox& window) {
    const PixelBox most = around(area_);
    const auto across = [&](double x) { return std::clamp(x, most.xmin, most.xmax); };
    const auto down = [&](double y) { return std::clamp(y, most.ymin, most.ymax); };
    painter_.setClipRect(QRectF(QPointF(across(window.xmin), down(window.ymin)),
                                QPointF(across(window.xmax), down(window.ymax))));
}

void PainterTarget::Line(float x1, float y1, float x2, float y2) {
    const QPointF from = to_device(x1, y1);
    position_ = to_device(x2, y2);
    draw_line(from, position_, 0);
}

void PainterTarget::LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) {
    const QPointF from = to_device(x1, y1);
    const QPointF to = to_device(x2, y2);
    position_ = to;
    const double unit = std::abs(units_x_);
    const TargetBox window = to_device(cut.window);
    const CutLine line =
        lengthened({{from.x(), from.y(), to.x(), to.y()}, cut.begun * unit, cut.rest * unit},
                   window, pen_width_);
    begin_clip(window);
    draw_line({line.piece.ax, line.piece.ay}, {line.piece.bx, line.piece.by}, line.begun);
    end_clip();
}

void PainterTarget::Circle(float x, float y, float radius) {
    const QPointF centre = to_device(x, y);
    const double reach = static_cast<double>(radius) * units_x_;
    if (!is_finite(centre) || !(reach >= 0 && reach < far_out) || std::abs(centre.x()) > far_out ||
        std::abs(centre.y()) > far_out) {
        return;
    }
    use_line_pen(0);
    painter_.setBrush(filled_ ? QBrush(fill_) : QBrush(Qt::NoBrush));
    painter_.drawEllipse(centre, reach, reach);
}

QPolygonF PainterTarget::outline_of(const EllipseCurve& curve) const {
    // Branches 0 and 1 are the whole curve; the others would only draw it again.
    QPolygonF outline;
    const auto add = [&](std::size_t branch, std::size_t n) {
        const EllipseCurve::Point p = curve.at(branch, n);
        outline << to_device(static_cast<float>(p.x - curve.origin_x),
                             static_cast<float>(p.y - curve.origin_y));
    };
    for (std::size_t n = EllipseAngles::count; n-- > 0;) {
        add(0, n);
    }
    for (std::size_t n = 1; n < EllipseAngles::count; ++n) {
        add(1, n);
    }
    const QRectF box = outline.boundingRect();
    if (!is_finite(box.topLeft()) || !is_finite(box.bottomRight()) || box.left() < -far_out ||
        box.right() > far_out || box.top() < -far_out || box.bottom() > far_out) {
        return {};
    }
    return outline;
}

void PainterTarget::Ellipse(const EllipseCurve& curve) {
    const QPolygonF outline = outline_of(curve);
    if (outline.isEmpty()) {
        DrawingTarget::Ellipse(curve);
        return;
    }
    use_line_pen(0);
    painter_.drawPolyline(outline);
    position_ = outline.last();
}

bool PainterTarget::EllipsePart(const EllipseCurve& curve, const TargetBox& window) {
    if (outline_of(curve).isEmpty()) {
        return false;
    }
    begin_clip(to_device(window));
    Ellipse(curve);
    end_clip();
    return true;
}

void PainterTarget::TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                                const FontSpec& font) {
    constexpr std::int32_t right_aligned = 2;
    if (text.empty() || !(std::abs(position_.x()) < far_out && std::abs(position_.y()) < far_out)) {
        return;
    }
    const QFont face = text_font(font);
    const QFontMetricsF metrics(face, painter_.device());
    const QString shown = to_qstring(text);
    const double x = (align & right_aligned) != 0 ? -metrics.horizontalAdvance(shown) : 0.0;
    painter_.save();
    painter_.translate(position_);
    painter_.rotate(-escapement / 10.0);
    painter_.setFont(face);
    painter_.setPen(pen_);
    painter_.drawText(QPointF(x, -metrics.descent()), shown);
    painter_.restore();
}

void PainterTarget::LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                                const FontSpec& font, std::int32_t colour) {
    if (labels_ == Labels::print) {
        print_label(label, font, colour);
    }
}

void PainterTarget::print_label(const Label& label, const FontSpec& font, std::int32_t colour) {
    if (label.visible) {
        print_text(label.caption, to_device(label.left, label.top), font, colour);
    }
}

void PainterTarget::print_text(std::string_view text, const QPointF& corner, const FontSpec& font,
                               std::int32_t colour) {
    if (text.find_first_not_of(' ') == std::string_view::npos ||
        !(std::abs(corner.x()) < far_out && std::abs(corner.y()) < far_out)) {
        return;
    }
    use_label_font(font, to_colour(colour));
    painter_.drawText(QPointF(corner.x(), corner.y() + label_ascent_), to_qstring(text));
}

void PainterTarget::Print(std::string_view text, double x, double y, const FontSpec& font,
                          std::int32_t colour) {
    print_text(text, to_device(x, y), font, colour);
}

void PainterTarget::Polygon(std::span<const PagePoint> corners, std::int32_t colour) {
    QPolygonF outline;
    for (const PagePoint& corner : corners) {
        const QPointF place = to_device(corner.x, corner.y);
        if (!(std::abs(place.x()) < far_out && std::abs(place.y()) < far_out)) {
            return;
        }
        outline << place;
    }
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(to_colour(colour));
    painter_.drawPolygon(outline);
    in_force_ = PenUse::none;
}

}  // namespace veldra
