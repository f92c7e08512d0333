#include "drawing/value_layers.h"

#include <cmath>
#include <cstdlib>

#include "drawing/layer_surface.h"
#include "drawing/pen.h"
#include "drawing/value_scale.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

using pen::solid;
constexpr int position_residuals = 2;
constexpr int ellipses = 3;
constexpr int height_residuals = 5;

std::size_t checked_slot(int kind) {
    if (kind < 1 || kind > 6) {
        throw runtime_error_at(9, {"", 0, "vektor_massstab"});
    }
    return static_cast<std::size_t>(kind);
}

/// What the layers of vectors share.
class ValueLayer {
 public:
    ValueLayer(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind)
        : session_(session),
          settings_(session.settings),
          obj_(session.obj),
          surface_(frame, target),
          slot_(checked_slot(kind)),
          kind_(kind),
          scale_(value_scale(session, kind)) {
        session.view_index.refresh(session.pu, session.lin, session.tables_revision);
    }

 protected:
    [[nodiscard]] std::int16_t code_of(const PointRow& row) const {
        return kind_ > 3 ? row.pu_wert_hoehe : row.pu_wert_lage;
    }
    [[nodiscard]] std::int16_t width_of(std::int16_t code) const {
        return code > 0 ? settings_.vektAdrw[slot_] : settings_.vektNdrw[slot_];
    }
    [[nodiscard]] std::int32_t colour_of(std::int16_t code) const {
        return code > 0 ? settings_.vektArgb[slot_] : settings_.vektNrgb[slot_];
    }
    /// The row holds a value of the kind, and its group is switched on.
    [[nodiscard]] bool is_shown(const PointRow& row) const {
        const std::int16_t code = code_of(row);
        return std::abs(code) == kind_ && width_of(code) >= 1;
    }

    void draw_dot(const PointRow& row) {
        if (obj_.obj_pusi == 0) {
            surface_.dot_pen(settings_);
            surface_.dot(row.pu_rechts, row.pu_hoch);
        }
    }

    template <typename Visit>
    void visit_visible(Visit&& visit) {
        const ViewIndex& index = session_.view_index;
        const ViewIndex::PointMargin margin{
            std::abs(epoch_shift(session_, index.largest_epoch())) +
                std::abs(static_cast<double>(surface_.frame().punkt_klein)),
            std::abs(scale_)};
        index.visit_points(session_.pu, surface_.visible_ground(), margin, [&](std::int32_t i) {
            surface_.target().begin_row(i);
            visit(i);
        });
    }

    Session& session_;
    const Settings& settings_;
    const ObjectSelection& obj_;
    LayerSurface surface_;
    std::size_t slot_;
    int kind_;
    double scale_;  ///< metres of ground for a centimetre
};

class Vectors : public ValueLayer {
 public:
    using ValueLayer::ValueLayer;

    void draw() {
        surface_.style(solid);
        visit_visible([this](std::int32_t i) {
            if (is_shown(session_.pu[i])) {
                draw_row(i);
            }
        });
    }

 private:
    struct Tip {
        double x = 0;
        double y = 0;
    };

    [[nodiscard]] Tip tip_of(const PointRow& row) const {
        if (kind_ == ellipses) {
            return {row.pu_rechts, row.pu_hoch};
        }
        if (kind_ < ellipses) {
            return {row.pu_rechts + row.pu_wert_rechts * scale_,
                    row.pu_hoch + row.pu_wert_hoch * scale_};
        }
        return {row.pu_rechts + epoch_shift(session_, row.pu_epoche),
                row.pu_hoch + row.pu_wert_dh * scale_};
    }

    /// The end that the rows before row `i` leave behind: usually of the row drawn last, else of a
    /// row between that was out of view.
    [[nodiscard]] Tip kept_end(std::int32_t i) const {
        for (std::int32_t before = i - 1; before > last_row_; --before) {
            const PointRow& row = session_.pu[before];
            if (is_shown(row) && row.pu_epoche >= 0) {
                return tip_of(row);
            }
        }
        return last_tip_;
    }

