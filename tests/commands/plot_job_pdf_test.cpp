// Plot jobs on the device "PDF-Datei" as the application printer.

#include <gmock/gmock.h>

#include "commands/plot_job.h"
#include "pdf/pdf_printer.h"
#include "pdf/pdf_reader.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "session_fixture.h"

namespace veldra::pdf_test {
namespace {

/// A is plotted 1:1000 with the zero point (0, 0) on an upright sheet bound at the left. "Neu" was
/// never plotted. Signatures have a radius of 2 mm.
constexpr const char* plotted_and_new =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 0 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1\nPUNKTSIGNATUR 40 60 0 0 0\n"
    "NETZTEIL Neu\nOBJEKTE 0 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1000 1200 0 0 1\nPUNKTSIGNATUR 1060 1240 0 0 0\n";

class PlotJobOnPdf : public testing_support::SessionOnFile {
 protected:
    void open() {
        take_printer(session, &printer);
        datei_neu_laden(session, folder.file("ve.dat", from_utf8(plotted_and_new)),
                        OpenedBy::open_command, desk);
    }
    void expect_new_part(const ShownPage& page) const {
        // 60 m and two radii of 2 mm do not fit across an upright sheet at 1:250, nor across a
        // lying one at 1:200, but across 286 mm at 1:250.
        EXPECT_NEAR(page.width, 297, 0.01);
        EXPECT_NEAR(page.height, 210, 0.01);
        const auto circles = circle_centres(page);
        ASSERT_EQ(circles.size(), 2U);
        // The zero point is a radius (0.5 m) and 1 cm from the first point: 0.51 m are 2.04 mm.
        EXPECT_NEAR(circles[0].x, 5 + 0.5 + 2.04, 0.01);
        EXPECT_NEAR(circles[0].y, 5 + 12 + 2.04, 0.01);
        EXPECT_NEAR(circles[1].x, 5 + 0.5 + 2.04 + 240, 0.01);
        EXPECT_NEAR(circles[1].y, 5 + 12 + 2.04 + 160, 0.01);
    }

    std::string file = folder.path("plan.pdf");
    PdfPrinter printer{[this] { return std::optional(file); }};
    test::RecordingInterface ui;
    Desk desk{printer.measurer(), ui, [] {}, &printer};
};

TEST_F(PlotJobOnPdf, MarkedPartNeverPlottedBeforeIsPlotted) {
    open();
    session.netz[1].netz_plotmarke = table_false;
    ASSERT_EQ(session.netz[2].netz_ausrichtung, -99);
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(ui.texts.size(), 1U);  // the question
    const auto pages = shown_pages(file);
    ASSERT_EQ(pages.size(), 1U);
    expect_new_part(pages[0]);
    EXPECT_DOUBLE_EQ(session.netz[2].netz_massstab, 1.0 / 250);
    EXPECT_EQ(session.netz_aktuell, 1);
}

TEST_F(PlotJobOnPdf, MarkedPartNeverPlottedStandsAmongOthersAndCopies) {
    open();
    session.printer.exemplare = 2;
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(ui.texts.size(), 1U);
    const auto pages = shown_pages(file);
    ASSERT_EQ(pages.size(), 4U);
    for (const std::size_t copy : {0U, 2U}) {
        EXPECT_NEAR(pages[copy].width, 210, 0.01);
        const auto circles = circle_centres(pages[copy]);
        ASSERT_EQ(circles.size(), 2U);
        EXPECT_NEAR(circles[0].x, 5 + 15 + 10, 0.01);
        EXPECT_NEAR(circles[0].y, 5 + 12 + 20, 0.01);
        expect_new_part(pages[copy + 1]);
    }
}

TEST_F(PlotJobOnPdf, PaperOfTheUserOutlivesTheChoiceOfAScale) {
    open();
    session.netz[1].netz_plotmarke = table_false;
    printer.set_PaperSize(8);
    EXPECT_TRUE(plotten_alle(session, desk));
    const auto pages = shown_pages(file);
    ASSERT_EQ(pages.size(), 1U);
    // On A3 60 m and two radii fit across 409 mm at 1:200 and 40 m across 260 mm.
    EXPECT_NEAR(pages[0].width, 420, 0.01);
    EXPECT_NEAR(pages[0].height, 297, 0.01);
    const auto circles = circle_centres(pages[0]);
    ASSERT_EQ(circles.size(), 2U);
    EXPECT_NEAR(circles[1].x - circles[0].x, 300, 0.01);
    EXPECT_EQ(printer.PaperSize(), 8);
}

}  // namespace
}  // namespace veldra::pdf_test
