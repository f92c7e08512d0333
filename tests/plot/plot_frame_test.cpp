#include "plot/plot_frame.h"

#include <gmock/gmock.h>

#include "drawing/title.h"
#include "plot_fixture.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using operation::DrawWidth;
using operation::Line;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlotFrameTest : public test::PlotFixture {
 protected:
    /// The frame of a sheet on a page of its own.
    test::RecordedPage& frame(const SheetPlace& at) {
        const LegendSize legend = measure_legend();
        set_sheet_window(session, at);
        if (printer.documents.empty()) {
            printer.begin_job({});
        }
        printer.begin_sheet({});
        PlotFrame(session, printer, legend, at);
        return printer.documents.back().pages.back();
    }
};

void expect_line(const Line& line, float x1, float y1, float x2, float y2) {
    EXPECT_FLOAT_EQ(line.x1, x1);
    EXPECT_FLOAT_EQ(line.y1, y1);
    EXPECT_FLOAT_EQ(line.x2, x2);
    EXPECT_FLOAT_EQ(line.y2, y2);
}

TEST_F(PlotFrameTest, CornerMarksOfFiveMillimetresStandAtTheNetArea) {
    session.part.plot.plot_legendenlage = 0;
    const std::vector<Line> lines = frame(place(1, 1)).all<Line>();
    ASSERT_EQ(lines.size(), 8U);
    expect_line(lines[0], 15, 0.5F, 15, 5.5F);
    expect_line(lines[1], 15, 0.5F, 20, 0.5F);
    expect_line(lines[2], 15, 275, 15, 270);
    expect_line(lines[3], 15, 275, 20, 275);
    expect_line(lines[4], 199.5F, 0.5F, 199.5F, 5.5F);
    expect_line(lines[5], 199.5F, 0.5F, 194.5F, 0.5F);
    expect_line(lines[6], 199.5F, 275, 199.5F, 270);
    expect_line(lines[7], 199.5F, 275, 194.5F, 275);
}

TEST_F(PlotFrameTest, CornerMarksAreBlackSolidAndThin) {
    session.part.plot.plot_legendenlage = 0;
    session.settings.faktorStrich = 3;
    const test::RecordedPage& page = frame(place(1, 1));
    EXPECT_THAT(page.all<DrawWidth>(), ElementsAre(DrawWidth{1}));
    EXPECT_THAT(page.all<operation::ForeColor>(), ElementsAre(operation::ForeColor{0}));
    EXPECT_THAT(page.all<operation::DrawStyle>(), ElementsAre(operation::DrawStyle{0}));
}

TEST_F(PlotFrameTest, LandscapeWithABindingMarginAtTheTop) {
    session.part.plot.plot_ausrichtung = 2;
    session.part.plot.plot_heftrand = 1;
    ComputePaperArea(session, desk);
    session.part.plot.plot_legendenlage = 0;
    // 287 x 200 mm can be printed on.
    const std::vector<Line> lines = frame(place(1, 1)).all<Line>();
    ASSERT_EQ(lines.size(), 8U);
    expect_line(lines[0], 0.5F, 15, 0.5F, 20);
    expect_line(lines[6], 286.5F, 188, 286.5F, 183);
}

TEST_F(PlotFrameTest, LandscapeOnADeviceThatLeavesMoreOfTheShortSides) {
    printer.device().margin = 3;
    printer.device().margin_ends = 12;
    session.part.plot.plot_ausrichtung = 2;
    session.part.plot.plot_heftrand = 1;
    ComputePaperArea(session, desk);
    session.part.plot.plot_legendenlage = 0;
    // 273 x 204 mm can be printed on.
    const std::vector<Line> lines = frame(place(1, 1)).all<Line>();
    ASSERT_EQ(lines.size(), 8U);
    expect_line(lines[0], 0.5F, 15, 0.5F, 20);
    expect_line(lines[3], 0.5F, 192, 5.5F, 192);
    expect_line(lines[4], 272.5F, 15, 272.5F, 20);
    expect_line(lines[6], 272.5F, 192, 272.5F, 187);
}

