#include "view/sheet_moving.h"

#include <cstdint>

#include "drawing/districts.h"
#include "view/extents.h"
#include "view/viewport.h"

namespace veldra {

namespace {

void remember_origin(Session& session, const char* caption) {
    Undo step;
    step.undo_art = undo_kind::sheets;
    step.undo_wert = {session.plot.plot_null_rechts, session.plot.plot_null_hoch};
    store_undo(session.window, step, caption);
}

}  // namespace

void hide_sheet_texts(Session& session) {
    constexpr std::int16_t on_the_edge = 2;
    if (session.obj.obj_nube != 0 && session.obj.obj_nbez == on_the_edge) {
        HideGridLabels(session);
    }
    session.window.lbl_legende_visible = false;
    session.window.sheets_moving = true;
}

void begin_sheet_drag(Session& session) {
    hide_sheet_texts(session);
    remember_origin(session, undo_caption::sheets);
}

void move_sheets(Session& session, double rechts, double hoch) {
    session.plot.plot_null_rechts += rechts;
    session.plot.plot_null_hoch += hoch;
}

void fit_plot_origin(Session& session, PaperTextSize& paper_text) {
    constexpr std::int16_t exact = 0;
    remember_origin(session, undo_caption::plot_origin);
    hide_sheet_texts(session);
    ComputeExtents(session, paper_text);
    const Viewport view = session.view;
    FitView(session, view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max,
            view.ansicht_hw_max, exact);
    session.plot.plot_null_rechts = session.extents.gesamt_rw_min;
    session.plot.plot_null_hoch = session.extents.gesamt_hw_min;
}

void undo_sheet_move(Session& session) {
    hide_sheet_texts(session);
    session.plot.plot_null_rechts = session.window.undo.undo_wert[0];
    session.plot.plot_null_hoch = session.window.undo.undo_wert[1];
    clear_undo(session.window);
}

}  // namespace veldra
