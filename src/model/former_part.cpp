#include "model/former_part.h"

#include <utility>

namespace veldra {

namespace {

/// Hands over what belongs to the points of a part beside their rows.
void move_labels(Part& from, Part& to) {
    to.nuoff = std::move(from.nuoff);
    to.epochen_bez = std::move(from.epochen_bez);
    to.lbl_pubez = std::move(from.lbl_pubez);
    to.lbl_nubez = std::move(from.lbl_nubez);
    to.lbl_pubez_placed = std::move(from.lbl_pubez_placed);
}

}  // namespace

FormerPart::FormerPart(Session& session, Points points, const ObjectSelection& obj)
    : session_(session),
      points_(points),
      plotmodus_(session.plotmodus),
      part_(std::exchange(session.part, begun_after(session.part))) {
    part_.obj = obj;
    if (points == Points::moved) {
        return;
    }
    session.part.pu = points == Points::copied ? part_.pu.copy() : std::move(part_.pu);
    move_labels(part_, session.part);
}

FormerPart::~FormerPart() {
    if (!replaced_) {
        restore();
    }
}

void FormerPart::replaced() {
    replaced_ = true;
    part_ = Part();
}

void FormerPart::restore() {
    Part& given_up = session_.part;
    if (points_ == Points::kept) {
        part_.pu = std::move(given_up.pu);
    }
    if (points_ != Points::moved) {
        move_labels(given_up, part_);
    }
    // Whoever has looked at the part that was given up must not take this one for it.
    part_.tables_revision = given_up.tables_revision + 1;
    session_.part = std::move(part_);
    session_.plotmodus = plotmodus_;
}

}  // namespace veldra
