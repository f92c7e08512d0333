#include "drawing/pipeline.h"

#include <algorithm>
#include <array>
#include <string>

#include "drawing/boundaries.h"
#include "drawing/districts.h"
#include "drawing/observation_layers.h"
#include "drawing/point_layers.h"
#include "drawing/title.h"
#include "drawing/value_layers.h"
#include "drawing/watched_target.h"
#include "text/codepage.h"

namespace veldra {

namespace {

constexpr int hourglass = 11;
constexpr int default_pointer = 0;

void set_pointer(Session& session, UserInterface& ui, int pointer) {
    session.window.mouse_pointer = pointer;
    ui.set_mouse_pointer(pointer);
}

/// Residuals of position and height side by side are never coloured by their tests.
bool colours_residuals(const ObjectSelection& obj) {
    const bool both = obj.obj_wert_lage == 2 && obj.obj_wert_hoehe == 2;
    return !both && obj.obj_test_restkl == table_true;
}

void draw_residuals(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind) {
    if (colours_residuals(session.part.obj)) {
        DrawTestResiduals(session, frame, target, kind);
    } else {
        DrawVectors(session, frame, target, kind);
    }
}

/// Says that there is nothing to draw; a part then is no longer marked for plotting.
void report_empty(Session& session, UserInterface& ui) {
    std::string text = "Datei enthält keine darzustellenden Objekte";
    if (session.netz.count() > 0) {
        NetworkPartRow& part = session.netz[session.part.netz_aktuell];
        part.netz_plotmarke = table_false;
        text = "Netzteil " + to_utf8(part.netz_name) + " enthält keine darzustellenden Objekte";
    }
    ui.message_box(MessageStyle::critical, " Fehler ", text);
}

/// Rows that the layers of the selection run through, each for itself; 1 at least.
double rows_to_draw(const Session& session) {
    const ObjectSelection& obj = session.part.obj;
    const double lines = session.part.lin.count();
    const double points = session.part.pu.count();
    double rows = obj.obj_beob >= 1 && obj.obj_beob <= 3 ? lines : 0;
    for (const bool drawn : {obj.obj_pusi != 0, obj.obj_wert_lage != 0, obj.obj_wert_hoehe != 0}) {
        rows += drawn ? points : 0;
    }
    const double labels = points;
    return std::max(1.0, rows + labels);
}

/// Labels of an older view would stand at wrong places.
void hide_labels(Session& session) {
    for (Label& label : session.part.lbl_pubez) {
        label.visible = false;
    }
    session.part.lbl_pubez_placed.clear();
    HideGridLabels(session);
}

}  // namespace

void draw_observations(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    const ObjectSelection& obj = session.part.obj;
    if (obj.obj_beob < 1 || obj.obj_beob > 3) {
        return;
    }
    const ObservationForm form =
        obj.obj_beob == 1 ? ObservationForm::horizontal : ObservationForm::height_and_gps;
    if (obj.obj_test_beob == table_false) {
        DrawObservations(session, frame, target, form);
    } else {
        DrawTestObservations(session, frame, target, form);
    }
    if (form == ObservationForm::horizontal) {
        DrawOrientations(session, frame, target);
    }
}

void draw_signatures(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    if (session.part.obj.obj_pusi != 0) {
        DrawPointSignatures(session, frame, target);
    }
}

void draw_position_values(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    switch (session.part.obj.obj_wert_lage) {
        case 1:
            DrawVectors(session, frame, target, 1);
            break;
        case 2:
            draw_residuals(session, frame, target, 2);
            break;
        case 3:
            DrawEllipses(session, frame, target);
            break;
        default:
            break;
    }
}

void draw_height_values(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    switch (session.part.obj.obj_wert_hoehe) {
        case 1:
            DrawVectors(session, frame, target, 4);
            break;
        case 2:
            draw_residuals(session, frame, target, 5);
            break;
        case 3:
            DrawVectors(session, frame, target, 6);
            break;
        default:
            break;
    }
}

void draw_values(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    draw_position_values(session, frame, target);
    draw_height_values(session, frame, target);
}

void draw_network(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    draw_observations(session, frame, target);
    draw_signatures(session, frame, target);
    draw_values(session, frame, target);
}

void draw_boundaries_or_report(Session& session, UserInterface& ui,
                               const std::function<void()>& draw) {
    std::string& reported = boundary_cache(session).reported;
    try {
        draw();
        reported.clear();
    } catch (const UnreadableBoundaries& error) {
        if (reported != error.what()) {
            reported = error.what();
            ui.message_box(MessageStyle::critical, " Fehler ", reported);
        }
    }
}

bool draw_or_give_up(Session& session, DrawingTarget& target,
                     const std::function<void(DrawingTarget&)>& draw) {
    const double rows = rows_to_draw(session);
    session.part.view_index.begin_counting();
    WatchedTarget watched(target, session.work, [&session, rows] {
        return static_cast<double>(session.part.view_index.rows_passed()) / rows;
    });
    try {
        draw(watched);
    } catch (const WorkCancelled&) {
        hide_labels(session);
        return false;
    }
    return true;
}

void begin_picture(Session& session, UserInterface& ui) {
    set_pointer(session, ui, hourglass);
    session.window.lbl_legende_visible = false;
    session.window.sheets_moving = false;
}

void end_picture(Session& session, UserInterface& ui) {
    if (session.part.pu.count() == 0 && session.part.lin.count() == 0) {
        session.window.frm_massstab_shown = false;
        report_empty(session, ui);
    }
    set_pointer(session, ui, default_pointer);
}

bool DrawAll(Session& session, DrawingTarget& target, TextMeasurer& measurer, UserInterface& ui) {
    begin_picture(session, ui);
    const LayerFrame frame = screen_frame(session, measurer);
    session.part.lbl_pubez_font = frame.point_font;
    session.part.lbl_nubez_font = frame.district_font;
    const bool whole = draw_or_give_up(session, target, [&](DrawingTarget& watched) {
        if (session.part.obj.obj_verw != 0) {
            draw_boundaries_or_report(session, ui,
                                      [&] { DrawBoundaries(session, frame, watched); });
        }
        DrawGrid(session, frame, watched, view_ground(session.view));
        draw_network(session, frame, watched);
        DrawPointLabels(session, frame, watched);
    });
    end_picture(session, ui);
    return whole;
}

}  // namespace veldra
