#include "commands/plot_to_pdf.h"

#include <cmath>
#include <optional>

#include "commands/plot_job.h"
#include "pdf/pdf_printer.h"
#include "plot/paper_codes.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

/// Drivers count their papers in points.
constexpr float paper_tolerance = 20;  // twips

bool has_size(PdfPrinter& device, const PlotPaper& paper) {
    return std::abs(device.Width() - paper.width) <= paper_tolerance &&
           std::abs(device.Height() - paper.height) <= paper_tolerance;
}

void take_paper(PdfPrinter& device, const PlotPaper& paper, std::int16_t orientation) {
    device.set_Orientation(orientation);
    device.set_PaperSize(paper.code);
    if (!has_size(device, paper)) {
        device.set_PaperSize(user_defined_paper_code);
        device.set_Width(paper.width);
        device.set_Height(paper.height);
    }
    device.set_printable_area(paper.printable_width, paper.printable_height);
}

}  // namespace

void plot_als_pdf(Session& session, const std::string& path, const Desk& desk) {
    PdfPrinter device([&path] { return std::optional(path); });
    try {
        take_paper(device, plot_paper(session, desk), session.plot.plot_ausrichtung);
        plot_on_device(session, device, desk);
    } catch (const PrinterError& error) {
        throw FatalError(error.what());
    }
}

}  // namespace veldra
