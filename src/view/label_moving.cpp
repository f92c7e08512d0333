#include "view/label_moving.h"

#include <algorithm>
#include <string>

#include "drawing/districts.h"
#include "model/undo.h"
#include "view/pointing.h"

namespace veldra {

namespace {

const std::vector<Label>* labels_of(const Session& session, LabelArray array) {
    switch (array) {
        case LabelArray::lbl_pubez:
            return &session.lbl_pubez;
        case LabelArray::lbl_nubez:
            return &session.lbl_nubez;
        case LabelArray::lbl_fzbez:
            break;
    }
    return nullptr;
}

/// How far the mouse has gone, metres of ground to the east and to the south.
struct MouseWay {
    double east = 0;
    double south = 0;
};

MouseWay way(const Session& session, const LabelDrag& drag, float x, float y) {
    const double unit = session.view.ansicht_masseinheit;
    return {static_cast<double>(x - drag.x0) * unit, static_cast<double>(y - drag.y0) * unit};
}

double picture_x(const Session& session, double rechts) {
    return rechts - session.view.ansicht_rw_min;
}
double picture_y(const Session& session, double hoch) {
    return hoch - session.view.ansicht_hw_min;
}

void drop_point_label(Session& session, std::int32_t i, const MouseWay& moved) {
    PointRow& row = session.pu[i];
    Label& label = session.lbl_pubez[static_cast<std::size_t>(i)];
    Undo step{undo_kind::point_label, i, {row.pu_bez_rechts, row.pu_bez_hoch}};
    step.undo_satz = row.pu_satz;
    step.undo_satz_neu = !session.epochen_bez.contains(row.pu_satz);
    store_undo(session.window, step, undo_caption::point_label);
    const WorldPoint anchor = label_anchor(session, i);
    const double a_r = picture_x(session, anchor.rechts);
    const double a_h = picture_y(session, anchor.hoch);
    const auto height = static_cast<double>(label.height);
    move_point_label(session, i,
                     {(moved.east + static_cast<double>(label.left) - a_r) / height * 100,
                      (static_cast<double>(label.top) - a_h - moved.south) / height * 100});
    label.left = static_cast<float>(height * row.pu_bez_rechts / 100 + a_r);
    label.top = static_cast<float>(height * row.pu_bez_hoch / 100 + a_h);
    session.view_index.label_moved(i);
}

/// The stored place of the district label `i`, with the text that it is stored under.
struct DistrictPlace {
    std::string key;
    NumbezOffset stored;
};

DistrictPlace district_place(const Session& session, std::int32_t i) {
    const std::string& key = district_cache(session).grid.grid_bez[static_cast<std::size_t>(i)];
    return {key, FindNumbezOffset(session, key)};
}

/// Puts a district label's lower left corner on the place of its row.
void set_on_place(Session& session, std::int32_t i, const NubezOffsetRow& row) {
    Label& label = session.lbl_nubez[static_cast<std::size_t>(i)];
    label.left = static_cast<float>(picture_x(session, row.nuoff_rechts));
    label.top =
        static_cast<float>(static_cast<double>(label.height) + picture_y(session, row.nuoff_hoch));
}

void drop_district_label(Session& session, std::int32_t i, const MouseWay& moved) {
    const Label& label = session.lbl_nubez[static_cast<std::size_t>(i)];
    DistrictPlace place = district_place(session, i);
    const DistrictGrid& grid = district_cache(session).grid;
    Undo step{undo_kind::district_label, i, {place.stored.rechts, place.stored.hoch}};
    if (!place.stored.found()) {
        const auto node = static_cast<std::size_t>(i);
        step.undo_wert = {grid.grid_rechts[node], grid.grid_hoch[node]};
        place.stored.row = session.nuoff.append();
        session.nuoff[place.stored.row].nuoff_bez = place.key;
    }
    store_undo(session.window, step, undo_caption::district_label);
    NubezOffsetRow& row = session.nuoff[place.stored.row];
    row.nuoff_rechts = static_cast<double>(label.left) + session.view.ansicht_rw_min + moved.east;
    row.nuoff_hoch = static_cast<double>(label.top) + session.view.ansicht_hw_min - moved.south -
                     static_cast<double>(label.height);
    set_on_place(session, i, row);
}

/// A label that was dropped out of view may have been hidden by a drawing since.
void show_again(Session& session, std::int32_t i) {
    Label& label = session.lbl_pubez[static_cast<std::size_t>(i)];
    if (!label.visible) {
        label.visible = true;
        label.enabled = true;
        std::vector<std::int32_t>& placed = session.lbl_pubez_placed;
        placed.insert(std::upper_bound(placed.begin(), placed.end(), i), i);
    }
}

/// The row of the step's label; 0 if the selection has none.
std::int32_t row_of(const Session& session, const Undo& step) {
    if (step.undo_satz == 0) {
        return step.undo_index >= 1 && step.undo_index <= session.pu.count() ? step.undo_index : 0;
    }
    for (std::int32_t i = session.pu.count(); i > session.pu.pu_anzahl_signatur; --i) {
        if (session.pu[i].pu_satz == step.undo_satz) {
            return i;
        }
    }
    return 0;
}

void undo_move_of_change(Session& session, const Undo& step) {
    if (step.undo_satz_neu) {
        session.epochen_bez.erase(step.undo_satz);
    } else {
        EpochOffset& offset = session.epochen_bez[step.undo_satz];
        offset.rechts = step.undo_wert[0];
        offset.hoch = step.undo_wert[1];
    }
}

void undo_point_label(Session& session, const Undo& step) {
    if (step.undo_satz != 0) {
        undo_move_of_change(session, step);
    }
    const std::int32_t i = row_of(session, step);
    if (i == 0) {
        return;
    }
    PointRow& row = session.pu[i];
    row.pu_bez_rechts = step.undo_wert[0];
    row.pu_bez_hoch = step.undo_wert[1];
    session.view_index.label_moved(i);
    if (find_label(session, LabelArray::lbl_pubez, i) == nullptr ||
        (step.undo_satz != 0 && session.obj.obj_epbe == table_false)) {
        return;  // the label is not shown
    }
    Label& label = session.lbl_pubez[static_cast<std::size_t>(i)];
    const bool moved = row.pu_bez_rechts != 0;
    const double off_r = moved ? row.pu_bez_rechts : session.settings.stanplt;
    const double off_h = moved ? row.pu_bez_hoch : session.settings.stanptp;
    const auto height = static_cast<double>(label.height);
    label.left = static_cast<float>(height * off_r / 100 + picture_x(session, row.pu_rechts));
    label.top = static_cast<float>(height * off_h / 100 + picture_y(session, row.pu_hoch));
    show_again(session, i);
}

void undo_district_label(Session& session, const Undo& step) {
    const std::int32_t i = step.undo_index;
    if (!is_node_label(session, i)) {
        return;
    }
    const NumbezOffset stored = district_place(session, i).stored;
    if (!stored.found()) {
        return;
    }
    NubezOffsetRow& row = session.nuoff[stored.row];
    row.nuoff_rechts = step.undo_wert[0];
    row.nuoff_hoch = step.undo_wert[1];
    set_on_place(session, i, row);
}

}  // namespace

void move_point_label(Session& session, std::int32_t i, const EpochOffset& offset) {
    PointRow& row = session.pu[i];
    row.pu_bez_rechts = offset.rechts;
    row.pu_bez_hoch = offset.hoch;
    if (row.pu_satz != 0) {
        EpochOffset& moved = session.epochen_bez[row.pu_satz];
        moved = offset;
        moved.pu_rechts = row.pu_rechts;
        moved.pu_hoch = row.pu_hoch;
        moved.pu_epoche = row.pu_epoche;
        moved.hoehe = row.pu_wert_hoehe != 0;
        moved.pu_bez = row.pu_bez;
    }
}

const Label* find_label(const Session& session, LabelArray array, std::int32_t index) {
    const std::vector<Label>* labels = labels_of(session, array);
    const auto element = static_cast<std::size_t>(index);
    return labels != nullptr && index >= 1 && element < labels->size() ? &(*labels)[element]
                                                                       : nullptr;
}

bool can_be_dragged(const Session& session, LabelArray array, std::int32_t index) {
    const Label* label = find_label(session, array, index);
    return label != nullptr && label->caption.find_first_not_of(' ') != std::string::npos &&
           (array == LabelArray::lbl_pubez || is_node_label(session, index));
}

GhostBox ghost_box(const Session& session, const LabelDrag& drag, float x, float y) {
    const Label* label = find_label(session, drag.array, drag.index);
    if (label == nullptr) {
        return {};
    }
    const MouseWay moved = way(session, drag, x, y);
    return {static_cast<float>(static_cast<double>(label->left) + moved.east),
            static_cast<float>(static_cast<double>(label->top) - moved.south), label->width,
            label->height};
}

void drop_label(Session& session, const LabelDrag& drag, float x, float y) {
    if (!can_be_dragged(session, drag.array, drag.index)) {
        return;
    }
    const MouseWay moved = way(session, drag, x, y);
    if (drag.array == LabelArray::lbl_pubez) {
        drop_point_label(session, drag.index, moved);
    } else {
        drop_district_label(session, drag.index, moved);
    }
}

void undo_label_move(Session& session) {
    const Undo step = session.window.undo;
    if (step.undo_art == undo_kind::point_label) {
        undo_point_label(session, step);
    } else {
        undo_district_label(session, step);
    }
    clear_undo(session.window);
}

}  // namespace veldra
