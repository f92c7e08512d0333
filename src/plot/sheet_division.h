#pragma once

#include <cstdint>

#include "model/paper_text.h"
#include "model/session.h"
#include "model/text_measurer.h"
#include "text/fatal_error.h"

namespace veldra {

/// The edge that is wider, to bind the sheets there.
inline constexpr std::int16_t heftrand_oben = 1;
inline constexpr std::int16_t heftrand_links = 2;
inline constexpr std::int16_t kein_heftrand = 3;

/// Printable area of a sheet, millimetres.
struct PrintableArea {
    float breite = 0;
    float hoehe = 0;
};

/// What the sheet division asks of the application printer.
class SheetPrinter {
 public:
    virtual ~SheetPrinter() = default;
    /// Turns the paper (1 Hochformat, 2 Querformat) and tells the printable area.
    virtual PrintableArea printable_area(std::int16_t ausrichtung) = 0;
    virtual void ResetPrinter() = 0;
};

/// The sheets of a part cannot be counted in 16 bits. what() names file, part and field, and what
/// lies farthest out with its record.
class SheetOverflow : public FatalError {
 public:
    using FatalError::FatalError;
};

/// Sets `papier_*` and the four margins from orientation and binding margin, metres of paper.
/// The printer serves while `drucker_ok` is -1; without one (null) fixed sizes of A4 stand in, and
/// an orientation other than 1 and 2 starts from the sizes held so far.
void ComputePaperArea(Session& session, SheetPrinter* printer);

/// The part has neither points nor lines. Nothing of it will ever stand on a sheet, so its sheets
/// are not counted, however far away its zero point is.
[[nodiscard]] inline bool part_is_empty(const Session& session) {
    return session.pu.count() == 0 && session.lin.count() == 0;
}

/// Sets the four margins for a binding margin and takes them off `papier_*`, which hold the
/// printable area before and the net area afterwards, metres of paper.
void take_off_margins(SheetGeometry& sheet, std::int16_t heftrand);

/// Sheets that an extent (metres of ground) needs on one axis at the current plot scale: the extent
/// on paper divided by the net length (metres of paper), whole part and one, at least 1. An extent
/// that exactly fills a sheet asks for two. Throws SheetOverflow naming `field` beyond 16 bits.
[[nodiscard]] std::int16_t sheet_count(const Session& session, double extent, double net,
                                       const char* field);

/// Whether the sheets from the zero point to the end of the extents can be counted in 16 bits, on
/// either axis.
[[nodiscard]] bool sheets_can_be_counted(const Session& session);

/// Brings the current part's plot settings to a consistent state: chooses orientation and scale
/// where there are none, fills the extents, and counts the sheets. Gives the net area and margins
/// of the orientation taken; where it was chosen here, `papier_*` and the counts stay those of the
/// last one tried. Throws SheetOverflow when a count leaves 16 bits. For an empty part it only
/// fills the extents.
SheetGeometry ComputeSheetDivision(Session& session, PaperTextSize& paper_text,
                                   SheetPrinter* printer);
/// The same without a printer.
void ComputeSheetDivision(Session& session, TextMeasurer& measurer);

/// Sets the plot scale of the current part to the largest offered one at which it fits on one sheet
/// of its orientation and binding margin, to the smallest if it fits at none, and fills the
/// extents.
void choose_plot_scale(Session& session, PaperTextSize& paper_text, SheetPrinter* printer);

}  // namespace veldra
