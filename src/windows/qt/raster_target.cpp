#include "windows/qt/raster_target.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

/// Circles up to this radius in pixels come from a cache.
constexpr double largest_sprite = 24;
/// A dotted line is this many logical pixels on and as many off.
constexpr double dot_length = 3;
constexpr double metres_per_inch = 0.0254;

/// Logical pixels as whole device pixels, one at least.
int device_pixels(double logical, double ratio) {
    return std::max(1, static_cast<int>(std::lround(logical * ratio)));
}

}  // namespace

PictureMapping picture_mapping(const QImage& image, double rw_span, double hw_span,
                               double device_pixel_ratio) {
    return {image.width() / rw_span, image.height() / hw_span, static_cast<double>(image.height()),
            device_pixel_ratio};
}

void set_logical_resolution(QImage& image, double device_pixel_ratio) {
    const int dots = static_cast<int>(std::lround(96.0 * device_pixel_ratio / metres_per_inch));
    image.setDotsPerMeterX(dots);
    image.setDotsPerMeterY(dots);
}

PixelCanvas canvas_of(QImage& image) {
    return {reinterpret_cast<std::uint32_t*>(image.bits()), image.bytesPerLine() / 4, image.width(),
            image.height()};
}

RasterTarget::RasterTarget(QImage& image, const PictureMapping& mapping)
    : image_(image),
      mapping_(mapping),
      canvas_(canvas_of(image)),
      pen_width_(device_pixels(1, mapping.device_pixel_ratio)),
      dot_(device_pixels(dot_length, mapping.device_pixel_ratio)) {}

RasterTarget::~RasterTarget() = default;

void RasterTarget::DrawStyle(std::int16_t style) {
    dotted_ = style == 2;
}

void RasterTarget::DrawWidth(std::int16_t width) {
    pen_width_ = device_pixels(std::min(width, widest_pen), mapping_.device_pixel_ratio);
}

void RasterTarget::ForeColor(std::int32_t colour) {
    pen_ = to_pixel_colour(colour);
}

void RasterTarget::FillStyle(std::int16_t style) {
    filled_ = style == 0;
}

void RasterTarget::FillColor(std::int32_t colour) {
    fill_ = to_pixel_colour(colour);
}

void RasterTarget::Line(float x1, float y1, float x2, float y2) {
    const PixelPoint a = mapping_.to_pixel(x1, y1);
    const PixelPoint b = mapping_.to_pixel(x2, y2);
    position_ = b;
    if (std::isfinite(a.x + a.y) && std::isfinite(b.x + b.y)) {
        stroke(a, b);
    }
}

void RasterTarget::stroke(const PixelPoint& a, const PixelPoint& b) {
    if (pen_width_ == 1) {
        draw_thin_line(canvas_, a, b, pen_, dotted_ ? dot_ : 0);
    } else {
        draw_thick_line(canvas_, a, b, pen_width_, pen_, dotted_ ? dot_ : 0);
    }
}

void RasterTarget::Ellipse(const EllipseCurve& curve) {
    const PixelPoint centre = mapping_.to_pixel(static_cast<float>(curve.x - curve.origin_x),
                                                static_cast<float>(curve.y - curve.origin_y));
    const double reach = (std::abs(curve.a) + std::abs(curve.b)) *
                             std::max(mapping_.pixels_per_metre_x, mapping_.pixels_per_metre_y) +
                         pen_width_ + 2;
    if (centre.x + reach < 0 || centre.x - reach > canvas_.width || centre.y + reach < 0 ||
        centre.y - reach > canvas_.height) {
        return;
    }
    const bool inside = centre.x - reach > 0 && centre.x + reach < canvas_.width &&
                        centre.y - reach > 0 && centre.y + reach < canvas_.height;
    const bool crisp = inside && pen_width_ == 1 && !dotted_;
    const EllipseAngles& angles = drawing_angles();
    const auto to_pixel = [&](double x, double y) {
        return mapping_.to_pixel(static_cast<float>(x - curve.origin_x),
                                 static_cast<float>(y - curve.origin_y));
    };
    std::array<PixelPoint, 4> from;
    for (std::size_t n = 0; n < EllipseAngles::count; ++n) {
        // The four points of EllipseCurve::at, which have their products in common.
        const double u = angles.cosine[n] * curve.a;
        const double v = angles.sine[n] * curve.b;
        const double us = u * curve.sine;
        const double uc = u * curve.cosine;
        const double vs = v * curve.sine;
        const double vc = v * curve.cosine;
        const std::array<PixelPoint, 4> to{to_pixel(curve.x + us - vc, curve.y + uc + vs),
                                           to_pixel(curve.x + us + vc, curve.y + uc - vs),
                                           to_pixel(curve.x - us - vc, curve.y - uc + vs),
                                           to_pixel(curve.x - us + vc, curve.y - uc - vs)};
        for (std::size_t branch = 0; n > 0 && branch < to.size(); ++branch) {
            if (crisp && is_short(from[branch], to[branch])) {
                mark_pixel(canvas_, from[branch], pen_);
                mark_pixel(canvas_, to[branch], pen_);
            } else {
                stroke(from[branch], to[branch]);
            }
        }
        from = to;
    }
    position_ = from.back();
}

