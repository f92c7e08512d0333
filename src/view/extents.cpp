#include "view/extents.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "drawing/fonts.h"
#include "drawing/value_scale.h"
#include "model/ellipse_curve.h"
#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/text_forms.h"

namespace veldra {

namespace {

constexpr double beyond_all = 9.99e20;
constexpr double smallest_span = 5.0;
constexpr std::int16_t orientation = 10;

/// A box that grows; what is no number widens nothing.
struct Box {
    double rw_min = beyond_all;
    double hw_min = beyond_all;
    double rw_max = -beyond_all;
    double hw_max = -beyond_all;

    void widen_rechts(double rechts) {
        rw_min = rechts < rw_min ? rechts : rw_min;
        rw_max = rechts > rw_max ? rechts : rw_max;
    }
    void widen_hoch(double hoch) {
        hw_min = hoch < hw_min ? hoch : hw_min;
        hw_max = hoch > hw_max ? hoch : hw_max;
    }
    void widen(double rechts, double hoch) {
        widen_rechts(rechts);
        widen_hoch(hoch);
    }
    void widen(double rechts, double hoch, double radius) {
        widen(rechts - radius, hoch - radius);
        widen(rechts + radius, hoch + radius);
    }
    void grow(double by_rechts, double by_hoch) {
        rw_min -= by_rechts;
        rw_max += by_rechts;
        hw_min -= by_hoch;
        hw_max += by_hoch;
    }
    /// A circle, made larger by what rounding can do, lies inside.
    [[nodiscard]] bool holds_circle(double rechts, double hoch, double radius) const {
        constexpr double slack = 1e-6;
        radius += radius * slack + (std::abs(rechts) + std::abs(hoch)) * 1e-12;
        return rechts - radius > rw_min && rechts + radius < rw_max && hoch - radius > hw_min &&
               hoch + radius < hw_max;
    }
};

/// One run over the tables.
class ExtentsPass {
 public:
    ExtentsPass(Session& session, PaperTextSize& paper_text)
        : session_(session),
          settings_(session.settings),
          obj_(session.obj),
          plot_massstab_(session.plot.plot_massstab),
          paper_text_(paper_text),
          anchor_(session),
          position_scale_(value_scale(session, obj_.obj_wert_lage)),
          height_scale_(value_scale(session, obj_.obj_wert_hoehe + 3)) {
        small_radius_ = settings_.punkt_klein_plot / 1000 / plot_massstab_;
        for (std::size_t i = 0; i < radius_.size(); ++i) {
            radius_[i] = static_cast<double>(settings_.punsigplo[i]) / 1000 / plot_massstab_;
        }
    }

    void run() {
        set_point_font(table_false);
        if (obj_.obj_beob >= 1 && obj_.obj_beob <= 3) {
            widen_by_lines();
        }
        set_point_font(settings_.pubund);
        widen_by_points();
        widen_by_ellipses();
        make_room_for_border_labels();
        box_.grow(0.01, 0.01);
        ensure_span(box_.rw_min, box_.rw_max);
        ensure_span(box_.hw_min, box_.hw_max);
        session_.extents = {box_.rw_min, box_.hw_min, box_.rw_max,
                            box_.hw_max, raw_.rw_min, raw_.hw_min};
    }

 private:
    void set_point_font(std::int16_t underline) {
        FontSpec font = point_label_font(settings_);
        font.underline = underline;
        paper_text_.set_font(font, settings_.pubsizplo);
    }

    [[nodiscard]] double radius(std::int16_t klasse) const {
        if (obj_.obj_pusi != 1) {
            return small_radius_;
        }
        if (klasse < 0 || klasse > 3) {
            throw runtime_error_at(9, {session_.graphikdatei, 0, "punsigplo"});
        }
        return radius_[static_cast<std::size_t>(klasse)];
    }

    void widen_by_end(double rechts, double hoch, double radius) {
        box_.widen(rechts, hoch, radius);
        raw_.widen(rechts, hoch);
    }

    void widen_by_lines() {
        for (std::int32_t i = 1; i <= session_.lin.count(); ++i) {
            const LineRow& row = session_.lin[i];
            const LineCoordinates ends = row.lin_schluessel.coordinates();
            widen_by_end(ends.x1, ends.y1, radius(row.lin_klasse_von));
            if (obj_.obj_beob == 1 && row.lin_typ_seite == orientation) {
                widen_by_ray(ends, row.lin_fernziel.view());
            } else {
                widen_by_end(ends.x2, ends.y2, radius(row.lin_klasse_nach));
            }
        }
    }

