#include "plot/printer_adapters.h"

#include "plot/application_printer.h"
#include "plot/legend_place.h"
#include "text/length_units.h"
#include "view/extents.h"

namespace veldra {

namespace {

std::optional<ApplicationSheets> sheets_of(Session& session, const Desk& desk) {
    return desk.printer == nullptr
               ? std::nullopt
               : std::optional<ApplicationSheets>(std::in_place, session, *desk.printer);
}
}  // namespace

PrintedSize printed_size(const FaceMetrics& face, double points, std::string_view text) {
    const TextExtent twips = measure_text(face, points, text);
    return {twips.width * millimetres_per_twip, twips.height * millimetres_per_twip};
}

PrintableArea ApplicationSheets::printable_area(std::int16_t ausrichtung) {
    printer_.set_Orientation(ausrichtung);
    return {printer_.ScaleWidth(scale_millimetres), printer_.ScaleHeight(scale_millimetres)};
}

void ApplicationSheets::ResetPrinter() {
    veldra::ResetPrinter(session_, printer_);
}

bool PaperTextOnDesk::fit(const FontSpec& font, float digit_height) {
    if (printer_ == nullptr || session_.printer.drucker_ok != table_true) {
        return false;
    }
    try {
        FitPrinterFont(session_, *printer_, digit_height, font, points_);
        face_ = &printer_->measurer().face_metrics(font);
    } catch (const PrinterError&) {
        mark_printer_unavailable(session_);
        return false;
    }
    return true;
}

void PaperTextOnDesk::set_font(const FontSpec& font, float digit_height) {
    if (!fit(font, digit_height)) {
        face_ = nullptr;
        estimate_.set_font(font, digit_height);
    }
}

PaperExtent PaperTextOnDesk::text_size(std::string_view text) {
    if (face_ == nullptr) {
        return estimate_.text_size(text);
    }
    const PrintedSize size = printed_size(*face_, points_, text);
    return {size.width / 1000, size.height / 1000};
}

void ComputeSheetDivision(Session& session, const Desk& desk) {
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    auto sheets = sheets_of(session, desk);
    const bool never_plotted = session.plot.plot_ausrichtung == -99;
    const SheetGeometry paper = ComputeSheetDivision(session, text, sheets ? &*sheets : nullptr);
    if (never_plotted) {
        choose_legend_place(session, desk, paper);
        plot_merken(session, 2);
    }
}

void choose_plot_scale(Session& session, const Desk& desk) {
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    auto sheets = sheets_of(session, desk);
    choose_plot_scale(session, text, sheets ? &*sheets : nullptr);
}

void ComputeExtents(Session& session, const Desk& desk) {
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    ComputeExtents(session, text);
}

void ComputePaperArea(Session& session, const Desk& desk) {
    auto sheets = sheets_of(session, desk);
    ComputePaperArea(session, sheets ? &*sheets : nullptr);
}

}  // namespace veldra
