#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/paper_text.h"
#include "model/session.h"
#include "plot/printer.h"
#include "text/user_interface.h"

namespace veldra {

/// Where a sheet stands among those of its part: columns count from the left, rows from the bottom,
/// both from 1.
struct SheetPlace {
    std::int16_t column = 1;
    std::int16_t columns = 1;
    std::int16_t row = 1;
    std::int16_t rows = 1;
};

/// A line of the legend as it is printed: an empty line 2 is left out, empty lines 3 and 4 have
/// their standard texts. Windows-1252.
struct LegendLine {
    std::string text;
    const Titelzeile* zeile = nullptr;
};
[[nodiscard]] std::vector<LegendLine> legend_lines(const Session& session);

/// The legend box, millimetres of paper, and what stands in it.
struct LegendSize {
    double width = 0;
    double height = 0;
    std::vector<LegendLine> lines = {};  ///< broken at blanks where the sheet is too narrow
    double shrink = 1;  ///< share of their size that the lines have, so that they fit on a sheet
};

/// Font of a title line; its size in points is not settled.
[[nodiscard]] FontSpec title_font(const Titelzeile& zeile);

/// Measures the legend, which fits on a sheet, and sets `session.legende` to the ground under it,
/// which is empty when
/// `plot_legendenlage` is none of the four corners. Counts the sheets first (see
/// count_plot_sheets).
LegendSize ComputeLegendSize(Session& session, PaperTextSize& paper_text);

/// Counts the sheets of the current part anew while `plot_blatt_auto` is set; counts are at least 1
/// afterwards. Throws FatalError beyond 16 bits.
void count_plot_sheets(Session& session);

/// Upper left corner of the legend box on a sheet, millimetres of the page; none if the legend
/// stands on another sheet.
[[nodiscard]] std::optional<PagePoint> legend_corner(const Session& session,
                                                     const LegendSize& legend,
                                                     const SheetPlace& place);

/// "Blatt 2.1 (3.2)": column and row, and how many there are.
[[nodiscard]] std::string sheet_title(const SheetPlace& place);

/// Draws corner marks, foot lines and, on its sheet, the legend on the printer's page, in
/// millimetres. Throws PrinterError.
void PlotFrame(Session& session, Printer& printer, const LegendSize& legend,
               const SheetPlace& place);

/// Tells the user that the printer did not do what it should.
void report_printer_failure(UserInterface& ui, const PrinterError& error);

}  // namespace veldra
