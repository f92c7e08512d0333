#pragma once

#include <optional>
#include <vector>

#include "drawing/geometry.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// The ground of all sheets together, without their margins.
[[nodiscard]] TargetBox plot_ground(const Session& session);

/// The ground of the sheet in a column and a row, both from 1 at the lower left.
[[nodiscard]] TargetBox sheet_ground(const Session& session, std::int64_t column, std::int64_t row);

/// Sheets of the division, from 1; none if the last is before the first.
struct SheetRange {
    std::int64_t first_column = 1;
    std::int64_t last_column = 0;
    std::int64_t first_row = 1;
    std::int64_t last_row = 0;

    [[nodiscard]] std::int64_t count() const {
        return last_column < first_column || last_row < first_row
                   ? 0
                   : (last_column - first_column + 1) * (last_row - first_row + 1);
    }
};

/// The sheets that share ground with `area`.
[[nodiscard]] SheetRange sheets_in(const Session& session, const TargetBox& area);

/// The lines between and around the sheets that are in view, ground coordinates, each once however
/// many sheets it parts, so that drawing them inverted twice leaves no trace. None without a plot
/// scale, and none where they would stand too close to be told apart.
[[nodiscard]] std::vector<Segment> sheet_outlines(const Session& session);

}  // namespace veldra
