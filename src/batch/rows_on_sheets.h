#pragma once

#include <cstdint>
#include <vector>

#include "model/session.h"
#include "model/text_measurer.h"
#include "plot/paper_frame.h"

namespace veldra::batch {

/// Rows of a table, by their index.
using RowMarks = std::vector<bool>;

/// Rows of which something is drawn on at least one sheet of the current part.
struct RowsOnSheets {
    RowMarks lines;            ///< of `lin`
    RowMarks signatures;       ///< of `pu`: signature, or the dot that stands for it
    RowMarks labels;           ///< of `pu`: point or epoch label, blank ones too
    RowMarks position_values;  ///< of `pu`
    RowMarks height_values;    ///< of `pu`
};

/// Draws the layers of the current part, without output, on the ground of all its sheets: these lie
/// edge to edge, so what is drawn on one of them is drawn there. The labels in the session are
/// placed anew.
[[nodiscard]] RowsOnSheets rows_on_sheets(Session& session, const PaperFonts& fonts,
                                          TextMeasurer& measurer);

}  // namespace veldra::batch
