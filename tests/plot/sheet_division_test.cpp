#include "plot/sheet_division.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "network_builder.h"
#include "text/fatal_error.h"
#include "view/extents.h"

namespace veldra {
namespace {

using test::add_point;
using test::FakeMeasurer;

class SheetDivisionTest : public testing::Test {
 protected:
    SheetDivisionTest() { test::show_nothing(session); }

    void divide() { ComputeSheetDivision(session, measurer); }

    /// Two points at the corners of a rectangle. Around them the small dot takes half a millimetre
    /// of paper and a centimetre of ground on each side.
    void span(double rechts, double hoch) {
        add_point(session, 0, 0);
        add_point(session, rechts, hoch);
    }

    Session session;
    FakeMeasurer measurer;
};

TEST_F(SheetDivisionTest, PortraitNetAreaWithLeftBindingMarginWithoutPrinter) {
    session.plot.plot_ausrichtung = 1;
    session.plot.plot_heftrand = 2;
    ComputePaperArea(session, nullptr);
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.1967 - 0.0005 - 0.015);
    EXPECT_DOUBLE_EQ(session.sheet.papier_hoehe, 0.2852 - 0.0005 - 0.012);
    EXPECT_EQ(session.sheet.rand_links, 0.015);
    EXPECT_EQ(session.sheet.rand_oben, 0.0005);
    EXPECT_EQ(session.sheet.rand_rechts, 0.0005);
    EXPECT_EQ(session.sheet.rand_unten, 0.012);
}

TEST_F(SheetDivisionTest, LandscapeNetAreaWithTopBindingMarginWithoutPrinter) {
    session.plot.plot_ausrichtung = 2;
    session.plot.plot_heftrand = 1;
    ComputePaperArea(session, nullptr);
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.2864 - 0.001);
    EXPECT_DOUBLE_EQ(session.sheet.papier_hoehe, 0.1986 - 0.015 - 0.012);
}

TEST_F(SheetDivisionTest, NoBindingMarginGivesFourteenAndAHalfMillimetresMore) {
    session.plot.plot_ausrichtung = 1;
    session.plot.plot_heftrand = 2;
    ComputePaperArea(session, nullptr);
    const SheetGeometry bound = session.sheet;
    session.plot.plot_heftrand = 3;
    ComputePaperArea(session, nullptr);
    EXPECT_NEAR(session.sheet.papier_breite - bound.papier_breite, 0.0145, 1e-15);
    EXPECT_EQ(session.sheet.papier_hoehe, bound.papier_hoehe);
}

TEST_F(SheetDivisionTest, UnknownOrientationStartsFromTheSizesHeld) {
    session.sheet.papier_breite = 1;
    session.sheet.papier_hoehe = 2;
    session.plot.plot_ausrichtung = -99;
    session.plot.plot_heftrand = 3;
    ComputePaperArea(session, nullptr);
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.999);
    EXPECT_DOUBLE_EQ(session.sheet.papier_hoehe, 1.9875);
}

class FakePrinter final : public SheetPrinter {
 public:
    PrintableArea printable_area(std::int16_t ausrichtung) override {
        calls.push_back("Orientation " + std::to_string(ausrichtung));
        return ausrichtung == 1 ? PrintableArea{200, 400} : PrintableArea{400, 200};
    }
    void ResetPrinter() override { calls.emplace_back("ResetPrinter"); }

    std::vector<std::string> calls;
};

TEST_F(SheetDivisionTest, UsablePrinterTellsThePaper) {
    session.printer.drucker_ok = table_true;
    session.plot.plot_ausrichtung = 2;
    session.plot.plot_heftrand = 3;
    FakePrinter printer;
    ComputePaperArea(session, &printer);
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.399);
    EXPECT_DOUBLE_EQ(session.sheet.papier_hoehe, 0.2 - 0.0125);
    session.printer.drucker_ok = table_false;
    ComputePaperArea(session, &printer);
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.2854);
}

TEST_F(SheetDivisionTest, PrinterIsResetAfterEachOrientationTried) {
    session.printer.drucker_ok = table_true;
    session.plot.plot_massstab = 0.001;
    span(10, 10);
    FakePrinter printer;
    EstimatedTextSize text(measurer);
    ComputeSheetDivision(session, text, &printer);
    EXPECT_EQ(printer.calls, (std::vector<std::string>{"Orientation 2", "ResetPrinter",
                                                       "Orientation 1", "ResetPrinter"}));
}

