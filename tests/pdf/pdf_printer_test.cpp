// The built-in printer as the program uses it: its paper, its jobs.

#include <gmock/gmock.h>

#include "pdf_fixture.h"
#include "plot/paper_codes.h"

namespace veldra::pdf_test {
namespace {

constexpr float twips(double millimetres) {
    return static_cast<float>(millimetres * 1440 / 25.4);
}

class PdfPrinters : public PdfFile {
 protected:
    void expect_paper(double width, double height) {
        EXPECT_NEAR(printer.Width(), twips(width), 0.01);
        EXPECT_NEAR(printer.Height(), twips(height), 0.01);
        EXPECT_NEAR(printer.ScaleWidth(6), width - 10, 1e-4);
        EXPECT_NEAR(printer.ScaleHeight(6), height - 10, 1e-4);
        EXPECT_NEAR(printer.ScaleWidth(1), twips(width - 10), 0.01);
        EXPECT_NEAR(printer.ScaleHeight(1), twips(height - 10), 0.01);
    }
    void write_sheet() {
        printer.begin_sheet({"Netzteil", "Blatt"});
        printer.page().Line(0, 0, 10, 10);
        printer.NewPage();
    }
    [[nodiscard]] std::size_t pages() const {
        return QPDFPageDocumentHelper(*document()).getAllPages().size();
    }
    [[nodiscard]] std::size_t files() const {
        const std::filesystem::directory_iterator entries(folder.path());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    PdfPrinter printer{asked};
};

TEST_F(PdfPrinters, IsTheOnlyOneOfItsKind) {
    EXPECT_EQ(printer.Count(), 1);
    EXPECT_EQ(printer.DeviceName(), "PDF-Datei");
    EXPECT_EQ(printer.DeviceName(0), "PDF-Datei");
    EXPECT_THROW(static_cast<void>(printer.DeviceName(1)), PrinterError);
    EXPECT_THROW(printer.assign(1), PrinterError);
    EXPECT_NO_THROW(printer.assign(0));
}

TEST_F(PdfPrinters, StartsWithUprightA4) {
    EXPECT_EQ(printer.Orientation(), 1);
    EXPECT_EQ(printer.PaperSize(), 9);
    EXPECT_EQ(printer.PaperBin(), 15);
    EXPECT_EQ(printer.ColorMode(), 2);
    expect_paper(210, 297);
}

TEST_F(PdfPrinters, TakesBothOrientations) {
    printer.set_Orientation(2);
    EXPECT_EQ(printer.Orientation(), 2);
    expect_paper(297, 210);
    for (const int other : {0, 3, -1}) {
        printer.set_Orientation(static_cast<std::int16_t>(other));
        EXPECT_EQ(printer.Orientation(), 2);
    }
    printer.set_Orientation(1);
    expect_paper(210, 297);
}

TEST_F(PdfPrinters, TakesEveryKnownPaper) {
    for (const PaperCode& paper : known_papers()) {
        printer.set_PaperSize(paper.code);
        EXPECT_EQ(printer.PaperSize(), paper.code);
        expect_paper(paper.width, paper.height);
    }
    for (const int unknown : {0, 42, 255, 257, 267, 277, 300}) {
        printer.set_PaperSize(static_cast<std::int16_t>(unknown));
        EXPECT_EQ(printer.PaperSize(), 276);
    }
}

TEST_F(PdfPrinters, SidesAreWritableForUserDefinedPaperOnly) {
    printer.set_Width(twips(500));
    printer.set_Height(twips(500));
    expect_paper(210, 297);
    printer.set_PaperSize(256);
    expect_paper(210, 297);
    printer.set_Width(twips(5000));
    printer.set_Height(twips(914));
    EXPECT_EQ(printer.PaperSize(), 256);
    expect_paper(5000, 914);
    printer.set_Width(twips(5001));
    printer.set_Height(twips(14));
    expect_paper(5000, 914);
    printer.set_Width(0);
    printer.set_Height(-1);
    printer.set_Width(std::numeric_limits<float>::quiet_NaN());
    expect_paper(5000, 914);
}

TEST_F(PdfPrinters, SidesOfFifteenMillimetresAreTakenAndNoShorterOnes) {
    printer.set_PaperSize(256);
    constexpr float fifteen = 15 * 1440 / 25.4F;
    printer.set_Width(fifteen);
    printer.set_Height(fifteen);
    EXPECT_NEAR(printer.Width(), fifteen, 0.01);
    EXPECT_NEAR(printer.Height(), fifteen, 0.01);
    printer.set_Width(fifteen - 2);
    printer.set_Height(fifteen - 2);
    EXPECT_NEAR(printer.Width(), fifteen, 0.01);
    EXPECT_NEAR(printer.Height(), fifteen, 0.01);
}

TEST_F(PdfPrinters, SidesAreThoseOfThePaperAsItLies) {
    printer.set_Orientation(2);
    printer.set_PaperSize(256);
    printer.set_Width(twips(2000));
    printer.set_Height(twips(600));
    expect_paper(2000, 600);
    printer.set_Orientation(1);
    expect_paper(600, 2000);
}

TEST_F(PdfPrinters, WholeTwipsOfTheLongestPaperAreTaken) {
    printer.set_PaperSize(256);
    printer.set_Width(283465);  // 5000 mm are 283 464.57
    EXPECT_EQ(printer.Width(), 283465);
}

TEST_F(PdfPrinters, TakesBinsAndColourModesAsWritten) {
    for (const std::int16_t bin : {std::int16_t{1}, std::int16_t{7}, std::int16_t{260}}) {
        printer.set_PaperBin(bin);
        EXPECT_EQ(printer.PaperBin(), bin);
    }
    printer.set_ColorMode(1);
    EXPECT_EQ(printer.ColorMode(), 1);
    printer.set_ColorMode(2);
    EXPECT_EQ(printer.ColorMode(), 2);
    printer.set_ColorMode(3);
    EXPECT_EQ(printer.ColorMode(), 2);
    printer.set_Copies(1);
    printer.set_TrackDefault(true);
    EXPECT_EQ(printer.DeviceName(), "PDF-Datei");
}

TEST_F(PdfPrinters, EndDocForgetsThePaperButNotTheOrientation) {
    printer.set_PaperSize(256);
    printer.set_Width(twips(700));
    printer.set_PaperBin(3);
    printer.set_Orientation(2);
    printer.EndDoc();
    EXPECT_EQ(printer.PaperSize(), 9);
    EXPECT_EQ(printer.PaperBin(), 15);
    EXPECT_EQ(printer.Orientation(), 2);
    expect_paper(297, 210);
}

TEST_F(PdfPrinters, ResolutionIsThatOfPens) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    printer.begin_sheet({"A", "1"});
    EXPECT_DOUBLE_EQ(printer.page().pixel_size(), 25.4 / 300);
    PdfPrinter fine(asked, 1200);
    EXPECT_TRUE(fine.begin_job({"Titel"}));
    fine.begin_sheet({"A", "1"});
    EXPECT_DOUBLE_EQ(fine.page().pixel_size(), 25.4 / 1200);
}

TEST_F(PdfPrinters, AJobThatTheUserDropsHasNoDocument) {
    int times_asked = 0;
    PdfPrinter dropped([&] {
        ++times_asked;
        return std::nullopt;
    });
    EXPECT_FALSE(dropped.begin_job({"Titel"}));
    EXPECT_EQ(times_asked, 1);
    EXPECT_THROW(dropped.begin_sheet({"A", "1"}), PrinterError);
    EXPECT_THROW(static_cast<void>(dropped.page()), PrinterError);
    dropped.NewPage();
    dropped.end_job();
    dropped.EndDoc();
    EXPECT_EQ(files(), 0U);
}

TEST_F(PdfPrinters, EmptyDocumentsLeaveNoFile) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    EXPECT_EQ(files(), 0U);
    printer.end_job();
    EXPECT_EQ(files(), 0U);
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    printer.EndDoc();
    EXPECT_EQ(files(), 0U);
}

TEST_F(PdfPrinters, AnEmptyDocumentLeavesTheFileThatIsThere) {
    static_cast<void>(folder.file("plan.pdf", "alt"));
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    printer.end_job();
    EXPECT_EQ(testing_support::file_bytes(file), "alt");
}

TEST_F(PdfPrinters, ADocumentHasThePagesOfItsSheets) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    printer.set_Orientation(2);
    write_sheet();
    printer.set_PaperSize(270);
    write_sheet();
    EXPECT_EQ(files(), 0U);
    printer.end_job();
    EXPECT_EQ(files(), 1U);
    ASSERT_EQ(pages(), 3U);
    EXPECT_NEAR(shown(0).width, 210, 0.01);
    EXPECT_NEAR(shown(1).width, 297, 0.01);
    EXPECT_NEAR(shown(2).width, 594, 0.01);
    EXPECT_NEAR(shown(2).height, 420, 0.01);
    printer.end_job();  // once is enough
    EXPECT_EQ(files(), 1U);
}