TEST_F(PlotFrameTest, OneSheetHasNoNumberOfItsOwn) {
    session.part.plot.plot_legendenlage = 0;
    EXPECT_THAT(frame(place(1, 1)).printed_texts(), IsEmpty());
}

TEST_F(PlotFrameTest, SheetsOfSeveralCarryTitleAndPlace) {
    session.part.plot.plot_legendenlage = 0;
    set_sheets(3, 2);
    const auto prints = frame(place(2, 1)).all<test::page::Print>();
    ASSERT_EQ(prints.size(), 1U);
    EXPECT_EQ(prints[0].text, "Netz, Blatt 2.1 (3.2)");
    EXPECT_DOUBLE_EQ(prints[0].x, 15);
    EXPECT_DOUBLE_EQ(prints[0].y, 283);  // 4 mm above the end of the printable area
    // Digits of 1.9 mm: a line of at most 1.95 * 1.68 = 3.276 mm, which is 9.29 points.
    EXPECT_EQ(prints[0].font, (FontSpec{"Times New Roman", 9, 0, 0, 0}));
}

TEST_F(PlotFrameTest, OneColumnOfSeveralRowsIsSeveralSheets) {
    session.part.plot.plot_legendenlage = 0;
    set_sheets(1, 12);
    EXPECT_THAT(frame(place(1, 11)).printed_texts(), ElementsAre("Netz, Blatt 1.11 (1.12)"));
}

TEST_F(PlotFrameTest, NumberOfTheDistrictStandsInTheDistrictFont) {
    session.part.plot.plot_legendenlage = 0;
    session.part.plot.plot_null_rechts = 2571193;
    session.part.plot.plot_null_hoch = 5619477;
    session.part.extents = {2571193, 5619477, 2571300, 5619600, 0, 0};
    session.part.obj.obj_nube = 1;
    session.part.obj.obj_bezu = 1;
    session.part.obj.obj_bezu_elli = 1;
    session.part.obj.obj_bezu_abbi = 1;
    session.settings.nubsizplo = 4;
    session.settings.nubfon = "Courier";
    session.settings.nubbol = table_true;
    const auto prints = frame(place(1, 1)).all<test::page::Print>();
    ASSERT_EQ(prints.size(), 1U);
    EXPECT_EQ(prints[0].text, "5208");
    EXPECT_DOUBLE_EQ(prints[0].x, 15);
    EXPECT_DOUBLE_EQ(prints[0].y, 276);  // 11 mm above the end of the printable area
    // 4.05 * 1.68 = 6.804 mm, which is 19.29 points.
    EXPECT_EQ(prints[0].font, (FontSpec{"Courier", 19, table_true, 0, 0}));
}

/// Title lines of 3 mm: 3.05 * 1.68 = 5.124 mm fit 14 points, half of which is the width of a
/// letter: 2.4694 mm. A line takes 3 * 1.68 = 5.04 mm.
constexpr double letter = 14.0 / 72 * 25.4 / 2;

TEST_F(PlotFrameTest, LegendIsAsWideAsItsLongestLineAndSixMillimetres) {
    session.part.titel[2].setTitelText("Zeile drei");
    session.part.titel[3].setTitelText("Eine lange vierte Zeile");
    const LegendSize legend = measure_legend();
    EXPECT_NEAR(legend.width, 23 * letter + 6, 1e-9);
    EXPECT_NEAR(legend.height, 4 + 3 * 5.04, 1e-6);
}

