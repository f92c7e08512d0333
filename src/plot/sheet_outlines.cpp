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
    const double s = session.plot.plot_massstab;
    return {session.sheet.papier_breite / s, session.sheet.papier_hoehe / s};
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

}  // namespace

TargetBox plot_ground(const Session& session) {
    const PlotSettings& plot = session.plot;
    const double s = plot.plot_massstab;
    const SheetGeometry& sheet = session.sheet;
    return {plot.plot_null_rechts, plot.plot_null_hoch,
            plot.plot_null_rechts + plot.plot_blatt_rechts * sheet.papier_breite / s,
            plot.plot_null_hoch + plot.plot_blatt_hoch * sheet.papier_hoehe / s};
}

TargetBox sheet_ground(const Session& session, std::int64_t column, std::int64_t row) {
    const PlotSettings& plot = session.plot;
    const double s = plot.plot_massstab;
    const SheetGeometry& sheet = session.sheet;
    const auto c = static_cast<double>(column);
    const auto r = static_cast<double>(row);
    return {plot.plot_null_rechts + (c - 1) * sheet.papier_breite / s,
            plot.plot_null_hoch + (r - 1) * sheet.papier_hoehe / s,
            plot.plot_null_rechts + c * sheet.papier_breite / s,
            plot.plot_null_hoch + r * sheet.papier_hoehe / s};
}

SheetRange sheets_in(const Session& session, const TargetBox& area) {
    const PlotSettings& plot = session.plot;
    const SheetSides sides = sheet_sides(session);
    const IndexRange columns = sheets_along(plot.plot_null_rechts, sides.breite,
                                            plot.plot_blatt_rechts, area.xmin, area.xmax);
    const IndexRange rows =
        sheets_along(plot.plot_null_hoch, sides.hoehe, plot.plot_blatt_hoch, area.ymin, area.ymax);
    return {columns.first, columns.last, rows.first, rows.last};
}

std::vector<Segment> sheet_outlines(const Session& session) {
    const PlotSettings& plot = session.plot;
    const TargetBox all = plot_ground(session);
    std::vector<Segment> lines;
    if (!(plot.plot_massstab > 0)) {
        return lines;
    }
    for (std::int64_t column = 1; column <= plot.plot_blatt_rechts + 1; ++column) {
        const double x = sheet_ground(session, column, 1).xmin;
        lines.push_back({x, all.ymin, x, all.ymax});
    }
    for (std::int64_t row = 1; row <= plot.plot_blatt_hoch + 1; ++row) {
        const double y = sheet_ground(session, 1, row).ymin;
        lines.push_back({all.xmin, y, all.xmax, y});
    }
    return lines;
}

}  // namespace veldra