TEST_F(SheetDivisionTest, ExactlyFilledSheetAsksForTwo) {
    session.plot.plot_massstab = 0.5;
    EXPECT_EQ(sheet_count(session, 2, 1, ""), 2);
    EXPECT_EQ(sheet_count(session, 1.999, 1, ""), 1);
    EXPECT_EQ(sheet_count(session, 0, 1, ""), 1);
    EXPECT_EQ(sheet_count(session, -2.5, 1, ""), 1);
    EXPECT_EQ(sheet_count(session, -100, 1, ""), 1);
}

TEST_F(SheetDivisionTest, ExtentThatExactlyFillsASheetFitsInTheSearchAndAsksForTwo) {
    // 1:1000 is the largest scale at which 251 m go on an upright sheet of 272.7 mm; a lying one
    // takes them at 1:1500 only.
    constexpr double net = 0.1967 - 0.0005 - 0.015;
    span(180.18, 250);
    session.plot.plot_massstab = 1 / 1000.0;
    const auto width_on_paper = [this] {
        ComputeExtents(session, measurer);
        return (session.extents.gesamt_rw_max - session.extents.gesamt_rw_min) *
               session.plot.plot_massstab;
    };
    // The last bits of the sum are not foreseeable.
    session.pu[2].pu_rechts -= 1e-9;
    while (width_on_paper() < net) {
        session.pu[2].pu_rechts = std::nextafter(session.pu[2].pu_rechts, 1000.0);
    }
    ASSERT_EQ(width_on_paper(), net);
    session.plot.plot_massstab = -99;
    divide();
    EXPECT_EQ(session.plot.plot_massstab, 1 / 1000.0);
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 2);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
}

TEST_F(SheetDivisionTest, CountBeyondSixteenBitsIsAnOverflow) {
    session.plot.plot_massstab = 1;
    EXPECT_EQ(sheet_count(session, 32766, 1, ""), 32767);
    EXPECT_THROW((void)sheet_count(session, 32767, 1, ""), FatalError);
    EXPECT_THROW((void)sheet_count(session, -32770, 1, ""), FatalError);
}

TEST_F(SheetDivisionTest, SheetsCanBeCountedUpToTheLastOfSixteenBits) {
    session.plot.plot_massstab = 0.5;
    session.sheet.papier_breite = 0.25;
    session.sheet.papier_hoehe = 0.5;
    session.plot.plot_null_rechts = 100;
    session.plot.plot_null_hoch = -100;
    // Half a metre of ground fills a sheet across, a metre one up; the 32767th is the last.
    session.extents.gesamt_rw_max = 100 + 32766.5 / 2;
    session.extents.gesamt_hw_max = -100 + 32766.5;
    EXPECT_TRUE(sheets_can_be_counted(session));
    session.extents.gesamt_rw_max = 100 + 32767.0 / 2;
    EXPECT_FALSE(sheets_can_be_counted(session));
    session.extents.gesamt_rw_max = 100;
    session.extents.gesamt_hw_max = -100 + 32767.0;
    EXPECT_FALSE(sheets_can_be_counted(session));
    session.extents.gesamt_hw_max = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(sheets_can_be_counted(session));
}

TEST_F(SheetDivisionTest, PartWithoutExtentYieldsOneSheet) {
    add_point(session, 1000, 2000);
    divide();
    // 5 m by 5 m fit at 1:100 on both sheets; upright stays on a tie.
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 0.01);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 1);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
    EXPECT_DOUBLE_EQ(session.plot.plot_null_rechts, 997.5);
    EXPECT_DOUBLE_EQ(session.plot.plot_null_hoch, 1997.5);
}

TEST_F(SheetDivisionTest, WidePartTakesLandscapeAndCountsWithPortraitPaper) {
    // Landscape: (100.02 m + 1 mm) fits on 0.2854 from 1:500 on; upright on 0.1812 from 1:750 on.
    span(100, 50);
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 2);
    EXPECT_EQ(session.plot.plot_heftrand, 1);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 500);
    EXPECT_NEAR(session.plot.plot_null_rechts, -0.26, 1e-12);
    EXPECT_NEAR(session.plot.plot_null_hoch, -0.26, 1e-12);
    // The upright sheet's sizes still stand, so 100.52 m at 1:500 count as two of 0.1812.
    EXPECT_DOUBLE_EQ(session.sheet.papier_breite, 0.1967 - 0.0155);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 2);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
    EXPECT_EQ(session.plot.plot_blatt_auto, table_true);
    EXPECT_DOUBLE_EQ(session.plot_merk.plot_massstab, 1.0 / 500);
    EXPECT_EQ(session.plot_merk.plot_blatt_rechts, 2);
    // The next division counts with the true sheet.
    divide();
    EXPECT_EQ(session.plot.plot_blatt_rechts, 1);
}

