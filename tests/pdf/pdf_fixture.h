#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include "pdf/pdf_printer.h"
#include "pdf_reader.h"
#include "temp_file.h"

namespace veldra::pdf_test {

/// A printer that writes to a file of the test's own folder, and readers of that file.
class PdfFile : public ::testing::Test {
 protected:
    using Drawing = std::function<void(PageTarget&)>;

    /// Writes a document of one page on the printer's paper.
    void write(PdfPrinter& printer, const Drawing& draw) const {
        ASSERT_TRUE(printer.begin_job({"Titel"}));
        printer.begin_sheet({"Netzteil", "Blatt"});
        draw(printer.page());
        printer.NewPage();
        printer.end_job();
    }
    /// The same on upright A4 at the standard resolution.
    void write(const Drawing& draw) {
        PdfPrinter printer(asked);
        write(printer, draw);
    }

    [[nodiscard]] std::shared_ptr<QPDF> document() const {
        auto pdf = std::make_shared<QPDF>();
        pdf->processFile(file.c_str());
        return pdf;
    }
    [[nodiscard]] ShownPage shown(std::size_t page = 0) const {
        const auto pdf = document();
        return ShownPage(QPDFPageDocumentHelper(*pdf).getAllPages().at(page));
    }
    /// What a page shows that is drawn by `draw` on upright A4.
    [[nodiscard]] ShownPage drawn(const Drawing& draw) {
        write(draw);
        return shown();
    }

    testing_support::TempFolder folder;
    std::string file = folder.path("plan.pdf");
    PdfPrinter::AskFileName asked = [this] { return std::optional(file); };
};

/// On upright A4: units are millimetres, y upwards, from the lower left corner of the printable
/// area, which is 200 by 287 mm and starts 5 mm inside of the paper.
inline void scale_upwards(PageTarget& page) {
    page.Scale(0, 287, 200, 0);
}

}  // namespace veldra::pdf_test