TEST_F(PlotFrameTest, LegendWiderThanTheSheetIsBrokenAtBlanks) {
    // Across are 184.5 mm, of which 178.5 are for text: 72 letters. Three times 20 letters with
    // blanks between are 62; "Zwanzig" fits behind them, the rest begins the next row.
    const std::string twenty = "Zwanzig Buchstaben_x";
    session.part.titel[3].setTitelText(twenty + " " + twenty + " " + twenty + " " + twenty);
    const LegendSize legend = measure_legend();
    EXPECT_EQ(legend.shrink, 1);
    EXPECT_NEAR(legend.width, 70 * letter + 6, 1e-9);
    EXPECT_NEAR(legend.height, 4 + 4 * 5.04, 1e-6);
    ASSERT_EQ(legend.lines.size(), 4U);
    EXPECT_EQ(legend.lines[2].text, twenty + " " + twenty + " " + twenty + " Zwanzig");
    EXPECT_EQ(legend.lines[3].text, "Buchstaben_x");
}

TEST_F(PlotFrameTest, LegendThatCannotBeBrokenIsSetSmaller) {
    session.part.titel[0].setTitelText("");
    session.part.titel[2].setTitelText("kurz");
    // Without blanks 100 letters are 246.9 mm; 0.95 to the seventh power is the first below the
    // share of 178.5 mm in that, 0.7228.
    session.part.titel[3].setTitelText(std::string(100, 'x'));
    const LegendSize legend = measure_legend();
    EXPECT_NEAR(legend.shrink, 0.6983372961, 1e-9);
    EXPECT_NEAR(legend.width, 100 * letter * 0.6983372961 + 6, 1e-6);
    EXPECT_LE(legend.width, 184.5);
    session.part.plot.plot_legendenlage = 1;
    const auto prints = frame(place(1, 1)).all<test::page::Print>();
    ASSERT_FALSE(prints.empty());
    EXPECT_NEAR(prints.back().font.points, 14 * 0.6983372961, 1e-6);
}

TEST_F(PlotFrameTest, SecondLineCountsOnlyWithAText) {
    const LegendSize without = measure_legend();
    session.part.titel[1].setTitelText("Z");
    EXPECT_NEAR(measure_legend().height - without.height, 5.04, 1e-6);
}

TEST_F(PlotFrameTest, EmptyThirdAndFourthLineAreMeasuredAsTheirStandardTexts) {
    session.part.obj.obj_beob = 1;
    // "Lagebeobachtungen" has 17 letters, "Grundriss 1: 1000" as many.
    EXPECT_NEAR(measure_legend().width, 17 * letter + 6, 1e-9);
    session.part.plot.plot_massstab = 1 / 12345.5;
    EXPECT_NEAR(measure_legend().width, 20 * letter + 6, 1e-9);
}

TEST_F(PlotFrameTest, LegendTextsStandBelowEachOther) {
    session.part.obj.obj_beob = 1;
    session.part.plot.plot_legendenlage = 1;
    session.settings.faktorStrich = 2;
    session.part.titel[0].setTitelSize(3.5F);  // 5.964 mm: 16 points
    const test::RecordedPage& page = frame(place(1, 1));
    const auto prints = page.all<test::page::Print>();
    ASSERT_EQ(prints.size(), 3U);
    EXPECT_EQ(prints[0].text, "Netz");
    EXPECT_EQ(prints[0].font, (FontSpec{"Arial", 16, 0, 0, 0}));
    EXPECT_EQ(prints[1].text, "Lagebeobachtungen");
    EXPECT_EQ(prints[1].font, (FontSpec{"Arial", 14, 0, 0, 0}));
    EXPECT_EQ(prints[2].text, "Grundriss 1: 1000");
    for (const auto& print : prints) {
        EXPECT_DOUBLE_EQ(print.x, 18);
    }
    EXPECT_DOUBLE_EQ(prints[0].y, 2.5);
    EXPECT_NEAR(prints[1].y, 2.5 + 3.5 * 1.68, 1e-9);
    EXPECT_NEAR(prints[2].y, 2.5 + 3.5 * 1.68 + 5.04, 1e-9);
    EXPECT_THAT(page.all<DrawWidth>(), ElementsAre(DrawWidth{1}, DrawWidth{2}));
    const std::vector<Line> lines = page.all<Line>();
    ASSERT_EQ(lines.size(), 12U);
    const auto right = static_cast<float>(15 + 17 * letter + 6);
    const auto bottom = static_cast<float>(0.5 + 4 + 3.5 * 1.68 + 2 * 5.04);
    expect_line(lines[8], 15, 0.5F, right, 0.5F);
    expect_line(lines[9], right, 0.5F, right, bottom);
    expect_line(lines[10], right, bottom, 15, bottom);
    expect_line(lines[11], 15, bottom, 15, 0.5F);
}

