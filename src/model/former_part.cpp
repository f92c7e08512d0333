#include "model/former_part.h"

#include <utility>

namespace veldra {

FormerPart::FormerPart(Session& session, Points points, const ObjectSelection& obj)
    : session_(session),
      points_(points),
      netz_aktuell_(session.part.netz_aktuell),
      plotmodus_(session.plotmodus),
      plot_(session.part.plot),
      plot_merk_(session.part.plot_merk),
      titel_(session.part.titel),
      obj_(obj),
      extents_(session.part.extents),
      sheet_(session.part.sheet),
      lin_(std::exchange(session.part.lin, LineTable())),
      lbl_fzbez_(std::exchange(session.part.lbl_fzbez, {})) {
    if (points == Points::copied) {
        pu_ = session.part.pu.copy();
    } else if (points == Points::moved) {
        pu_ = std::exchange(session.part.pu, PointTable());
        nuoff_ = std::exchange(session.part.nuoff, RowTable<NubezOffsetRow>());
        lbl_pubez_ = std::exchange(session.part.lbl_pubez, {});
        lbl_nubez_ = std::exchange(session.part.lbl_nubez, {});
    }
    ++session.part.tables_revision;
}

FormerPart::~FormerPart() {
    if (!replaced_) {
        restore();
    }
}

void FormerPart::replaced() {
    replaced_ = true;
    lin_ = LineTable();
    pu_ = PointTable();
}

void FormerPart::restore() {
    session_.part.netz_aktuell = netz_aktuell_;
    session_.plotmodus = plotmodus_;
    session_.part.plot = plot_;
    session_.part.plot_merk = plot_merk_;
    session_.part.titel = std::move(titel_);
    session_.part.obj = obj_;
    session_.part.extents = extents_;
    session_.part.sheet = sheet_;
    session_.part.lin = std::move(lin_);
    session_.part.lbl_fzbez = std::move(lbl_fzbez_);
    restore_points();
    ++session_.part.tables_revision;
}

void FormerPart::restore_points() {
    if (points_ == Points::kept) {
        return;
    }
    session_.part.pu = std::move(pu_);
    if (points_ == Points::moved) {
        session_.part.nuoff = std::move(nuoff_);
        session_.part.lbl_pubez = std::move(lbl_pubez_);
        session_.part.lbl_nubez = std::move(lbl_nubez_);
    }
}

}  // namespace veldra
