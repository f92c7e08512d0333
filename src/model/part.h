#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/label.h"
#include "model/tables.h"
#include "model/text_measurer.h"
#include "model/titelzeile.h"
#include "model/view_index.h"

namespace veldra {

/// Box around everything shown, and smallest bare coordinates.
struct Extents {
    double gesamt_rw_min = 0;
    double gesamt_hw_min = 0;
    double gesamt_rw_max = 0;
    double gesamt_hw_max = 0;
    double roh_rw_min = 0;
    double roh_hw_min = 0;
};

/// Net area of a sheet and its margins, metres of paper.
struct SheetGeometry {
    double papier_breite = 0;
    double papier_hoehe = 0;
    double rand_links = 0;
    double rand_oben = 0;
    double rand_rechts = 0;
    double rand_unten = 0;
    std::int16_t plot_auto_rechts = 1;
    std::int16_t plot_auto_hoch = 1;
};

/// A network part as it has been read: its tables, its selection, its plot settings, and what
/// follows from them. It can be moved as a whole, so that a reading that is given up leaves the
/// former part as it was, and a plot can have a part of its own.
struct Part {
    /// Row of the table of parts; 0 in a file without parts.
    std::int32_t netz_aktuell = 0;
    PlotSettings plot;
    PlotSettings plot_merk;  ///< what the plot settings return to: seven of the nine
    /// Title lines. The first is the file's and the same in all of its parts, and so are the fonts;
    /// the texts of the others are the part's.
    std::array<Titelzeile, 4> titel;
    ObjectSelection obj;
    PointTable pu;
    LineTable lin;
    RowTable<NubezOffsetRow> nuoff;
    /// Labels of changes that were moved since the part was read, shown at present or not.
    EpochOffsets epochen_bez;
    /// Counts the rebuilds of pu and lin, so that what is derived from them knows its age.
    std::uint64_t tables_revision = 0;

    Extents extents;
    SheetGeometry sheet;

    // Labels, by the index of their row. Element 0 is the measuring sample.
    std::vector<Label> lbl_pubez;
    std::vector<Label> lbl_fzbez;
    std::vector<Label> lbl_nubez;
    // Fonts in which the last drawing placed labels.
    FontSpec lbl_pubez_font;
    FontSpec lbl_nubez_font;
    /// Rows of lbl_pubez that the last drawing placed, in their order; all others are hidden.
    std::vector<std::int32_t> lbl_pubez_placed;
    /// Finds rows of pu and lin by place; brought into line with them before each use.
    ViewIndex view_index;
};

/// What a reading of another part, or of the same one by another selection, begins with: what was
/// set for `former`, and no rows.
[[nodiscard]] Part begun_after(const Part& former);

/// Empties title lines 2 to 4, which are the part's own.
void clear_part_titles(Part& part);

}  // namespace veldra