TEST_F(SheetDivisionTest, TallPartTakesPortrait) {
    // Upright: 50.02 m on 0.1812 and 100.02 m on 0.2727 both fit at 1:500; landscape needs 1:750.
    span(50, 100);
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_EQ(session.plot.plot_heftrand, 2);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 500);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 1);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
}

TEST_F(SheetDivisionTest, PartTooLargeForEveryScaleGetsTheSmallestScale) {
    // 10,000 km: 2 m of paper at 1:5,000,000, twelve upright sheets of 0.1812.
    span(1e7, 0);
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 5000000);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 12);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 1);
}

TEST_F(SheetDivisionTest, LabelsTakePartInTheChoiceOfScale) {
    // Points alone fit at 1:100 (10.02 m on 0.1812 and 0.2854).
    span(10, 10);
    session.obj.obj_pube = 1;
    session.settings.stanplt = 0;
    // With 0.0021 m a letter, 100 letters take 0.21 m: never upright. Beside 10.02 m of ground that
    // is 0.3112 at 1:100 and 0.2606 at 1:200 on a landscape sheet of 0.2854.
    session.pu[2].pu_bez = std::string(100, 'x');
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 2);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 200);
}

TEST_F(SheetDivisionTest, GivenScaleTakesTheOrientationWithFewerSheets) {
    session.plot.plot_massstab = 1.0 / 500;
    span(100, 50);
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 2);
    EXPECT_EQ(session.plot.plot_heftrand, 1);
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 500);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 2);  // counted with the upright sheet
}

TEST_F(SheetDivisionTest, GivenScaleKeepsPortraitOnATie) {
    session.plot.plot_massstab = 1.0 / 1000;
    span(100, 50);
    divide();
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_EQ(session.plot.plot_heftrand, 2);
    EXPECT_EQ(session.plot.plot_blatt_rechts, 1);
}

TEST_F(SheetDivisionTest, ProductOfSheetsBeyondSixteenBitsIsAnOverflow) {
    // 200 by 200 sheets.
    session.plot.plot_massstab = 1;
    span(200 * 0.2854, 200 * 0.1716);
    EXPECT_THROW(divide(), FatalError);
}

TEST_F(SheetDivisionTest, GivenOrientationKeepsZeroPointAndCounts) {
    session.plot.plot_massstab = 1.0 / 500;
    session.plot.plot_ausrichtung = 2;
    session.plot.plot_heftrand = 1;
    session.plot.plot_null_rechts = -100;
    session.plot.plot_null_hoch = -200;
    span(100, 50);
    divide();
    EXPECT_EQ(session.plot.plot_null_rechts, -100);
    // (100.26 + 100) / 500 = 0.4005 on 0.2854; (50.26 + 200) / 500 = 0.5005 on 0.1716.
    EXPECT_EQ(session.plot.plot_blatt_rechts, 2);
    EXPECT_EQ(session.plot.plot_blatt_hoch, 3);
    EXPECT_EQ(session.sheet.plot_auto_rechts, 2);
    EXPECT_EQ(session.sheet.plot_auto_hoch, 3);
}

TEST_F(SheetDivisionTest, ManualCountsStandWhenMarginOrOrientationChanges) {
    session.plot.plot_massstab = 1.0 / 500;
    session.plot.plot_blatt_auto = table_false;
    session.plot.plot_blatt_rechts = 7;
    session.plot.plot_blatt_hoch = 9;
    span(100, 50);
    for (const auto ausrichtung : std::initializer_list<std::int16_t>{1, 2}) {
        for (const auto heftrand : std::initializer_list<std::int16_t>{1, 2, 3}) {
            session.plot.plot_ausrichtung = ausrichtung;
            session.plot.plot_heftrand = heftrand;
            divide();
            EXPECT_EQ(session.plot.plot_blatt_rechts, 7);
            EXPECT_EQ(session.plot.plot_blatt_hoch, 9);
            EXPECT_EQ(session.sheet.plot_auto_rechts, ausrichtung == 1 ? 2 : 1);
        }
    }
}

}  // namespace
}  // namespace veldra