    /// A ray towards a remote target, with the target's name on its left or right side.
    void widen_by_ray(const LineCoordinates& ends, std::string_view target) {
        const double d_rechts = ends.x2 - ends.x1;
        const double d_hoch = ends.y2 - ends.y1;
        const double length = std::sqrt(d_rechts * d_rechts + d_hoch * d_hoch);
        const double e = d_rechts / length;
        const double n = d_hoch / length;
        const double ray = settings_.lenoriplo / plot_massstab_ / 1000;
        const double tip_r = ends.x1 + ray * e;
        const double tip_h = ends.y1 + ray * n;
        box_.widen(tip_r, tip_h);
        const std::string_view name = trim(target);
        if (name.empty()) {
            return;
        }
        const PaperExtent size = paper_text_.text_size(name);
        const double w = size.width / plot_massstab_;
        const double h =
            d_rechts >= 0 ? size.height / plot_massstab_ : -size.height / plot_massstab_;
        const double corner_r = tip_r - h * n;
        const double corner_h = tip_h + h * e;
        box_.widen(corner_r, corner_h);
        box_.widen(corner_r - w * e, corner_h - w * n);
    }

    void widen_by_points() {
        for (std::int32_t i = 1; i <= session_.pu.count(); ++i) {
            const PointRow& row = session_.pu[i];
            widen_by_end(row.pu_rechts, row.pu_hoch, radius(punkt_klasse(row)));
            widen_by_position_value(row, i);
            widen_by_height_value(row);
            if (!row.pu_bez.empty()) {
                widen_by_label(row);
            }
        }
    }

    /// Line width of a value's group: control points and new points are switched apart.
    [[nodiscard]] std::int16_t group_width(std::int16_t state, int slot) const {
        const auto at = static_cast<std::size_t>(slot);
        return state > 0 ? settings_.vektAdrw[at] : state < 0 ? settings_.vektNdrw[at] : 0;
    }

    void widen_by_position_value(const PointRow& row, std::int32_t index) {
        const int mode = obj_.obj_wert_lage;
        if ((mode == 1 || mode == 2) && group_width(row.pu_wert_lage, mode) > 0) {
            box_.widen(row.pu_rechts + row.pu_wert_rechts * position_scale_,
                       row.pu_hoch + row.pu_wert_hoch * position_scale_);
        } else if (mode == 3 && row.pu_wert_lage == -3) {
            ellipses_.push_back(index);
        }
    }

    void widen_by_height_value(const PointRow& row) {
        if (obj_.obj_wert_hoehe < 1) {
            return;
        }
        const int slot = obj_.obj_wert_hoehe + 3;
        if (group_width(row.pu_wert_hoehe, slot) > 0) {
            box_.widen_hoch(row.pu_hoch + row.pu_wert_dh * height_scale_);
            if (LabelAnchor::is_height_change(row)) {
                box_.rw_max =
                    std::max(box_.rw_max, row.pu_rechts + epoch_shift(session_, row.pu_epoche));
            }
        }
    }

    void widen_by_label(const PointRow& row) {
        const bool is_change =
            LabelAnchor::is_position_change(row) || LabelAnchor::is_height_change(row);
        if (!is_change) {
            if (obj_.obj_pube != 0) {
                widen_by_text(row, ShortPointNumber(row.pu_bez));
            }
            return;
        }
        const std::int16_t mode =
            LabelAnchor::is_position_change(row) ? obj_.obj_wert_lage : obj_.obj_wert_hoehe;
        if (mode == 1 && obj_.obj_epbe != table_false) {
            widen_by_text(row, row.pu_bez);
        }
    }

