#pragma once

#include <optional>

#include "model/desk.h"
#include "model/paper_text.h"
#include "model/session.h"
#include "plot/printer.h"
#include "plot/sheet_division.h"

namespace veldra {

/// Size of a text of one line in the metrics of a printer, millimetres of paper.
struct PrintedSize {
    double width = 0;
    double height = 0;
};
[[nodiscard]] PrintedSize printed_size(const FaceMetrics& face, double points,
                                       std::string_view text);

/// The application printer as the sheet division sees it.
class ApplicationSheets final : public SheetPrinter {
 public:
    ApplicationSheets(Session& session, Printer& printer) : session_(session), printer_(printer) {}

    /// Throws PrinterError.
    PrintableArea printable_area(std::int16_t ausrichtung) override;
    void ResetPrinter() override;

 private:
    Session& session_;
    Printer& printer_;
};

/// Text sizes of the application printer while it works, the estimate otherwise; which of them is
/// settled anew with each font.
class PaperTextOnDesk final : public PaperTextSize {
 public:
    /// `printer` may be null.
    PaperTextOnDesk(Session& session, TextMeasurer& screen, Printer* printer)
        : session_(session), estimate_(screen), printer_(printer) {}

    void set_font(const FontSpec& font, float digit_height) override;
    PaperExtent text_size(std::string_view text) override;

 private:
    /// The size in points that the printer needs; false if it cannot be told.
    bool fit(const FontSpec& font, float digit_height);

    Session& session_;
    EstimatedTextSize estimate_;
    Printer* printer_;
    const FaceMetrics* face_ = nullptr;  ///< of the printer; null: the estimate serves
    std::int16_t points_ = 0;
};

/// Division into sheets with the application printer of the desk, or without one. A part without
/// plot settings also gets a place for its legend (see choose_legend_place).
void ComputeSheetDivision(Session& session, const Desk& desk);

/// `choose_plot_scale` with the application printer of the desk, or without one.
void choose_plot_scale(Session& session, const Desk& desk);

/// Extents with the text sizes of the application printer of the desk, or with the estimate.
void ComputeExtents(Session& session, const Desk& desk);

/// `papier_*` and the margins with the application printer of the desk, or without one.
void ComputePaperArea(Session& session, const Desk& desk);

}  // namespace veldra
