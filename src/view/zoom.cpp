#include "view/zoom.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldra {

namespace {

constexpr std::int16_t exact = 0;
constexpr std::int16_t with_margin = 1;
constexpr double smallest_view = 10.0;
/// What halving a view of just over the smallest leaves of it.
constexpr double closest_view = smallest_view / 2;
constexpr double smallest_band = 5.0;

double rw_span(const Viewport& view) {
    return view.ansicht_rw_max - view.ansicht_rw_min;
}
double hw_span(const Viewport& view) {
    return view.ansicht_hw_max - view.ansicht_hw_min;
}

bool can_go_closer(const Viewport& view) {
    return rw_span(view) > smallest_view && hw_span(view) > smallest_view;
}

void store_zoom(WindowState& window, const std::array<double, 4>& before, bool closer) {
    Undo step;
    step.undo_art = closer ? undo_kind::zoom_in : undo_kind::zoom_out;
    step.undo_wert = before;
    store_undo(window, step, closer ? undo_caption::zoom_in : undo_caption::zoom_out);
}

void remember_view(Session& session, bool closer) {
    const Viewport& view = session.view;
    store_zoom(session.window,
               {view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max, view.ansicht_hw_max},
               closer);
}

/// Moves each edge of the view outward by a share of its span.
void widen(Session& session, double share) {
    const Viewport view = session.view;
    const double w = rw_span(view) * share;
    const double h = hw_span(view) * share;
    FitView(session, view.ansicht_rw_min - w, view.ansicht_hw_min - h, view.ansicht_rw_max + w,
            view.ansicht_hw_max + h, exact);
}

}  // namespace

bool zoom_in(Session& session) {
    if (!can_go_closer(session.view)) {
        return false;
    }
    remember_view(session, true);
    widen(session, -0.25);
    return true;
}

void zoom_out(Session& session) {
    remember_view(session, false);
    widen(session, 0.5);
}

void shift_view(Session& session, ShiftTo direction) {
    const double w = rw_span(session.view) / 3;
    const double h = hw_span(session.view) / 3;
    switch (direction) {
        case ShiftTo::rechts:
            pan_view(session, w, 0);
            break;
        case ShiftTo::links:
            pan_view(session, -w, 0);
            break;
        case ShiftTo::hoch:
            pan_view(session, 0, h);
            break;
        case ShiftTo::runter:
            pan_view(session, 0, -h);
            break;
    }
}

void show_whole(Session& session) {
    const Extents& extents = session.extents;
    FitView(session, extents.gesamt_rw_min, extents.gesamt_hw_min, extents.gesamt_rw_max,
            extents.gesamt_hw_max, with_margin);
    clear_undo(session.window);
}

bool zoom_to_band(Session& session, const WorldPoint& a, const WorldPoint& b) {
    const auto [rw1, rw2] = std::minmax({a.rechts, b.rechts});
    const auto [hw1, hw2] = std::minmax({a.hoch, b.hoch});
    if (!(rw2 - rw1 > smallest_band && hw2 - hw1 > smallest_band)) {
        return false;
    }
    remember_view(session, true);
    FitView(session, rw1, hw1, rw2, hw2, exact);
    return true;
}

bool zoom_about(Session& session, const WorldPoint& fixed, double factor) {
    const bool closer = factor > 1;
    if (!std::isfinite(factor) || factor <= 0 || (closer && !can_go_closer(session.view))) {
        return false;
    }
    remember_view(session, closer);
    const Viewport view = session.view;
    factor = std::min(factor, std::min(rw_span(view), hw_span(view)) / closest_view);
    FitView(session, fixed.rechts + (view.ansicht_rw_min - fixed.rechts) / factor,
            fixed.hoch + (view.ansicht_hw_min - fixed.hoch) / factor,
            fixed.rechts + (view.ansicht_rw_max - fixed.rechts) / factor,
            fixed.hoch + (view.ansicht_hw_max - fixed.hoch) / factor, exact);
    return true;
}

void join_zooms(Session& session, const Undo& first) {
    const Viewport& view = session.view;
    const auto [rw1, hw1, rw2, hw2] = first.undo_wert;
    const bool closer = rw_span(view) < rw2 - rw1 || hw_span(view) < hw2 - hw1;
    store_zoom(session.window, first.undo_wert, closer);
}

void pan_view(Session& session, double rechts, double hoch) {
    const Viewport view = session.view;
    FitView(session, view.ansicht_rw_min + rechts, view.ansicht_hw_min + hoch,
            view.ansicht_rw_max + rechts, view.ansicht_hw_max + hoch, exact);
    clear_undo(session.window);
}

void undo_zoom(Session& session) {
    const auto [rw1, hw1, rw2, hw2] = session.window.undo.undo_wert;
    FitView(session, rw1, hw1, rw2, hw2, exact);
    clear_undo(session.window);
}

}  // namespace veldra
