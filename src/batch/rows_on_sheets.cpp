#include "batch/rows_on_sheets.h"

#include "drawing/pipeline.h"
#include "drawing/point_layers.h"
#include "plot/plot_page.h"

namespace veldra::batch {

namespace {

/// Notes the rows for which a layer draws anything, and apart from them those of its labels.
class MarkingTarget final : public DrawingTarget {
 public:
    MarkingTarget(RowMarks& drawn, RowMarks& labelled) : drawn_(drawn), labelled_(labelled) {}

    void begin_row(std::int32_t row) override { row_ = static_cast<std::size_t>(row); }
    void DrawStyle(std::int16_t /*style*/) override {}
    void DrawWidth(std::int16_t /*width*/) override {}
    void ForeColor(std::int32_t /*colour*/) override {}
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t /*colour*/) override {}
    void Line(float /*x1*/, float /*y1*/, float /*x2*/, float /*y2*/) override { mark(); }
    void MoveTo(float /*x*/, float /*y*/) override {}
    void Circle(float /*x*/, float /*y*/, float /*radius*/) override { mark(); }
    void Ellipse(const EllipseCurve& /*curve*/) override { mark(); }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {
        mark();
    }
    void LabelPlaced(LabelArray /*array*/, std::int32_t index, const Label& /*label*/,
                     const FontSpec& /*font*/, std::int32_t /*colour*/) override {
        labelled_[static_cast<std::size_t>(index)] = true;
    }

 private:
    void mark() { drawn_[row_] = true; }

    RowMarks& drawn_;
    RowMarks& labelled_;
    std::size_t row_ = 0;
};

/// The sheet being plotted becomes the ground of all sheets for as long as this lives.
class AllSheets {
 public:
    explicit AllSheets(Session& session) : session_(session), blatt_(session.blatt) {
        SheetPlace last;
        last.column = session.part.plot.plot_blatt_rechts;
        last.row = session.part.plot.plot_blatt_hoch;
        set_sheet_window(session, last);
        const SheetWindow upper_right = session.blatt;
        set_sheet_window(session, {});
        session.blatt.blatt_rw_max = upper_right.blatt_rw_max;
        session.blatt.blatt_hw_max = upper_right.blatt_hw_max;
    }
    ~AllSheets() { session_.blatt = blatt_; }
    AllSheets(const AllSheets&) = delete;
    AllSheets& operator=(const AllSheets&) = delete;

 private:
    Session& session_;
    SheetWindow blatt_;
};

}  // namespace

RowsOnSheets rows_on_sheets(Session& session, const PaperFonts& fonts, TextMeasurer& measurer) {
    const AllSheets all_sheets(session);
    const LayerFrame frame = paper_frame(session, fonts, measurer);
    const RowMarks no_points(static_cast<std::size_t>(session.part.pu.count()) + 1);
    const RowMarks no_lines(static_cast<std::size_t>(session.part.lin.count()) + 1);
    RowsOnSheets rows{no_lines, no_points, no_points, no_points, no_points};
    const auto draw = [&](auto layer, RowMarks& marks) {
        MarkingTarget target(marks, rows.labels);
        layer(session, frame, target);
    };
    draw(draw_observations, rows.lines);
    draw(draw_signatures, rows.signatures);
    draw(draw_position_values, rows.position_values);
    draw(draw_height_values, rows.height_values);
    draw(DrawPointLabels, rows.signatures);
    return rows;
}

}  // namespace veldra::batch
