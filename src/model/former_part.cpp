#include "model/former_part.h"

#include <utility>

namespace veldra {

FormerPart::FormerPart(Session& session, Points points, const ObjectSelection& obj)
    : session_(session),
      points_(points),
      netz_aktuell_(session.netz_aktuell),
      plotmodus_(session.plotmodus),
      plot_(session.plot),
      plot_merk_(session.plot_merk),
      titel_(session.titel),
      obj_(obj),
      extents_(session.extents),
      sheet_(session.sheet),
      lin_(std::exchange(session.lin, LineTable())),
      lbl_fzbez_(std::exchange(session.lbl_fzbez, {})) {
    if (points == Points::copied) {
        pu_ = session.pu.copy();
    } else if (points == Points::moved) {
        pu_ = std::exchange(session.pu, PointTable());
        nuoff_ = std::exchange(session.nuoff, RowTable<NubezOffsetRow>());
        epochen_bez_ = std::exchange(session.epochen_bez, {});
        lbl_pubez_ = std::exchange(session.lbl_pubez, {});
        lbl_nubez_ = std::exchange(session.lbl_nubez, {});
    }
    ++session.tables_revision;
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
    session_.netz_aktuell = netz_aktuell_;
    session_.plotmodus = plotmodus_;
    session_.plot = plot_;
    session_.plot_merk = plot_merk_;
    session_.titel = std::move(titel_);
    session_.obj = obj_;
    session_.extents = extents_;
    session_.sheet = sheet_;
    session_.lin = std::move(lin_);
    session_.lbl_fzbez = std::move(lbl_fzbez_);
    restore_points();
    ++session_.tables_revision;
}

void FormerPart::restore_points() {
    if (points_ == Points::kept) {
        return;
    }
    session_.pu = std::move(pu_);
    if (points_ == Points::moved) {
        session_.nuoff = std::move(nuoff_);
        session_.epochen_bez = std::move(epochen_bez_);
        session_.lbl_pubez = std::move(lbl_pubez_);
        session_.lbl_nubez = std::move(lbl_nubez_);
    }
}

}  // namespace veldra
