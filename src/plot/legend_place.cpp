#include "plot/legend_place.h"

#include <array>
#include <limits>
#include <utility>

#include "drawing/pipeline.h"
#include "drawing/point_layers.h"
#include "plot/fitted_font.h"
#include "plot/paper_frame.h"
#include "plot/plot_frame.h"
#include "plot/plot_layers.h"
#include "plot/preview.h"
#include "plot/printer_adapters.h"
#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

/// Counts the objects that have something to show within the window of a frame.
class CountingTarget final : public DrawingTarget {
 public:
    [[nodiscard]] std::int64_t objects() const { return objects_; }
    /// What follows belongs to other objects, though its rows may bear the same numbers.
    void begin_layer() { fresh_ = true; }

    void begin_row(std::int32_t row) override {
        fresh_ = fresh_ || row != row_;
        row_ = row;
    }
    void DrawStyle(std::int16_t /*style*/) override {}
    void DrawWidth(std::int16_t /*width*/) override {}
    void ForeColor(std::int32_t /*colour*/) override {}
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t /*colour*/) override {}
    void Line(float /*x1*/, float /*y1*/, float /*x2*/, float /*y2*/) override { count(); }
    void MoveTo(float /*x*/, float /*y*/) override {}
    void Circle(float /*x*/, float /*y*/, float /*radius*/) override { count(); }
    void Ellipse(const EllipseCurve& /*curve*/) override { count(); }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {
        count();
    }
    void LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& label,
                     const FontSpec& /*font*/, std::int32_t /*colour*/) override {
        if (!trim(label.caption).empty()) {
            count();
        }
    }

 private:
    void count() {
        objects_ += fresh_ ? 1 : 0;
        fresh_ = false;
    }

    std::int64_t objects_ = 0;
    std::int32_t row_ = -1;
    bool fresh_ = true;
};

/// Keeps the session as it was, but for the place of the legend.
class Trial {
 public:
    Trial(Session& session, const SheetGeometry& sheet)
        : session_(session),
          plot_(session.plot),
          sheet_(std::exchange(session.sheet, sheet)),
          legende_(session.legende),
          blatt_(session.blatt),
          labels_(std::exchange(session.lbl_pubez, {})),
          placed_(std::exchange(session.lbl_pubez_placed, {})) {}
    ~Trial() {
        session_.plot = plot_;
        session_.sheet = sheet_;
        session_.legende = legende_;
        session_.blatt = blatt_;
        session_.lbl_pubez = std::move(labels_);
        session_.lbl_pubez_placed = std::move(placed_);
    }
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    void choose(std::int16_t lage) { plot_.plot_legendenlage = lage; }

 private:
    Session& session_;
    PlotSettings plot_;
    SheetGeometry sheet_;
    LegendBox legende_;
    SheetWindow blatt_;
    decltype(Session::lbl_pubez) labels_;
    decltype(Session::lbl_pubez_placed) placed_;
};

/// The frame of the ground beneath the legend, in the sizes of the plot.
LayerFrame frame_beneath(Session& session, const Desk& desk) {
    const LegendBox& legende = session.legende;
    session.blatt = {legende.legende_rw_min, legende.legende_hw_min, legende.legende_rw_max,
                     legende.legende_hw_max};
    const PaperFonts fonts = fitted_label_fonts(session, desk);
    LayerFrame frame = paper_frame(session, fonts, desk.measurer);
    if (fonts.point_labels == 0) {
        const float height = session.settings.pubsizplo;
        frame.point_font.points = estimated_points(desk.measurer, frame.point_font, height);
        frame.remote_font.points = estimated_points(desk.measurer, frame.remote_font, height);
    }
    frame.width_factor = 1;
    return frame;
}

/// Objects beneath the legend at the place that is set.
std::int64_t covered_objects(Session& session, const Desk& desk) {
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    ComputeLegendSize(session, text);
    const LayerFrame frame = frame_beneath(session, desk);
    CountingTarget target;
    for (const auto draw : {draw_observations, draw_signatures, draw_values, DrawPointLabels}) {
        target.begin_layer();
        draw(session, frame, target);
    }
    return target.objects();
}

std::int16_t best_place(Session& session, const Desk& desk) {
    constexpr std::array<std::int16_t, 4> in_turn{4, 3, 2, 1};
    std::int16_t best = in_turn.front();
    std::int64_t fewest = std::numeric_limits<std::int64_t>::max();
    for (const std::int16_t lage : in_turn) {
        session.plot.plot_legendenlage = lage;
        const std::int64_t covered = covered_objects(session, desk);
        if (covered < fewest) {
            best = lage;
            fewest = covered;
        }
        if (covered == 0) {
            break;
        }
    }
    return best;
}

}  // namespace

void choose_legend_place(Session& session, const Desk& desk, const SheetGeometry& sheet) {
    if (part_is_empty(session)) {
        return;
    }
    Trial trial(session, sheet);
    if (!sheets_can_be_counted(session)) {
        return;
    }
    try {
        trial.choose(best_place(session, desk));
    } catch (const FatalError&) {  // NOLINT(bugprone-empty-catch): told by the drawing itself
    }
}

}  // namespace veldra
