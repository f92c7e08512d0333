#include "drawing/point_layers.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "drawing/layer_surface.h"
#include "drawing/pen.h"
#include "drawing/value_scale.h"
#include "text/text_forms.h"

namespace veldra {

namespace {

using pen::black;
constexpr std::int32_t control_point_fill = rgb(0, 127, 255);
constexpr std::int32_t new_point_fill = rgb(255, 0, 63);
constexpr const char* blank_caption = "    ";

std::int32_t toned(const LayerFrame& frame, std::int32_t colour) {
    return frame.grey ? GreyOf(colour) : colour;
}

class PointLabels {
 public:
    PointLabels(Session& session, const LayerFrame& frame, DrawingTarget& target)
        : session_(session),
          obj_(session.obj),
          frame_(frame),
          surface_(frame, target),
          target_(target),
          ground_(surface_.visible_ground()),
          face_(frame.measurer->face_metrics(frame.point_font)),
          anchor_(session),
          colour_(toned(frame, session.settings.pubcolor)) {
        line_height_ =
            static_cast<double>(label_size(frame, face_, frame.point_font, blank_caption).height);
    }

    void draw() {
        set_dot_pen();
        hide_all();
        session_.view_index.refresh(session_.pu, session_.lin, session_.tables_revision);
        const std::int32_t last_point = session_.pu.pu_anzahl_signatur;
        const bool epochs = obj_.obj_wert_lage == 1 || obj_.obj_wert_hoehe == 1;
        session_.view_index.visit_points(session_.pu, ground_, margin(epochs), [&](std::int32_t i) {
            target_.begin_row(i);
            if (i <= last_point) {
                place_point_label(i);
            } else if (epochs) {
                place_epoch_label(i);
            }
        });
    }

 private:
    /// The dots of this layer do not take the width factor of lines.
    void set_dot_pen() {
        const Settings& settings = session_.settings;
        target_.DrawWidth(settings.punkt_breite);
        target_.ForeColor(settings.punkt_farbe);
        target_.FillColor(settings.punkt_farbe);
        target_.FillStyle(0);
    }

    void hide_all() {
        std::vector<Label>& labels = session_.lbl_pubez;
        for (const std::int32_t i : session_.lbl_pubez_placed) {
            if (static_cast<std::size_t>(i) < labels.size()) {
                labels[static_cast<std::size_t>(i)].visible = false;
            }
        }
        session_.lbl_pubez_placed.clear();
        labels.resize(static_cast<std::size_t>(session_.pu.count()) + 1);
    }

    /// How far a label of the usual length and place, or a dot, lies from its point.
    [[nodiscard]] ViewIndex::PointMargin margin(bool epochs) const {
        const ViewIndex& index = session_.view_index;
        const Settings& settings = session_.settings;
        const double offset = std::max({ViewIndex::usual_label_offset, std::abs(settings.stanplt),
                                        std::abs(settings.stanptp)}) /
                              100;
        const std::size_t length = std::max<std::size_t>(index.longest_usual_label(), 4);
        const float widest = *std::max_element(face_.advance.begin(), face_.advance.end());
        const double width = static_cast<double>(widest) * static_cast<double>(length) *
                             frame_.point_font.points * 20 * frame_.label_unit;
        ViewIndex::PointMargin result;
        result.fixed =
            line_height_ * (offset + 2) + width + std::abs(static_cast<double>(frame_.punkt_klein));
        if (epochs) {
            result.fixed += std::abs(epoch_shift(session_, index.largest_epoch()));
            result.per_centimetre =
                std::max(std::abs(value_scale(session_, 1)), std::abs(value_scale(session_, 4)));
        }
        return result;
    }

    void place_point_label(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        if (obj_.obj_pube == 1 && !row.pu_bez.empty()) {
            place(i, row, ShortPointNumber(row.pu_bez), {});
        } else {
            place(i, row, blank_caption, {});
        }
        if (obj_.obj_pusi == 0) {
            surface_.dot(row.pu_rechts, row.pu_hoch);
        }
    }

