#include "model/part.h"

namespace veldra {

Part begun_after(const Part& former) {
    Part part;
    part.netz_aktuell = former.netz_aktuell;
    part.plot = former.plot;
    part.plot_merk = former.plot_merk;
    part.titel = former.titel;
    part.obj = former.obj;
    part.tables_revision = former.tables_revision + 1;
    part.extents = former.extents;
    part.sheet = former.sheet;
    part.lbl_pubez_font = former.lbl_pubez_font;
    part.lbl_nubez_font = former.lbl_nubez_font;
    return part;
}

void clear_part_titles(Part& part) {
    for (std::size_t i = 1; i < part.titel.size(); ++i) {
        part.titel[i].setTitelText("");
    }
}

}  // namespace veldra