TEST_F(PlotFrameTest, SecondLineIsPrintedWithAText) {
    session.part.obj.obj_beob = 1;
    session.part.titel[1].setTitelText("Zweite");
    session.part.titel[1].setTitelItal(table_true);
    session.part.plot.plot_legendenlage = 1;
    const auto prints = frame(place(1, 1)).all<test::page::Print>();
    ASSERT_EQ(prints.size(), 4U);
    EXPECT_EQ(prints[1].text, "Zweite");
    EXPECT_EQ(prints[1].font, (FontSpec{"Arial", 14, 0, table_true, 0}));
    EXPECT_NEAR(prints[3].y, 2.5 + 3 * 5.04, 1e-9);
}

struct LegendPlace {
    std::int16_t lage;
    std::int16_t column;
    std::int16_t row;
    bool at_the_right;
    bool at_the_top;
};

class LegendPlaceTest : public PlotFrameTest, public testing::WithParamInterface<LegendPlace> {};

TEST_P(LegendPlaceTest, LegendStandsOnOneSheetOfThreeByTwo) {
    const LegendPlace& expected = GetParam();
    session.part.plot.plot_legendenlage = expected.lage;
    set_sheets(3, 2);
    const LegendSize legend = measure_legend();
    for (std::int16_t column = 1; column <= 3; ++column) {
        for (std::int16_t row = 1; row <= 2; ++row) {
            const std::vector<Line> lines = frame(place(column, row)).all<Line>();
            if (column != expected.column || row != expected.row) {
                EXPECT_EQ(lines.size(), 8U);
                continue;
            }
            ASSERT_EQ(lines.size(), 12U);
            const double left = expected.at_the_right ? 199.5 - legend.width : 15;
            const double top = expected.at_the_top ? 0.5 : 275 - legend.height;
            expect_line(lines[8], static_cast<float>(left), static_cast<float>(top),
                        static_cast<float>(left + legend.width), static_cast<float>(top));
        }
    }
}