TEST_F(PdfPrinters, EndDocFinishesAnOpenDocument) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    printer.begin_sheet({"Netzteil", "2"});
    printer.page().Line(0, 0, 10, 10);
    printer.EndDoc();
    EXPECT_EQ(pages(), 2U);
    EXPECT_EQ(shown(1).paths.size(), 1U);
}

TEST_F(PdfPrinters, APreparedJobOutlivesEndDocUntilItsFirstPage) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    printer.EndDoc();
    write_sheet();
    printer.end_job();
    EXPECT_EQ(pages(), 1U);
}

TEST_F(PdfPrinters, ANewJobFinishesTheOneBefore) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    const std::string first = file;
    file = folder.path("zweiter.pdf");
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    write_sheet();
    printer.end_job();
    EXPECT_EQ(pages(), 2U);
    file = first;
    EXPECT_EQ(pages(), 1U);
}

TEST_F(PdfPrinters, AnAbortedJobLeavesNoFileAndTheOldOneWhole) {
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    printer.begin_sheet({"Netzteil", "2"});
    printer.abort_job();
    EXPECT_EQ(files(), 0U);
    EXPECT_THROW(static_cast<void>(printer.page()), PrinterError);
    printer.end_job();
    EXPECT_EQ(files(), 0U);
    static_cast<void>(folder.file("plan.pdf", "alt"));
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    printer.abort_job();
    EXPECT_EQ(testing_support::file_bytes(file), "alt");
    EXPECT_EQ(files(), 1U);
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    write_sheet();
    printer.end_job();
    EXPECT_EQ(pages(), 1U);
}

TEST_F(PdfPrinters, APrinterThatGoesAwayLeavesNoFile) {
    {
        PdfPrinter short_lived(asked);
        EXPECT_TRUE(short_lived.begin_job({"Titel"}));
        short_lived.begin_sheet({"A", "1"});
    }
    EXPECT_EQ(files(), 0U);
}

TEST_F(PdfPrinters, DocumentsOfTwoPrintersDoNotTouchEachOther) {
    std::string other_file = folder.path("anderer.pdf");
    PdfPrinter other([&] { return other_file; });
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    EXPECT_TRUE(other.begin_job({"Titel"}));
    write_sheet();
    other.begin_sheet({"B", "1"});
    other.page().Circle(10, 10, 2);
    write_sheet();
    other.end_job();
    printer.end_job();
    EXPECT_EQ(pages(), 2U);
    EXPECT_EQ(shown().paths.at(0).painted, "S");
    file = other_file;
    EXPECT_EQ(pages(), 1U);
    EXPECT_EQ(shown().paths.at(0).painted, "b");
}

}  // namespace
}  // namespace veldra::pdf_test