const CircleSprite& RasterTarget::sprite(const CircleStyle& style) {
    if (last_sprite_ == nullptr || last_sprite_->style() != style) {
        const SpriteKey key{style.radius, style.pen_width, style.outline,
                            style.fill,   style.filled,    style.dot};
        last_sprite_ = &sprites_.try_emplace(key, style).first->second;
    }
    return *last_sprite_;
}

void RasterTarget::Circle(float x, float y, float radius) {
    const PixelPoint centre = mapping_.to_pixel(x, y);
    CircleStyle style{static_cast<double>(radius) * mapping_.pixels_per_metre_x,
                      pen_width_,
                      pen_,
                      fill_,
                      filled_,
                      dotted_ ? dot_ : 0};
    if (!std::isfinite(centre.x + centre.y + style.radius) || style.radius < 0) {
        return;
    }
    if (style.radius > largest_sprite || pen_width_ > largest_sprite) {
        draw_circle(canvas_, centre, style);
        return;
    }
    const double reach = style.radius + pen_width_;
    if (centre.x > -reach - 1 && centre.x < canvas_.width + reach + 1 && centre.y > -reach - 1 &&
        centre.y < canvas_.height + reach + 1) {
        // Equal signatures differ in the last places of their radius.
        style.radius = std::round(style.radius * 64) / 64;
        sprite(style).draw(canvas_, static_cast<int>(std::floor(centre.x)),
                           static_cast<int>(std::floor(centre.y)));
    }
}

void RasterTarget::TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                               const FontSpec& font) {
    constexpr std::int32_t right_aligned = 2;
    constexpr double points_to_logical_pixels = 96.0 / 72.0;
    const double size = font.points * points_to_logical_pixels * mapping_.device_pixel_ratio;
    if (!(size >= 1 && size <= canvas_.height)) {
        return;  // nobody can read it
    }
    const double margin = 100 * font.points * mapping_.device_pixel_ratio;
    if (text.empty() || !(position_.x > -margin && position_.x < canvas_.width + margin) ||
        !(position_.y > -margin && position_.y < canvas_.height + margin)) {
        return;
    }
    if (!painter_) {
        painter_ = std::make_unique<QPainter>(&image_);
        painter_->setRenderHint(QPainter::TextAntialiasing);
    }
    const QFont face = text_font(font);
    const QFontMetricsF metrics(face, &image_);
    const QString shown = to_qstring(text);
    const bool to_the_left = (align & right_aligned) != 0;
    painter_->resetTransform();
    painter_->translate(position_.x, position_.y);
    painter_->rotate(-escapement / 10.0);
    painter_->setFont(face);
    painter_->setPen(QColor(static_cast<QRgb>(pen_)));
    painter_->drawText(
        QPointF(to_the_left ? -metrics.horizontalAdvance(shown) : 0.0, -metrics.descent()), shown);
}

void RasterTarget::LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& /*label*/,
                               const FontSpec& /*font*/, std::int32_t /*colour*/) {}

std::optional<TargetBox> RasterTarget::visible_box() const {
    const double reach = std::max(64 * mapping_.device_pixel_ratio, pen_width_ / 2.0 + 1);
    const double x = reach / mapping_.pixels_per_metre_x;
    const double y = reach / mapping_.pixels_per_metre_y;
    return TargetBox{-x, -y, canvas_.width / mapping_.pixels_per_metre_x + x,
                     canvas_.height / mapping_.pixels_per_metre_y + y};
}

}  // namespace veldra
