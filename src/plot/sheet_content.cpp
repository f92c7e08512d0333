#include "plot/sheet_content.h"

#include "drawing/pipeline.h"
#include "drawing/point_layers.h"
#include "plot/paper_frame.h"

namespace veldra {

namespace {

/// Notices whether anything is drawn.
class NoticingTarget final : public DrawingTarget {
 public:
    [[nodiscard]] bool noticed() const { return noticed_; }

    void DrawStyle(std::int16_t /*style*/) override {}
    void DrawWidth(std::int16_t /*width*/) override {}
    void ForeColor(std::int32_t /*colour*/) override {}
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t /*colour*/) override {}
    void Line(float /*x1*/, float /*y1*/, float /*x2*/, float /*y2*/) override { noticed_ = true; }
    void MoveTo(float /*x*/, float /*y*/) override {}
    void Circle(float /*x*/, float /*y*/, float /*radius*/) override { noticed_ = true; }
    void Ellipse(const EllipseCurve& /*curve*/) override { noticed_ = true; }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {
        noticed_ = true;
    }
    void LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                     const FontSpec& /*font*/, std::int32_t /*colour*/) override {
        noticed_ = noticed_ || !label.caption.empty();
    }

 private:
    bool noticed_ = false;
};

}  // namespace

bool shows_anything(Session& session, const PartOnPaper& part, const SheetPlace& place,
                    TextMeasurer& measurer) {
    set_sheet_window(session, place);
    if (legend_corner(session, part.legend, place)) {
        return true;
    }
    const LayerFrame frame = paper_frame(session, part.fonts, measurer);
    NoticingTarget target;
    draw_observations(session, frame, target);
    draw_signatures(session, frame, target);
    draw_values(session, frame, target);
    DrawPointLabels(session, frame, target);
    return target.noticed();
}

}  // namespace veldra