    void place_epoch_label(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        if (LabelAnchor::is_position_change(row) || LabelAnchor::is_height_change(row)) {
            const bool shown = obj_.obj_epbe == table_true && !row.pu_bez.empty();
            place(i, row, shown ? row.pu_bez : blank_caption, anchor_.offset(row));
        }
    }

    /// Puts the label of row `i` at its point and `anchor`. An offset in percent of the label's
    /// height keeps its place relative to the point at any scale.
    void place(std::int32_t i, const PointRow& row, std::string_view caption,
               const AnchorOffset& anchor) {
        const LabelSize size = label_size(frame_, face_, frame_.point_font, caption);
        const auto h = static_cast<double>(size.height);
        const bool moved = row.pu_bez_rechts != 0;
        const double off_r = moved ? row.pu_bez_rechts : session_.settings.stanplt;
        const double off_h = moved ? row.pu_bez_hoch : session_.settings.stanptp;
        const double left = h * off_r / 100 + row.pu_rechts + anchor.rechts;
        const double top = h * off_h / 100 + row.pu_hoch + anchor.hoch;
        if (!is_in_view(left, top, size)) {
            return;
        }
        Label& label = session_.lbl_pubez[static_cast<std::size_t>(i)];
        label.caption = caption;
        label.left = static_cast<float>(left - frame_.origin_rechts);
        label.top = static_cast<float>(top - frame_.origin_hoch);
        label.width = size.width;
        label.height = size.height;
        label.visible = true;
        label.enabled = true;
        session_.lbl_pubez_placed.push_back(i);
        target_.LabelPlaced(LabelArray::lbl_pubez, i, label, frame_.point_font, colour_);
    }

    /// On a sheet the box of a label must touch it. On the screen a line height is left around the
    /// box for what letters hang over.
    [[nodiscard]] bool is_in_view(double left, double top, const LabelSize& size) const {
        const auto width = static_cast<double>(size.width);
        const auto height = static_cast<double>(size.height);
        if (frame_.window) {
            return boxes_touch(*frame_.window, {left, top - height, left + width, top});
        }
        if (!ground_) {
            return true;
        }
        return !(left - height > ground_->xmax || left + width + height < ground_->xmin ||
                 top - 2 * height > ground_->ymax || top + height < ground_->ymin);
    }

    Session& session_;
    const ObjectSelection& obj_;
    const LayerFrame& frame_;
    LayerSurface surface_;
    DrawingTarget& target_;
    std::optional<TargetBox> ground_;
    const FaceMetrics& face_;
    LabelAnchor anchor_;
    std::int32_t colour_;
    double line_height_ = 0;
};

}  // namespace

void DrawPointSignatures(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    LayerSurface surface(frame, target);
    target.DrawWidth(1);
    target.ForeColor(black);
    const std::int32_t control_point = toned(frame, control_point_fill);
    const std::int32_t new_point = toned(frame, new_point_fill);
    session.view_index.refresh(session.pu, session.lin, session.tables_revision);
    ViewIndex::PointMargin margin;
    for (const float radius : frame.punsig) {
        margin.fixed = std::max(margin.fixed, std::abs(static_cast<double>(radius)));
    }
    session.view_index.visit_points(
        session.pu, surface.visible_ground(), margin, [&](std::int32_t i) {
            const PointRow& row = session.pu[i];
            if (row.pu_signatur == 1 || row.pu_signatur == -1) {
                target.begin_row(i);
                target.FillStyle(0);
                target.FillColor(row.pu_signatur == 1 ? control_point : new_point);
                surface.circle(row.pu_rechts, row.pu_hoch,
                               signature_radius(frame, punkt_klasse(row)));
            }
        });
}

void DrawPointLabels(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    PointLabels(session, frame, target).draw();
}

}  // namespace veldra
