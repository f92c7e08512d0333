#include "view/sheet_moving.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "reference/districts.h"
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

/// Numbers of the sheet edges from 0 to `count` that lie between two places of an axis, so that a
/// division into thousands of sheets costs what is in view.
template <typename Edge>
void visit_edges(double origin, double length, int count, double from, double to, Edge&& edge) {
    const auto at_most = static_cast<double>(count);
    const auto first =
        static_cast<int>(std::clamp(std::floor((from - origin) / length), 0.0, at_most + 1));
    const auto last =
        static_cast<int>(std::clamp(std::ceil((to - origin) / length), -1.0, at_most));
    for (int k = first; k <= last; ++k) {
        edge(origin + k * length);
    }
}

}  // namespace

std::vector<Segment> sheet_lines(const Session& session) {
    const PlotSettings& plot = session.plot;
    const double width = session.sheet.papier_breite / plot.plot_massstab;
    const double height = session.sheet.papier_hoehe / plot.plot_massstab;
    if (!(plot.plot_massstab > 0 && width > 0 && height > 0)) {
        return {};
    }
    // Lines closer than this many to the view would be a grey area.
    constexpr double most_sheets_in_view = 2000;
    const Viewport& view = session.view;
    const double view_width = view.ansicht_rw_max - view.ansicht_rw_min;
    const double view_height = view.ansicht_hw_max - view.ansicht_hw_min;
    if (view_width / width > most_sheets_in_view || view_height / height > most_sheets_in_view) {
        return {};
    }
    const double left = plot.plot_null_rechts;
    const double bottom = plot.plot_null_hoch;
    const double right = left + plot.plot_blatt_rechts * width;
    const double top = bottom + plot.plot_blatt_hoch * height;
    std::vector<Segment> lines;
    visit_edges(left, width, plot.plot_blatt_rechts, view.ansicht_rw_min, view.ansicht_rw_max,
                [&](double x) {
                    lines.push_back({x, bottom, x, top});
                });
    visit_edges(bottom, height, plot.plot_blatt_hoch, view.ansicht_hw_min, view.ansicht_hw_max,
                [&](double y) {
                    lines.push_back({left, y, right, y});
                });
    return lines;
}

void hide_sheet_texts(Session& session) {
    constexpr std::int16_t on_the_edge = 2;
    if (session.obj.obj_nube != 0 && session.obj.obj_nbez == on_the_edge) {
        HideGridLabels(session);
    }
    session.window.lbl_legende_visible = false;
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
