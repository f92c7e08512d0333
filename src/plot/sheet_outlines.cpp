#include "plot/sheet_outlines.h"

#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

/// Net sides of a sheet on the ground, metres.
struct SheetSides {
    double breite = 0;
    double hoehe = 0;
};

SheetSides sheet_sides(const Session& session) {
    const double s = session.part.plot.plot_massstab;
    return {session.part.sheet.papier_breite / s, session.part.sheet.papier_hoehe / s};
}

struct IndexRange {
    std::int64_t first = 1;
    std::int64_t last = 0;
};

/// Sheets from 1 to `count` along one axis that share more than an edge with [min, max].
IndexRange sheets_along(double null, double side, std::int64_t count, double min, double max) {
    const auto sheets = static_cast<double>(count);
    if (!(side > 0) || !(min < max)) {
        return {};
    }
    const double first = std::clamp(std::floor((min - null) / side) + 1, 1.0, sheets + 1);
    const double last = std::clamp(std::ceil((max - null) / side), 0.0, sheets);
    return {static_cast<std::int64_t>(first), static_cast<std::int64_t>(last)};
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

TargetBox plot_ground(const Session& session) {
    const PlotSettings& plot = session.part.plot;
    const double s = plot.plot_massstab;
    const SheetGeometry& sheet = session.part.sheet;
    return {plot.plot_null_rechts, plot.plot_null_hoch,
            plot.plot_null_rechts + plot.plot_blatt_rechts * sheet.papier_breite / s,
            plot.plot_null_hoch + plot.plot_blatt_hoch * sheet.papier_hoehe / s};
}

TargetBox sheet_ground(const Session& session, std::int64_t column, std::int64_t row) {
    const PlotSettings& plot = session.part.plot;
    const double s = plot.plot_massstab;
    const SheetGeometry& sheet = session.part.sheet;
    const auto c = static_cast<double>(column);
    const auto r = static_cast<double>(row);
    return {plot.plot_null_rechts + (c - 1) * sheet.papier_breite / s,
            plot.plot_null_hoch + (r - 1) * sheet.papier_hoehe / s,
            plot.plot_null_rechts + c * sheet.papier_breite / s,
            plot.plot_null_hoch + r * sheet.papier_hoehe / s};
}

SheetRange sheets_in(const Session& session, const TargetBox& area) {
    const PlotSettings& plot = session.part.plot;
    const SheetSides sides = sheet_sides(session);
    const IndexRange columns = sheets_along(plot.plot_null_rechts, sides.breite,
                                            plot.plot_blatt_rechts, area.xmin, area.xmax);
    const IndexRange rows =
        sheets_along(plot.plot_null_hoch, sides.hoehe, plot.plot_blatt_hoch, area.ymin, area.ymax);
    return {columns.first, columns.last, rows.first, rows.last};
}

std::vector<Segment> sheet_outlines(const Session& session) {
    const PlotSettings& plot = session.part.plot;
    const double width = session.part.sheet.papier_breite / plot.plot_massstab;
    const double height = session.part.sheet.papier_hoehe / plot.plot_massstab;
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

}  // namespace veldra
