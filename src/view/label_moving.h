#pragma once

#include <cstdint>

#include "model/label.h"
#include "model/session.h"

namespace veldra {

/// A label that the user holds with the left button. Mouse places are twips, y downward.
struct LabelDrag {
    LabelArray array = LabelArray::lbl_pubez;
    std::int32_t index = 0;
    float x0 = 0;  ///< where the mouse was pressed
    float y0 = 0;
};

/// The frame that follows the mouse, in metres like a label's box.
struct GhostBox {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
};

/// The label that an array has at an index; null if there is none.
[[nodiscard]] const Label* find_label(const Session& session, LabelArray array, std::int32_t index);

/// The label has a text to hold it by, and a place that can be stored.
[[nodiscard]] bool can_be_dragged(const Session& session, LabelArray array, std::int32_t index);

/// The ghost with the mouse at (x, y).
[[nodiscard]] GhostBox ghost_box(const Session& session, const LabelDrag& drag, float x, float y);

/// Gives the label of row `i` these offsets, percent of its height, for its record as well if it is
/// a change's. Neither the label's box nor undo follows.
void move_point_label(Session& session, std::int32_t i, const EpochOffset& offset);

/// Lets the label go at (x, y), wherever that is: its offsets or its stored place change, the label
/// moves, and the step can be undone. The caller paints the labels anew; the layers stay.
void drop_label(Session& session, const LabelDrag& drag, float x, float y);

/// Takes the last move of a point label or district label back. The label of a point is put
/// relative to the point itself, even where it belongs to a vector's tip; the next drawing puts
/// such a label right. The label of a change is found by its record, whatever has been selected
/// since; one that is not shown only has its place again.
void undo_label_move(Session& session);

}  // namespace veldra
