#include "drawing/observation_layers.h"

#include <algorithm>
#include <cmath>

#include "drawing/layer_surface.h"
#include "drawing/pen.h"
#include "text/codepage.h"

namespace veldra {

namespace {

using pen::black;
using pen::dotted;
using pen::solid;
constexpr std::int16_t terrestrial = 1;
constexpr std::int16_t satellite = 2;
constexpr std::int16_t orientation = 10;
constexpr std::int32_t ends_at_tip = 11;
constexpr std::int32_t begins_at_tip = 9;

/// What all three layers share.
class ObservationLayer {
 public:
    ObservationLayer(Session& session, const LayerFrame& frame, DrawingTarget& target)
        : session_(session),
          settings_(session.settings),
          obj_(session.obj),
          frame_(frame),
          surface_(frame, target),
          index_(session.view_index) {
        session.view_index.refresh(session.pu, session.lin, session.tables_revision);
        options_.length = frame.lenori;
        options_.tested = obj_.obj_test_beob != table_false;
        options_.signatures = obj_.obj_pusi == 1;
    }

 protected:
    /// Takes over the coordinates and radii of a row.
    void load(const LineRow& row) {
        ends_ = row.lin_schluessel.coordinates();
        vector_ = line_vector(ends_);
        options_.radius1 = signature_radius(frame_, row.lin_klasse_von);
        options_.radius2 = signature_radius(frame_, row.lin_klasse_nach);
    }

    void draw_piece(std::int32_t code) {
        surface_.line(ObservationSegment(ends_, vector_, code, options_));
    }

    void draw_end_dots() {
        if (obj_.obj_pusi == 0) {
            surface_.dot_pen(settings_);
            surface_.dot(ends_.x1, ends_.y1);
            surface_.dot(ends_.x2, ends_.y2);
        }
    }

    /// How far a layer draws beyond the box of a line.
    [[nodiscard]] double margin_beyond_line() const {
        double margin = std::max(std::abs(frame_.stquer), std::abs(frame_.stkreu));
        margin = std::max(margin, std::abs(static_cast<double>(frame_.punkt_klein)));
        for (const float radius : frame_.punsig) {
            margin = std::max(margin, std::abs(static_cast<double>(radius)));
        }
        return margin;
    }

    Session& session_;
    const Settings& settings_;
    const ObjectSelection& obj_;
    const LayerFrame& frame_;
    LayerSurface surface_;
    const ViewIndex& index_;
    LineCoordinates ends_;
    LineVector vector_;
    SegmentOptions options_;
};

class PlainObservations : public ObservationLayer {
 public:
    using ObservationLayer::ObservationLayer;

    void draw(ObservationForm form) {
        horizontal_ = form == ObservationForm::horizontal;
        index_.visit_lines(session_.lin, surface_.visible_ground(), margin_beyond_line(),
                           [this](std::int32_t i) {
                               surface_.target().begin_row(i);
                               draw_row(session_.lin[i]);
                           });
        surface_.style(solid);
    }

 private:
    void draw_row(const LineRow& row) {
        if (horizontal_ && row.lin_typ_seite == orientation) {
            return;
        }
        load(row);
        surface_.pen(row.lin_typ_hin != 0 ? solid : dotted, 1, black);
        draw_piece(horizontal_ ? piece::first : piece::height_first);
        draw_undirected(row.lin_typ_seite);
        surface_.pen(row.lin_typ_rueck != 0 ? solid : dotted, 1, black);
        draw_piece(horizontal_ ? piece::second : piece::height_second);
        draw_end_dots();
    }

    /// Stroke or cross in the middle of the line.
    void draw_undirected(std::int16_t type) {
        if (type != terrestrial && type != satellite) {
            return;
        }
        surface_.pen(solid, 1, black);
        const double along_x = vector_.dx / vector_.length;
        const double along_y = vector_.dy / vector_.length;
        const double size = type == terrestrial ? frame_.stquer : frame_.stkreu;
        const double cross_x = size / 2 * -along_y;
        const double cross_y = size / 2 * along_x;
        if (type == terrestrial) {
            draw_stroke(cross_x, cross_y);
        } else {
            draw_stroke(cross_x + size / 4 * along_x, cross_y + size / 4 * along_y);
            draw_stroke(cross_x - size / 4 * along_x, cross_y - size / 4 * along_y);
        }
    }

