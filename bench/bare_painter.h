#pragma once

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QRawFont>
#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "drawing/pipeline.h"
#include "model/ellipse_curve.h"
#include "windows/qt/picture_image.h"

namespace veldra::bench {

/// Keeps the primitives in the form that the painter takes fastest.
class PrimitiveTarget final : public DrawingTarget {
 public:
    struct Run {
        QPen pen;
        std::vector<QLineF> lines;
        std::vector<QPolygonF> ellipses;
    };
    struct CircleAt {
        QPointF centre;
        double radius;
        QRgb fill;
    };
    struct Text {
        QPointF base_line;
        QString text;
    };

    PrimitiveTarget(PictureMapping mapping, TargetBox box) : mapping_(mapping), box_(box) {}

    void DrawStyle(std::int16_t style) override { style_ = style; }
    void DrawWidth(std::int16_t width) override { width_ = width; }
    void ForeColor(std::int32_t colour) override { colour_ = colour; }
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t colour) override { fill_ = to_pixel_colour(colour); }
    void Line(float x1, float y1, float x2, float y2) override {
        run().lines.emplace_back(point(x1, y1), point(x2, y2));
    }
    void Circle(float x, float y, float radius) override {
        circles.push_back(
            {point(x, y), static_cast<double>(radius) * mapping_.pixels_per_metre_x, fill_});
    }
    void Ellipse(const EllipseCurve& curve) override {
        QPolygonF polygon;
        trace_half(curve, polygon);
        run().ellipses.push_back(polygon);
    }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {}
    void LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                     const FontSpec& /*font*/, std::int32_t /*colour*/) override {
        const QPointF corner = point(label.left, label.top);
        texts.push_back({QPointF(std::round(corner.x()), std::round(corner.y()) + 12),
                         QString::fromLatin1(label.caption.data(),
                                             static_cast<qsizetype>(label.caption.size()))});
    }
    [[nodiscard]] std::optional<TargetBox> visible_box() const override { return box_; }

    std::vector<Run> runs;
    std::vector<CircleAt> circles;
    std::vector<Text> texts;

 private:
    /// The curve as one polyline: its first branch forwards and its second back.
    void trace_half(const EllipseCurve& curve, QPolygonF& polygon) const {
        const auto add = [&](std::size_t branch, std::size_t n) {
            const EllipseCurve::Point at = curve.at(branch, n);
            polygon.push_back(point(static_cast<float>(at.x - curve.origin_x),
                                    static_cast<float>(at.y - curve.origin_y)));
        };
        for (std::size_t n = 0; n < EllipseAngles::count; ++n) {
            add(0, n);
        }
        for (std::size_t n = EllipseAngles::count; n-- > 0;) {
            add(1, n);
        }
    }

    [[nodiscard]] QPointF point(float x, float y) const {
        const PixelPoint at = mapping_.to_pixel(x, y);
        return {at.x, at.y};
    }
    Run& run() {
        const QPen pen(QBrush(QColor::fromRgb(to_pixel_colour(colour_))), width_,
                       style_ == 0 ? Qt::SolidLine : Qt::DotLine);
        if (runs.empty() || runs.back().pen != pen) {
            runs.push_back({pen, {}, {}});
        }
        return runs.back();
    }

    PictureMapping mapping_;
    TargetBox box_;
    std::int16_t style_ = 0;
    std::int16_t width_ = 1;
    std::int32_t colour_ = 0;
    QRgb fill_ = 0;
};

inline QPixmap circle_sprite(double radius, QRgb fill) {
    const int size = static_cast<int>(radius) * 2 + 5;
    QPixmap sprite(size, size);
    sprite.fill(Qt::transparent);
    QPainter painter(&sprite);
    painter.setBrush(QColor::fromRgb(fill));
    painter.drawEllipse(QPointF(size / 2.0, size / 2.0), radius, radius);
    return sprite;
}

/// Glyph runs of a thousand labels each, as the painter takes them fastest.
inline std::vector<QGlyphRun> glyph_runs(const std::vector<PrimitiveTarget::Text>& texts) {
    constexpr std::size_t labels_a_run = 1000;
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(13);
    const QRawFont raw = QRawFont::fromFont(font);
    std::vector<QGlyphRun> runs;
    for (std::size_t first = 0; first < texts.size(); first += labels_a_run) {
        QVector<quint32> glyphs;
        QVector<QPointF> places;
        for (std::size_t i = first; i < std::min(first + labels_a_run, texts.size()); ++i) {
            const QVector<quint32> indexes = raw.glyphIndexesForString(texts[i].text);
            const QVector<QPointF> advances = raw.advancesForGlyphIndexes(indexes);
            QPointF at = texts[i].base_line;
            for (qsizetype g = 0; g < indexes.size(); ++g) {
                glyphs.push_back(indexes[g]);
                places.push_back(at);
                at += advances[g];
            }
        }
        QGlyphRun run;
        run.setRawFont(raw);
        run.setGlyphIndexes(glyphs);
        run.setPositions(places);
        runs.push_back(run);
    }
    return runs;
}

/// The primitives of a picture, kept so that a bare loop of the toolkit's painter can paint them,
/// each by its fastest technique.
class BarePicture {
 public:
    /// Keeps what `image` shows of the session.
    BarePicture(Session& session, TextMeasurer& measurer, UserInterface& ui, QImage& image)
        : primitives_(session_mapping(session, image, 1.0),
                      *RasterTarget(image, session_mapping(session, image, 1.0)).visible_box()) {
        DrawAll(session, primitives_, measurer, ui);
        labels_ = glyph_runs(primitives_.texts);
    }

    void paint(QImage& image) const {
        image.fill(picture_background);
        QPainter painter(&image);
        painter.setClipRect(image.rect());
        for (const PrimitiveTarget::Run& run : primitives_.runs) {
            painter.setPen(run.pen);
            painter.drawLines(run.lines.data(), static_cast<int>(run.lines.size()));
            for (const QPolygonF& ellipse : run.ellipses) {
                painter.drawPolyline(ellipse);
            }
        }
        std::map<std::pair<int, QRgb>, QPixmap> sprites;
        for (const PrimitiveTarget::CircleAt& circle : primitives_.circles) {
            QPixmap& sprite = sprites[{static_cast<int>(circle.radius * 8), circle.fill}];
            if (sprite.isNull()) {
                sprite = circle_sprite(circle.radius, circle.fill);
            }
            painter.drawPixmap(circle.centre - QPointF(sprite.width() / 2.0, sprite.height() / 2.0),
                               sprite);
        }
        painter.setPen(Qt::black);
        for (const QGlyphRun& run : labels_) {
            painter.drawGlyphRun({}, run);
        }
    }

 private:
    PrimitiveTarget primitives_;
    std::vector<QGlyphRun> labels_;
};

}  // namespace veldra::bench
