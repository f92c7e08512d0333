#include "dialogs/object_selection.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "graphikdatei/observation_pass.h"
#include "graphikdatei/value_pass.h"
#include "model/former_part.h"
#include "model/hourglass.h"
#include "model/long_work.h"
#include "plot/printer_adapters.h"
#include "reference/reference_system.h"
#include "text/codepage.h"
#include "text/numbers.h"
#include "view/viewport.h"

namespace veldra {

namespace {

constexpr std::int16_t local = 0;
constexpr std::int16_t dhdn = 1;
constexpr std::int16_t other_system = 3;
constexpr std::int16_t third_test = 3;

bool residuals_alone(const ObjectSelection& obj) {
    constexpr std::int16_t horizontal_residuals = 4;
    constexpr std::int16_t height_residuals = 5;
    return obj.obj_puwe == horizontal_residuals || obj.obj_puwe == height_residuals;
}

bool changes(const ObjectSelection& obj) {
    return obj.obj_puwe >= 1 && obj.obj_puwe <= 3;
}

bool observations(const ObjectSelection& obj) {
    return obj.obj_beob >= 1 && obj.obj_beob <= 3;
}

bool tests_residuals(const ObjectSelection& obj) {
    return residuals_alone(obj) && obj.obj_test_restkl != table_false;
}

bool tests_observations(const ObjectSelection& obj) {
    return observations(obj) && obj.obj_test_beob != table_false;
}

bool kilometre_squares(const ObjectSelection& obj) {
    return obj.obj_nube == 2 || obj.obj_nube == 3;
}

std::string_view third_test_caption(std::int16_t obj_beob) {
    switch (obj_beob) {
        case 0:
            return "EP / EH";
        case 2:
            return "EH";
        default:
            return "EP";
    }
}

void set_tests(SelectionControls& controls, const ObjectSelection& obj) {
    controls.chk_epbe = changes(obj);
    controls.chk_test_restkl = residuals_alone(obj);
    controls.chk_test_beob = observations(obj);
    const bool of_residuals = tests_residuals(obj);
    const bool any = of_residuals || tests_observations(obj);
    controls.fra_test = any;
    controls.opt_test = {false, any, any, any && !of_residuals};
    controls.opt_test_3_caption = third_test_caption(obj.obj_beob);
}

bool has_zone(double roh_rw_min) {
    constexpr double metres_per_number = 1000000.0;
    constexpr double last_strip = 15;
    return std::trunc(roh_rw_min / metres_per_number) > last_strip;
}

void set_system(SelectionControls& controls, const ObjectSelection& obj, double roh_rw_min) {
    if (obj.obj_bezu < local) {
        return;
    }
    controls.fra_bezug = true;
    const bool zone = has_zone(roh_rw_min);
    controls.opt_bezu = {true, !zone, zone, true};
    controls.opt_bezu_checked = obj.obj_bezu;
    controls.cbo_bezu = obj.obj_bezu == other_system;
    if (obj.obj_bezu >= dhdn) {
        controls.cbo_bezu_elli = std::max(1, obj.obj_bezu_elli);
        controls.cbo_bezu_abbi = std::max(1, obj.obj_bezu_abbi);
    }
}

/// Districts and boundaries need a system to lie in.
void set_reference_data(SelectionControls& controls, const ObjectSelection& obj) {
    if (obj.obj_bezu < dhdn) {
        return;
    }
    controls.fra_nummebez = true;
    controls.opt_nube_checked = obj.obj_nube;
    controls.opt_nbez = obj.obj_nube != 0;
    controls.nubemerit = kilometre_squares(obj);
    if (obj.obj_nube_meridian >= 0) {
        controls.txt_nubemerit = zahl_text(obj.obj_nube_meridian, "###0", "");
    }
    controls.fra_verwaltung = true;
    controls.opt_verw_checked = obj.obj_verw;
}

bool shows_values(const ObjectSelection& obj) {
    return obj.obj_wert_lage != 0 || obj.obj_wert_hoehe != 0;
}

void fit_empty_part(Session& session, SelectionLeft left) {
    constexpr std::int16_t with_margin = 1;
    const Extents& extents = session.extents;
    FitView(session, extents.gesamt_rw_min, extents.gesamt_hw_min, extents.gesamt_rw_max,
            extents.gesamt_hw_max, with_margin);
    if (left == SelectionLeft::by_ok) {
        session.plot.plot_null_rechts = extents.gesamt_rw_min;
        session.plot.plot_null_hoch = extents.gesamt_hw_min;
    }
}

/// Reads what the selection asks for of the current part, measures the extents and lets `settle`
/// follow them. If that fails or is given up, everything is as before, with the selection `before`.
void read_part_anew(Session& session, const ObjectSelection& before, const Desk& desk,
                    const std::function<void()>& settle) {
    constexpr int readings = 2;
    const Hourglass hourglass(session, desk.ui);
    const bool values = shows_values(before) || shows_values(session.obj);
    FormerPart former(session, values ? FormerPart::Points::copied : FormerPart::Points::kept,
                      before);
    expect_readings(session.work, readings);
    beob_lesen(session);
    wert_lesen(session);
    ComputeExtents(session, desk);
    settle();
    former.replaced();
}

/// Puts a limit of EV back, unless the new one was taken.
class FormerLimit {
 public:
    FormerLimit(Session& session, double limit) : session_(session), limit_(limit) {}
    ~FormerLimit() {
        if (!replaced_) {
            session_.settings.stndwert = limit_;
            session_.twins.settings.stndwert = limit_;
        }
    }
    FormerLimit(const FormerLimit&) = delete;
    FormerLimit& operator=(const FormerLimit&) = delete;