    /// A stroke through the middle of the line, from one side to the other.
    void draw_stroke(double half_x, double half_y) {
        const double middle_x = (ends_.x1 + ends_.x2) / 2;
        const double middle_y = (ends_.y1 + ends_.y2) / 2;
        surface_.line(middle_x + half_x, middle_y + half_y, middle_x - half_x, middle_y - half_y);
    }

    bool horizontal_ = true;
};

class TestedObservations : public ObservationLayer {
 public:
    using ObservationLayer::ObservationLayer;

    void draw(ObservationForm form) {
        horizontal_ = form == ObservationForm::horizontal;
        std::optional<TargetBox> ground = surface_.visible_ground();
        if (pens_run_on()) {
            ground.reset();
        }
        std::int32_t last_drawn = 0;
        index_.visit_lines(session_.lin, ground, margin_beyond_line(), [&](std::int32_t i) {
            if (is_drawn(session_.lin[i])) {
                surface_.target().begin_row(i);
                draw_row(session_.lin[i]);
                last_drawn = i;
            }
        });
        if (ground) {
            leave_pen_of_last_row(last_drawn);
        }
    }

 private:
    [[nodiscard]] bool is_drawn(const LineRow& row) const {
        return !horizontal_ || row.lin_typ_seite != orientation;
    }

    /// A row may take its pen from the row before, so none can be left out.
    [[nodiscard]] bool pens_run_on() const {
        return index_.has_negative_types() || obj_.obj_test < 1 || obj_.obj_test > 3;
    }

    void set_style(std::int16_t type, const TestValues& values) {
        SetTestStyle(surface_, settings_, obj_.obj_test, type, values);
    }
    void set_backward_style(const LineRow& row) {
        set_style(row.lin_typ_rueck, {row.lin_ev_rueck, row.lin_nv_rueck, row.lin_ep_rueck});
    }

    void draw_row(const LineRow& row) {
        load(row);
        set_style(row.lin_typ_hin, {row.lin_ev_hin, row.lin_nv_hin, row.lin_ep_hin});
        draw_piece(horizontal_ ? piece::first : piece::height_first);
        set_style(row.lin_typ_seite, {row.lin_ev_seite, row.lin_nv_seite, row.lin_ep_seite});
        draw_piece(horizontal_ ? piece::middle : piece::height_middle);
        set_backward_style(row);
        draw_piece(horizontal_ ? piece::second : piece::height_second);
        draw_end_dots();
    }

    /// The layer ends with the pen of its last row, which later layers go on with; so it must be
    /// set even when that row was out of view.
    void leave_pen_of_last_row(std::int32_t last_drawn) {
        for (std::int32_t i = session_.lin.count(); i > last_drawn; --i) {
            if (is_drawn(session_.lin[i])) {
                set_backward_style(session_.lin[i]);
                return;
            }
        }
    }

    bool horizontal_ = true;
};

class Orientations : public ObservationLayer {
 public:
    using ObservationLayer::ObservationLayer;

    void draw() {
        const std::optional<TargetBox> ground = surface_.visible_ground();
        const double margin = ground ? reach() : 0;
        bool follows_hidden_row = false;
        for (const std::int32_t i : index_.orientations()) {
            const LineRow& row = session_.lin[i];
            if (ground && !is_near(*ground, row, margin)) {
                follows_hidden_row = true;
                continue;
            }
            if (follows_hidden_row && obj_.obj_pusi == 0) {
                surface_.style(dotted);  // a dot is outlined in the style of the stub before
                follows_hidden_row = false;
            }
            surface_.target().begin_row(i);
            draw_row(row);
        }
        surface_.style(solid);
    }

