#pragma once

#include <QPainter>

#include "plot/printer.h"

namespace veldra {

/// What is drawn on, in units of a painter's device.
struct PainterArea {
    QRectF area;  ///< the picture, or the printable area of a page
    double units_per_millimetre = 1;
    double units_per_pen_pixel = 1;
};

/// Draws by any painter: a vector file, a page. Fonts have their size in points by the resolution
/// of the device, which must have one unit for each of its dots. Drawing begins with one of the two
/// calls that set the user coordinates.
class PainterTarget final : public PageTarget {
 public:
    /// What happens to labels: a picture's labels come after all layers, a page's in their order.
    enum class Labels { leave_out, print };

    PainterTarget(QPainter& painter, const PainterArea& area, Labels labels);

    void Scale(double left, double top, double right, double bottom) override;
    void scale_millimetres() override;
    [[nodiscard]] double pixel_size() const override {
        return area_.units_per_pen_pixel / area_.units_per_millimetre;
    }
    void Print(std::string_view text, double x, double y, const FontSpec& font,
               std::int32_t colour) override;
    void Polygon(std::span<const PagePoint> corners, std::int32_t colour) override;
    void begin_layer(PageLayer /*layer*/) override {}
    void DrawStyle(std::int16_t style) override;
    void DrawWidth(std::int16_t width) override;
    void ForeColor(std::int32_t colour) override;
    void FillStyle(std::int16_t style) override;
    void FillColor(std::int32_t colour) override;
    void Line(float x1, float y1, float x2, float y2) override;
    void LinePart(float x1, float y1, float x2, float y2, const LineCut& cut) override;
    void MoveTo(float x, float y) override { position_ = to_device(x, y); }
    void Circle(float x, float y, float radius) override;
    void Ellipse(const EllipseCurve& curve) override;
    bool EllipsePart(const EllipseCurve& curve, const TargetBox& window) override;
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override;
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override;
    [[nodiscard]] std::optional<TargetBox> visible_box() const override { return visible_; }

    /// Prints a label's text whatever the treatment of labels is.
    void print_label(const Label& label, const FontSpec& font, std::int32_t colour);

 private:
    enum class PenUse { none, lines, text };
    void use_line_pen(double begun);
    void use_label_font(const FontSpec& font, const QColor& colour);
    void print_text(std::string_view text, const QPointF& corner, const FontSpec& font,
                    std::int32_t colour);
    [[nodiscard]] QPointF to_device(double x, double y) const;
    [[nodiscard]] TargetBox to_device(const TargetBox& box) const;
    /// The polyline of a curve; empty if it leaves what a device can calculate.
    [[nodiscard]] QPolygonF outline_of(const EllipseCurve& curve) const;
    /// A line in units of the device; `begun` of its length lie ahead of it.
    void draw_line(const QPointF& from, const QPointF& to, double begun);
    /// Clips to a box of the device, whose sides may be infinite, until end_clip.
    void begin_clip(const TargetBox& window);
    void end_clip() { painter_.setClipping(false); }

    QPainter& painter_;
    PainterArea area_;
    // User coordinates of the area's upper left corner, and units a step of them.
    double left_ = 0;
    double top_ = 0;
    double units_x_ = 1;
    double units_y_ = 1;  ///< below 0: y grows upwards
    std::optional<TargetBox> visible_;
    Labels labels_;
    PenUse in_force_ = PenUse::none;
    double begun_ = 0;  ///< of the line pen in force, units of the device
    bool dotted_ = false;
    bool filled_ = true;
    double pen_width_ = 1;
    QColor pen_ = Qt::black;
    QColor fill_ = Qt::black;
    QPointF position_;
    FontSpec label_spec_;
    QFont label_font_;
    double label_ascent_ = 0;
    bool label_font_known_ = false;
};

}  // namespace veldra
