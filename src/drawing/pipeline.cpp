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

void set_caption(Session& session) {
    WindowState& window = session.window;
    window.caption = window.fenstertitel;
    if (session.netz.count() > 0) {
        window.caption += " (" + to_utf8(session.netz[session.netz_aktuell].netz_name) + ")";
    }
    window.caption += ": " + to_utf8(BuildTitle(session, title_code::objects));
}

/// Residuals of position and height side by side are never coloured by their tests.
bool colours_residuals(const ObjectSelection& obj) {
    const bool both = obj.obj_wert_lage == 2 && obj.obj_wert_hoehe == 2;
    return !both && obj.obj_test_restkl == table_true;
}

void draw_residuals(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind) {
    if (colours_residuals(session.obj)) {
        DrawTestResiduals(session, frame, target, kind);
    } else {
        DrawVectors(session, frame, target, kind);
    }
}

constexpr std::array view_buttons{ToolButton::lupe_plus,        ToolButton::lupe_minus,
                                  ToolButton::schiebe_rechts,   ToolButton::schiebe_links,
                                  ToolButton::schiebe_hoch,     ToolButton::schiebe_runter,
                                  ToolButton::schiebe_original, ToolButton::plot_ein};

constexpr std::array plot_entries{MenuItem::m_plotten_einstellungen, MenuItem::m_plotten_null,
                                  MenuItem::m_plotten_alle, MenuItem::m_plotten_aktuell,
                                  MenuItem::m_plotten_aus};

void offer_commands(WindowState& window, PictureMode mode) {
    MenuItemState& scale_bars = window[MenuItem::m_ansicht_massstab];
    scale_bars.enabled = mode == PictureMode::screen;
    window[ToolButton::massstaebe].enabled = scale_bars.enabled && !scale_bars.checked;
    for (const MenuItem item : {MenuItem::m_torvel_objekte, MenuItem::m_torvel_ansicht,
                                MenuItem::m_torvel_plotten, MenuItem::m_torvel_optionen}) {
        window[item].enabled = true;
    }
    for (const ToolButton button : view_buttons) {
        window[button].enabled = true;
    }
    const bool plotting = mode == PictureMode::preview;
    window[MenuItem::m_plotten_ein].enabled = !plotting;
    window[ToolButton::plot_ein].enabled = !plotting;
    for (const MenuItem item : plot_entries) {
        window[item].enabled = plotting;
    }
    window[ToolButton::plot_aus].enabled = plotting;
}

void withdraw_commands(WindowState& window, PictureMode mode) {
    window.frm_massstab_shown = false;
    window[MenuItem::m_ansicht_massstab].checked = false;
    // Another choice of objects is the way out.
    window[MenuItem::m_torvel_objekte].enabled = true;
    for (const MenuItem item : {MenuItem::m_ansicht_massstab, MenuItem::m_torvel_ansicht,
                                MenuItem::m_torvel_plotten, MenuItem::m_torvel_optionen}) {
        window[item].enabled = false;
    }
    for (const ToolButton button : view_buttons) {
        window[button].enabled = false;
    }
    window[ToolButton::massstaebe].enabled = false;
    // Nobody is kept in the preview of nothing.
    window[ToolButton::plot_aus].enabled = mode == PictureMode::preview;
}

/// Says that there is nothing to draw; a part then is no longer marked for plotting.
void report_empty(Session& session, UserInterface& ui) {
    std::string text = "Datei enthält keine darzustellenden Objekte";
    if (session.netz.count() > 0) {
        NetworkPartRow& part = session.netz[session.netz_aktuell];
        part.netz_plotmarke = table_false;
        text = "Netzteil " + to_utf8(part.netz_name) + " enthält keine darzustellenden Objekte";
    }
    ui.message_box(MessageStyle::critical, " Fehler ", text);
}

/// Rows that the layers of the selection run through, each for itself; 1 at least.
double rows_to_draw(const Session& session) {
    const ObjectSelection& obj = session.obj;
    const double lines = session.lin.count();
    const double points = session.pu.count();
    double rows = obj.obj_beob >= 1 && obj.obj_beob <= 3 ? lines : 0;
    for (const bool drawn : {obj.obj_pusi != 0, obj.obj_wert_lage != 0, obj.obj_wert_hoehe != 0}) {
        rows += drawn ? points : 0;
    }
    const double labels = points;
    return std::max(1.0, rows + labels);
}

/// Labels of an older view would stand at wrong places.
void hide_labels(Session& session) {
    for (Label& label : session.lbl_pubez) {
        label.visible = false;
    }
    session.lbl_pubez_placed.clear();
    HideGridLabels(session);
}

}  // namespace

void draw_observations(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    const ObjectSelection& obj = session.obj;
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
    if (session.obj.obj_pusi != 0) {
        DrawPointSignatures(session, frame, target);
    }
}

void draw_position_values(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    switch (session.obj.obj_wert_lage) {
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
    switch (session.obj.obj_wert_hoehe) {
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
    session.view_index.begin_counting();
    WatchedTarget watched(target, session.work, [&session, rows] {
        return static_cast<double>(session.view_index.rows_passed()) / rows;
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
    set_caption(session);
}

void end_picture(Session& session, UserInterface& ui, PictureMode mode) {
    if (session.pu.count() > 0 || session.lin.count() > 0) {
        offer_commands(session.window, mode);
    } else {
        withdraw_commands(session.window, mode);
        report_empty(session, ui);
    }
    set_pointer(session, ui, default_pointer);
}

bool DrawAll(Session& session, DrawingTarget& target, TextMeasurer& measurer, UserInterface& ui) {
    begin_picture(session, ui);
    const LayerFrame frame = screen_frame(session, measurer);
    session.lbl_pubez_font = frame.point_font;
    session.lbl_nubez_font = frame.district_font;
    const bool whole = draw_or_give_up(session, target, [&](DrawingTarget& watched) {
        if (session.obj.obj_verw != 0) {
            draw_boundaries_or_report(session, ui,
                                      [&] { DrawBoundaries(session, frame, watched); });
        }
        DrawGrid(session, frame, watched, view_ground(session.view));
        draw_network(session, frame, watched);
        DrawPointLabels(session, frame, watched);
    });
    end_picture(session, ui, PictureMode::screen);
    return whole;
}

}  // namespace veldra