    void widen_by_text(const PointRow& row, std::string_view text) {
        const PaperExtent size = paper_text_.text_size(text);
        const bool moved = row.pu_bez_rechts != 0;
        const double off_r = moved ? row.pu_bez_rechts : settings_.stanplt;
        const double off_h = moved ? row.pu_bez_hoch : settings_.stanptp;
        const AnchorOffset anchor = anchor_.offset(row);
        const double left =
            row.pu_rechts + anchor.rechts + size.height * off_r / 100 / plot_massstab_;
        const double top = row.pu_hoch + anchor.hoch + size.height * off_h / 100 / plot_massstab_;
        box_.widen(left, top);
        box_.widen(left + size.width / plot_massstab_, top - size.height / plot_massstab_);
    }

    /// Ellipses come last, since most of them then lie inside and need not be sampled.
    void widen_by_ellipses() {
        for (const std::int32_t i : ellipses_) {
            const PointRow& row = session_.pu[i];
            const double a = row.pu_wert_rechts * position_scale_;
            const double b = row.pu_wert_hoch * position_scale_;
            if (!box_.holds_circle(row.pu_rechts, row.pu_hoch,
                                   std::max(std::abs(a), std::abs(b)))) {
                widen_by_ellipse(row, a, b);
            }
        }
    }

    void widen_by_ellipse(const PointRow& row, double a, double b) {
        static const EllipseAngles half_turn(std::numbers::pi);
        const double t = row.pu_wert_dh * std::numbers::pi / 200;
        const double sin_t = std::sin(t);
        const double cos_t = std::cos(t);
        const double r = row.pu_rechts;
        const double h = row.pu_hoch;
        for (std::size_t k = 0; k < EllipseAngles::count; ++k) {
            const double p = a * half_turn.cosine[k];
            const double q = b * half_turn.sine[k];
            box_.widen(r + p * sin_t - q * cos_t, h + p * cos_t + q * sin_t);
            box_.widen(r + p * sin_t + q * cos_t, h + p * cos_t - q * sin_t);
            box_.widen(r - p * sin_t - q * cos_t, h - p * cos_t + q * sin_t);
            box_.widen(r - p * sin_t + q * cos_t, h - p * cos_t - q * sin_t);
        }
    }

    /// District labels "nur am Rand" stand outside of what is shown. The sample is the widest text
    /// of its kind.
    void make_room_for_border_labels() {
        if (obj_.obj_nube == 0 || obj_.obj_nbez != 2) {
            return;
        }
        paper_text_.set_font(district_label_font(settings_), settings_.nubsizplo);
        const bool squares = obj_.obj_nube == 2 || obj_.obj_nube == 3;
        const PaperExtent size = paper_text_.text_size(squares ? "5555" : "55");
        box_.grow(size.width / plot_massstab_, size.height / plot_massstab_);
    }

    static void ensure_span(double& min, double& max) {
        if (max - min < smallest_span) {
            min = (min + max) / 2 - smallest_span / 2;
            max = min + smallest_span;
        }
    }

    Session& session_;
    const Settings& settings_;
    const ObjectSelection& obj_;
    double plot_massstab_;
    PaperTextSize& paper_text_;
    LabelAnchor anchor_;
    double position_scale_;  ///< metres of ground for a centimetre of the horizontal value shown
    double height_scale_;
    double small_radius_ = 0;
    std::array<double, 4> radius_{};
    std::vector<std::int32_t> ellipses_;
    Box box_;
    Box raw_;
};

}  // namespace

void ComputeExtents(Session& session, PaperTextSize& paper_text) {
    ExtentsPass(session, paper_text).run();
}

void ComputeExtents(Session& session, TextMeasurer& measurer) {
    EstimatedTextSize estimate(measurer);
    ComputeExtents(session, estimate);
}

BareSpan bare_span(const Session& session) {
    Box box;
    const bool has_lines = session.obj.obj_beob >= 1 && session.obj.obj_beob <= 3;
    for (std::int32_t i = 1; has_lines && i <= session.lin.count(); ++i) {
        const LineRow& row = session.lin[i];
        const LineCoordinates ends = row.lin_schluessel.coordinates();
        box.widen(ends.x1, ends.y1);
        if (session.obj.obj_beob != 1 || row.lin_typ_seite != orientation) {
            box.widen(ends.x2, ends.y2);
        }
    }
    for (std::int32_t i = 1; i <= session.pu.count(); ++i) {
        box.widen(session.pu[i].pu_rechts, session.pu[i].pu_hoch);
    }
    return {box.rw_max - box.rw_min, box.hw_max - box.hw_min};
}

}  // namespace veldra