    void replaced() { replaced_ = true; }

 private:
    Session& session_;
    double limit_;
    bool replaced_ = false;
};

}  // namespace

SelectionControls selection_controls(const ObjectSelection& obj, double roh_rw_min) {
    SelectionControls controls;
    set_tests(controls, obj);
    set_system(controls, obj, roh_rw_min);
    set_reference_data(controls, obj);
    return controls;
}

void settle_test(ObjectSelection& obj) {
    if (tests_residuals(obj) && obj.obj_test == third_test) {
        obj.obj_test = 1;
    }
}

void choose_reference_system(Session& session, std::int16_t obj_bezu) {
    session.obj.obj_bezu = obj_bezu;
    ResolveSystem(session);
}

void choose_ellipsoid(Session& session, std::int32_t obj_bezu_elli) {
    session.obj.obj_bezu_elli = obj_bezu_elli;
    ResolveSystem(session);
}

void choose_mapping(Session& session, std::int32_t obj_bezu_abbi) {
    session.obj.obj_bezu_abbi = obj_bezu_abbi;
    ResolveSystem(session);
}

std::int32_t wrapped_meridian(std::int64_t strip) {
    if (strip < 0) {
        return meridian_strips - 1;
    }
    return strip >= meridian_strips ? 0 : static_cast<std::int32_t>(strip);
}

bool is_meridian(std::string_view text) {
    const std::string_view typed = trim(text);
    const bool is_number = !typed.empty() && typed.front() >= '0' && typed.front() <= '9';
    return is_number && zahl_wert(typed) < meridian_strips;
}

void type_meridian(ObjectSelection& obj, std::string_view text) {
    constexpr double far_beyond = 1e6;
    const double typed = std::clamp(zahl_wert(text), -far_beyond, far_beyond);
    obj.obj_nube_meridian = wrapped_meridian(to_int32(typed).value_or(0));
}

void step_meridian(ObjectSelection& obj, int step) {
    obj.obj_nube_meridian = wrapped_meridian(std::int64_t{obj.obj_nube_meridian} + step);
}

void auswahl_uebernehmen(Session& session, const ObjectSelection& before, SelectionLeft left,
                         const Desk& desk) {
    derive_value_modes(session.obj);
    if (session.datei_geladen != 1) {
        return;
    }
    read_part_anew(session, before, desk, [&session, left] {
        if (session.pu.count() == 0 && session.lin.count() == 0) {
            fit_empty_part(session, left);
        }
    });
    desk.redraw();
}

void grenzwert_uebernehmen(Session& session, double before, const Desk& desk) {
    if (session.datei_geladen != 1) {
        return;
    }
    FormerLimit former(session, before);
    read_part_anew(session, session.obj, desk, [] {});
    former.replaced();
    desk.redraw();
}

}  // namespace veldra