    void draw_row(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        if (row.pu_epoche < 0) {
            return;
        }
        const std::int16_t code = code_of(row);
        const Tip start = row.pu_epoche == 0 ? Tip{row.pu_rechts, row.pu_hoch} : kept_end(i);
        const Tip tip = tip_of(row);
        surface_.pen(width_of(code), colour_of(code));
        surface_.line(start.x, start.y, tip.x, tip.y);
        if (row.pu_epoche == 0) {
            draw_dot(row);
        }
        last_row_ = i;
        last_tip_ = tip;
    }

    std::int32_t last_row_ = 0;
    Tip last_tip_;
};

class TestResiduals : public ValueLayer {
 public:
    using ValueLayer::ValueLayer;

    void draw() {
        surface_.style(solid);
        if (kind_ != position_residuals && kind_ != height_residuals) {
            return;
        }
        visit_visible([this](std::int32_t i) {
            const PointRow& row = session_.pu[i];
            if (!is_shown(row)) {
                return;
            }
            if (kind_ == position_residuals) {
                draw_position(row);
            } else {
                draw_height(row);
            }
            draw_dot(row);
        });
    }

 private:
    void set_style(std::int16_t code, const TestValues& values) {
        SetTestStyle(surface_, settings_, obj_.obj_test, code, values);
    }

    /// The resultant thin and black; at control points its components in the colours of their own
    /// tests, the second set of test values serving the northing.
    void draw_position(const PointRow& row) {
        const double x = row.pu_rechts;
        const double y = row.pu_hoch;
        const double tip_x = x + row.pu_wert_rechts * scale_;
        const double tip_y = y + row.pu_wert_hoch * scale_;
        surface_.pen(settings_.punkt_breite, settings_.punkt_farbe);
        surface_.line(x, y, tip_x, tip_y);
        if (row.pu_wert_lage == position_residuals) {
            set_style(row.pu_wert_lage, {row.pu_ev_lage, row.pu_nv_lage, row.pu_ep_lage});
            surface_.line(x, y, tip_x, y);
            set_style(row.pu_wert_lage, {row.pu_ev_hoehe, row.pu_nv_hoehe, row.pu_eh_hoehe});
            surface_.line(tip_x, y, tip_x, tip_y);
        }
    }

    void draw_height(const PointRow& row) {
        if (row.pu_wert_hoehe == height_residuals) {
            set_style(row.pu_wert_hoehe, {row.pu_ev_lage, row.pu_nv_lage, row.pu_ep_lage});
        } else {
            surface_.pen(settings_.punkt_breite, settings_.punkt_farbe);
        }
        surface_.line(row.pu_rechts, row.pu_hoch, row.pu_rechts,
                      row.pu_hoch + row.pu_wert_dh * scale_);
    }
};

class Ellipses : public ValueLayer {
 public:
    Ellipses(Session& session, const LayerFrame& frame, DrawingTarget& target)
        : ValueLayer(session, frame, target, ellipses) {}

    void draw() {
        if (width_of(-ellipses) < 1 || !session_.view_index.has_ellipses()) {
            return;
        }
        if (surface_.visible_ground()) {
            set_pen();  // later layers go on with it, even when no ellipse is in view
        }
        visit_visible([this](std::int32_t i) {
            const PointRow& row = session_.pu[i];
            if (row.pu_wert_lage == -ellipses) {
                set_pen();
                DrawErrorEllipse(surface_, row.pu_rechts, row.pu_hoch, row.pu_wert_rechts * scale_,
                                 row.pu_wert_hoch * scale_, row.pu_wert_dh);
                draw_dot(row);
            }
        });
    }

 private:
    void set_pen() {
        surface_.pen(settings_.vektNdrw[slot_], settings_.vektNrgb[slot_]);
        surface_.style(solid);
    }
};

}  // namespace

void DrawVectors(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind) {
    Vectors(session, frame, target, kind).draw();
}

void DrawTestResiduals(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind) {
    TestResiduals(session, frame, target, kind).draw();
}

void DrawEllipses(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    Ellipses(session, frame, target).draw();
}

void DrawErrorEllipse(LayerSurface& surface, double x, double y, double a, double b, double t) {
    constexpr double rho = 200 / drawing_pi;
    const LayerFrame& frame = surface.frame();
    surface.ellipse(
        {x, y, a, b, std::sin(t / rho), std::cos(t / rho), frame.origin_rechts, frame.origin_hoch});
}

}  // namespace veldra