 private:
    struct Tip {
        double x = 0;
        double y = 0;
    };

    /// Farthest that anything of a stub and its name lies from the first point.
    [[nodiscard]] double reach() const {
        const FaceMetrics& face = frame_.measurer->face_metrics(frame_.remote_font);
        const float widest = *std::max_element(face.advance.begin(), face.advance.end());
        const LabelSize line = label_size(frame_, face, frame_.remote_font, " ");
        const double text = static_cast<double>(widest) * frame_.remote_font.points * 20 *
                            frame_.label_unit * static_cast<double>(index_.longest_remote_name());
        return std::abs(frame_.lenori) + text + 2 * static_cast<double>(line.height) +
               margin_beyond_line();
    }

    static bool is_near(const TargetBox& ground, const LineRow& row, double margin) {
        const LineCoordinates ends = row.lin_schluessel.coordinates();
        return ends.x1 + margin >= ground.xmin && ends.x1 - margin <= ground.xmax &&
               ends.y1 + margin >= ground.ymin && ends.y1 - margin <= ground.ymax;
    }

    void draw_row(const LineRow& row) {
        load(row);
        if (obj_.obj_pusi == 0) {
            surface_.dot_pen(settings_);
            surface_.dot(ends_.x1, ends_.y1);
        }
        surface_.pen(solid, 1, black);
        draw_piece(piece::stub_near);
        surface_.pen(dotted, 1, black);
        draw_piece(piece::stub_far);
        draw_name(trim(row.lin_fernziel.view()));
    }

    /// The ground around a name at the tip of its stub.
    [[nodiscard]] TargetBox name_box(std::string_view name, const Tip& tip, double angle) const {
        const FaceMetrics& face = frame_.measurer->face_metrics(frame_.remote_font);
        const LabelSize size = label_size(frame_, face, frame_.remote_font, name);
        const double backwards = vector_.dx >= 0 ? -1 : 1;
        const double along_x = backwards * static_cast<double>(size.width) * std::cos(angle);
        const double along_y = backwards * static_cast<double>(size.width) * std::sin(angle);
        const double up_x = -static_cast<double>(size.height) * std::sin(angle);
        const double up_y = static_cast<double>(size.height) * std::cos(angle);
        return {tip.x + std::min(along_x, 0.0) + std::min(up_x, 0.0),
                tip.y + std::min(along_y, 0.0) + std::min(up_y, 0.0),
                tip.x + std::max(along_x, 0.0) + std::max(up_x, 0.0),
                tip.y + std::max(along_y, 0.0) + std::max(up_y, 0.0)};
    }

    /// The name lies over the stub and is read from below: it ends at a tip in the east and begins
    /// at a tip in the west.
    void draw_name(std::string_view name) {
        constexpr double degrees_per_radian = 57.2957795130823;
        const bool eastward = vector_.dx >= 0;
        const double angle =
            eastward ? SlopeAngle(vector_.dy, vector_.dx) : SlopeAngle(-vector_.dy, -vector_.dx);
        if (frame_.window) {
            const Segment stub = ObservationSegment(ends_, vector_, piece::stub_far, options_);
            if (!boxes_touch(*frame_.window, name_box(name, {stub.bx, stub.by}, angle))) {
                return;
            }
            surface_.move_to(stub.bx, stub.by);
        }
        const auto escapement = static_cast<std::int32_t>(angle * degrees_per_radian * 10);
        surface_.target().TextRotated(name, escapement, eastward ? ends_at_tip : begins_at_tip,
                                      frame_.remote_font);
    }
};

}  // namespace

void DrawObservations(Session& session, const LayerFrame& frame, DrawingTarget& target,
                      ObservationForm form) {
    PlainObservations(session, frame, target).draw(form);
}

void DrawTestObservations(Session& session, const LayerFrame& frame, DrawingTarget& target,
                          ObservationForm form) {
    TestedObservations(session, frame, target).draw(form);
}

void DrawOrientations(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    Orientations(session, frame, target).draw();
}

}  // namespace veldra