TEST_P(LegendPlaceTest, GroundUnderTheLegendLiesInTheCornerOfAllSheets) {
    const LegendPlace& expected = GetParam();
    session.part.plot.plot_legendenlage = expected.lage;
    set_sheets(3, 2);
    const LegendSize legend = measure_legend();
    // 3 * 184.5 m and 2 * 274.5 m of ground; a millimetre of the legend is a metre.
    const double left = expected.at_the_right ? 1000 + 553.5 - legend.width : 1000;
    const double bottom = expected.at_the_top ? 2000 + 549 - legend.height : 2000;
    EXPECT_NEAR(session.legende.legende_rw_min, left, 1e-9);
    EXPECT_NEAR(session.legende.legende_rw_max, left + legend.width, 1e-9);
    EXPECT_NEAR(session.legende.legende_hw_min, bottom, 1e-9);
    EXPECT_NEAR(session.legende.legende_hw_max, bottom + legend.height, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Positions, LegendPlaceTest,
                         testing::Values(LegendPlace{1, 1, 2, false, true},
                                         LegendPlace{2, 1, 1, false, false},
                                         LegendPlace{3, 3, 2, true, true},
                                         LegendPlace{4, 3, 1, true, false}));

TEST_F(PlotFrameTest, LegendWithoutAPlaceLeavesNoGroundFree) {
    session.part.plot.plot_legendenlage = 5;
    measure_legend();
    EXPECT_EQ(session.legende.legende_rw_min, session.legende.legende_rw_max);
    EXPECT_EQ(frame(place(1, 1)).all<Line>().size(), 8U);
}

TEST_F(PlotFrameTest, LegendCountsTheSheetsOfAnAutomaticDivision) {
    session.part.plot.plot_blatt_auto = table_true;
    session.part.plot.plot_legendenlage = 4;
    // 184.5 m exactly fill a sheet, which asks for two.
    session.part.extents = {1000, 2000, 1184.5, 2700, 0, 0};
    const LegendSize legend = measure_legend();
    EXPECT_EQ(session.part.plot.plot_blatt_rechts, 2);
    EXPECT_EQ(session.part.plot.plot_blatt_hoch, 3);
    EXPECT_NEAR(session.legende.legende_rw_max, 1369, 1e-9);
    EXPECT_NEAR(session.legende.legende_rw_min, 1369 - legend.width, 1e-9);
    session.part.extents = {500, 1500, 600, 1600, 0, 0};  // left of and below the zero point
    measure_legend();
    EXPECT_EQ(session.part.plot.plot_blatt_rechts, 1);
    EXPECT_EQ(session.part.plot.plot_blatt_hoch, 1);
}

TEST_F(PlotFrameTest, ManualCountsStandButAreAtLeastOne) {
    set_sheets(0, 7);
    session.part.extents = {1000, 2000, 3000, 4000, 0, 0};
    measure_legend();
    EXPECT_EQ(session.part.plot.plot_blatt_rechts, 1);
    EXPECT_EQ(session.part.plot.plot_blatt_hoch, 7);
}

TEST_F(PlotFrameTest, LegendIsEstimatedWithoutAPrinter) {
    session.printer.drucker_ok = table_false;
    session.part.titel[2].setTitelText("Eine lange dritte Zeile ");
    PaperTextOnDesk text(session, measurer, nullptr);
    // A line of 3 * 1.68 mm; a letter is half as wide as a line is high.
    EXPECT_NEAR(ComputeLegendSize(session, text).width, 24 * 5.04 / 2 + 6, 1e-5);
}

TEST_F(PlotFrameTest, StandardTextsNameThePartItsObjectsAndTheScale) {
    session.part.obj.obj_beob = 1;
    test::show_values(session, 4);
    session.part.obj.obj_wert_lage = 1;
    session.part.obj.obj_wert_hoehe = 0;
    session.vektor_massstab[1] = 1 / 2.5;
    EXPECT_EQ(to_utf8(BuildTitle(session, 3)), "Lagebeobachtungen, Lageänderungen 1: 2.5");
    session.part.netz_aktuell = session.netz.append();
    session.netz[1].netz_name = "Teil 1";
    EXPECT_EQ(to_utf8(BuildTitle(session, 3)), "Teil 1: Lagebeobachtungen, Lageänderungen 1: 2.5");
    session.part.plot.plot_massstab = 1 / 500.0;
    EXPECT_EQ(BuildTitle(session, 4), "Grundriss 1: 500");
    session.part.plot.plot_massstab = 1 / 1250.4;
    EXPECT_EQ(BuildTitle(session, 4), "Grundriss 1: 1250.4");
}

TEST_F(PlotFrameTest, FailureOfThePrinterIsNamedInABox) {
    report_printer_failure(ui, PrinterError("Plotter: Papier fehlt"));
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::critical));
    EXPECT_THAT(ui.titles, ElementsAre("Netzteil(e) plotten"));
    EXPECT_THAT(ui.texts,
                ElementsAre("Drucker-PC bzw. Netz nicht erreichbar\nPlotter: Papier fehlt"));
}

}  // namespace
}  // namespace veldra
