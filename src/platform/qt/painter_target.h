#pragma once

#include <QPainter>

#include "drawing/target.h"

namespace veldra {

/// How metres of ground become units of a painter's device.
struct PainterMapping {
    double units_per_metre = 1;  ///< in both axes
    double left = 0;             ///< place of the ground's origin, the lower left corner
    double bottom = 0;
    double units_per_pen_pixel = 1;
    /// Ground outside which nothing shows; none: everything is drawn.
    std::optional<TargetBox> visible;
};

/// Draws by any painter: a vector file, a page. Fonts have their size in points by the resolution
/// of the device, which must have one unit for each of its dots.
class PainterTarget final : public DrawingTarget {
 public:
    /// What happens to labels: a picture's labels come after all layers, a page's in their order.
    enum class Labels { leave_out, print };

    PainterTarget(QPainter& painter, const PainterMapping& mapping, Labels labels);

    void DrawStyle(std::int16_t style) override;
    void DrawWidth(std::int16_t width) override;
    void ForeColor(std::int32_t colour) override;
    void FillStyle(std::int16_t style) override;
    void FillColor(std::int32_t colour) override;
    void Line(float x1, float y1, float x2, float y2) override;
    void Circle(float x, float y, float radius) override;
    void Ellipse(const EllipseCurve& curve) override;
    void TextRotated(std::string_view text, std::int32_t escapement, std::int32_t align,
                     const FontSpec& font) override;
    void LabelPlaced(LabelArray array, std::int32_t index, const Label& label, const FontSpec& font,
                     std::int32_t colour) override;
    [[nodiscard]] std::optional<TargetBox> visible_box() const override { return mapping_.visible; }

    /// Prints a label's text whatever the treatment of labels is.
    void print_label(const Label& label, const FontSpec& font, std::int32_t colour);

 private:
    enum class PenUse { none, lines, text };
    void use_line_pen();
    void use_label_font(const FontSpec& font, const QColor& colour);
    [[nodiscard]] QPointF to_device(float x, float y) const;

    QPainter& painter_;
    PainterMapping mapping_;
    Labels labels_;
    PenUse in_force_ = PenUse::none;
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
