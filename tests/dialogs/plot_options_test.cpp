#include "dialogs/plot_options.h"

#include <gmock/gmock.h>

#include "network_builder.h"
#include "plot/printer_adapters.h"
#include "recording_interface.h"
#include "scripted_printer.h"

namespace veldra {
namespace {

using test::add_point;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A part of 300 m by 200 m in 1:1000 on upright A4 whose printable area is 200 mm by 287 mm. With
/// the binding margin on the left, sheets are 184.5 mm by 274.5 mm net.
class PlotOptionsTest : public testing::Test {
 protected:
    PlotOptionsTest() {
        test::show_nothing(session);
        add_point(session, 0, 0);
        add_point(session, 300, 200);
        add_part("Lagenetz");
        add_part("Höhennetz");
        session.netz_aktuell = 2;
        session.datei_geladen = 1;
        session.plot = {0.001, 1, 2, 4, table_true, 1, 1, 0, 0};
        session.view = {0, 0, 300, 200, 0.02};
        ComputeSheetDivision(session, desk);
    }

    void add_part(const char* name) { session.netz[session.netz.append()].netz_name = name; }

    void open() { options = open_plot_options(session, desk); }

    void expect_computed(std::int16_t rechts, std::int16_t hoch) const {
        EXPECT_EQ(session.sheet.plot_auto_rechts, rechts);
        EXPECT_EQ(session.sheet.plot_auto_hoch, hoch);
    }
    void expect_counts(std::int16_t rechts, std::int16_t hoch) const {
        EXPECT_EQ(session.plot.plot_blatt_rechts, rechts);
        EXPECT_EQ(session.plot.plot_blatt_hoch, hoch);
    }

    Session session;
    test::FakeMeasurer screen;
    test::ScriptedPrinter printer;
    test::RecordingInterface ui;
    Desk desk{screen, ui, [] {}, &printer};
    PlotOptions options;
};

TEST_F(PlotOptionsTest, OpeningShowsTheSettingsOfThePart) {
    open();
    EXPECT_EQ(options.massstab, "1 000");
    EXPECT_TRUE(options.blatt_auto);
    EXPECT_FALSE(options.null_anpassen);
    // 301 mm in sheets of 184.5 mm, 201 mm in one of 274.5 mm.
    EXPECT_EQ(options.blatt_rechts, "2");
    EXPECT_EQ(options.blatt_hoch, "1");
    expect_computed(2, 1);
    EXPECT_TRUE(options.netzteil_offen);
    EXPECT_TRUE(options.netzteil_plotten);
}

TEST_F(PlotOptionsTest, OpeningTriesThePrinterAndTurnsItsPaper) {
    session.printer.drucker_ok = 0;
    open();
    EXPECT_EQ(session.printer.drucker_ok, -1);
    EXPECT_EQ(printer.Orientation(), 1);
    EXPECT_NEAR(session.sheet.papier_breite, 0.1845, 1e-6);
    EXPECT_NEAR(session.sheet.papier_hoehe, 0.2745, 1e-6);
}

TEST_F(PlotOptionsTest, OpeningTakesTheUndoAway) {
    session.window[MenuItem::m_ansicht_undo] = {true, true, false, "Rückgängig: Vergrößern"};
    open();
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption, "Rückgängig:");
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_undo].enabled);
}

TEST_F(PlotOptionsTest, PrinterThatStaysUprightIsReplacedByTheFixedSizes) {
    printer.device().orientations = {1};
    open();
    EXPECT_EQ(session.printer.drucker_ok, 0);
    EXPECT_NEAR(session.sheet.papier_breite, 0.1967 - 0.0155, 1e-9);
    EXPECT_EQ(session.window[MenuItem::m_optionen_drucker].caption,
              "Druckertreiber nicht verfügbar");
}

TEST_F(PlotOptionsTest, SystemWithoutPrintersHasTheFixedSizes) {
    desk.printer = nullptr;
    open();
    EXPECT_TRUE(choose_plot_format(session, desk, options, 1));
    EXPECT_NEAR(session.sheet.papier_breite, 0.2864 - 0.0155, 1e-9);
    EXPECT_NEAR(session.sheet.papier_hoehe, 0.1986 - 0.0125, 1e-9);
}

TEST_F(PlotOptionsTest, WithoutAnOpenPartNoneIsMarked) {
    session.datei_geladen = 0;
    open();
    EXPECT_FALSE(options.netzteil_offen);
}

TEST_F(PlotOptionsTest, DenominatorsAreShownInWholeNumbers) {
    EXPECT_EQ(plot_scale_denominator(1 / 2500.4), "2 500");
    EXPECT_EQ(plot_scale_denominator(1 / 2500.5), "2 501");
    EXPECT_EQ(plot_scale_denominator(1.0 / 5000000), "5 000 000");
    EXPECT_EQ(plot_scale_denominator(-99), "");
}

// Scale

TEST_F(PlotOptionsTest, ScaleCountsTheSheetsAnew) {
    open();
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "500"));
    EXPECT_EQ(session.plot.plot_massstab, 0.002);
    EXPECT_EQ(options.massstab, "500");
    // 601 mm in sheets of 184.5 mm, 401 mm in sheets of 274.5 mm.
    expect_computed(4, 2);
    expect_counts(4, 2);
    EXPECT_EQ(options.blatt_rechts, "4");
    EXPECT_EQ(options.blatt_hoch, "2");
}

TEST_F(PlotOptionsTest, ScaleIsReadWithCommaPointAndBlanks) {
    open();
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "2500,5"));
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1 / 2500.5);
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "1250.0"));
    EXPECT_DOUBLE_EQ(session.plot.plot_massstab, 1.0 / 1250);
    EXPECT_EQ(options.massstab, "1 250");
    EXPECT_TRUE(choose_plot_scale(session, desk, options, " 10  000 "));
    EXPECT_EQ(options.massstab, "10 000");
}

TEST_F(PlotOptionsTest, WrongScaleIsRefusedAndNothingChanges) {
    open();
    for (const char* wrong : {"", "0", "-500", "abc", "0.4"}) {
        EXPECT_FALSE(choose_plot_scale(session, desk, options, wrong)) << wrong;
        EXPECT_EQ(session.plot.plot_massstab, 0.001) << wrong;
        EXPECT_EQ(options.massstab, "1 000") << wrong;
        expect_computed(2, 1);
    }
}

TEST_F(PlotOptionsTest, ScaleWithMoreSheetsThanCanBeCountedIsRefused) {
    add_point(session, 10000, 0);
    open();
    // 10 km in 1:1 take 54200 sheets.
    EXPECT_FALSE(choose_plot_scale(session, desk, options, "1"));
    EXPECT_EQ(session.plot.plot_massstab, 0.001);
    EXPECT_EQ(options.massstab, "1 000");
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "2"));
    // 10000.02 m and twice half a millimetre.
    EXPECT_EQ(session.sheet.plot_auto_rechts, 27101);
}

TEST_F(PlotOptionsTest, EnormousDenominatorsEndNothing) {
    open();
    for (const char* huge : {"99999999999999999999", "1e300", "1e999"}) {
        static_cast<void>(choose_plot_scale(session, desk, options, huge));
        EXPECT_GT(session.plot.plot_massstab, 0) << huge;
    }
    reject_plot_options(session, desk);
    EXPECT_EQ(session.plot.plot_massstab, 0.001);
}

TEST_F(PlotOptionsTest, ManualCountsStayWhenTheScaleChanges) {
    open();
    EXPECT_TRUE(choose_auto_sheets(session, options, false));
    options.blatt_rechts = "7";
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "500"));
    EXPECT_EQ(options.blatt_rechts, "7");
    EXPECT_EQ(options.blatt_hoch, "1");
    expect_counts(2, 1);
    expect_computed(4, 2);
    EXPECT_EQ(bracketed_count(session.sheet.plot_auto_rechts), "(4)");
    EXPECT_EQ(bracketed_count(session.sheet.plot_auto_hoch), "(2)");
}

// Paper

TEST_F(PlotOptionsTest, FormatTurnsThePaperOfThePrinter) {
    open();
    printer.clear_calls();
    EXPECT_TRUE(choose_plot_format(session, desk, options, 1));
    EXPECT_EQ(session.plot.plot_ausrichtung, 2);
    EXPECT_THAT(printer.calls, ElementsAre("EndDoc", "PaperBin 7", "PaperSize 9", "Orientation 2"));
    // 271.5 mm by 187.5 mm net for 301 mm by 201 mm.
    expect_computed(2, 2);
    expect_counts(2, 2);
    EXPECT_TRUE(choose_plot_format(session, desk, options, 0));
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    expect_computed(2, 1);
}

TEST_F(PlotOptionsTest, FormatWithoutAWorkingPrinterLeavesItAlone) {
    printer.device().orientations = {1};
    open();
    printer.clear_calls();
    EXPECT_TRUE(choose_plot_format(session, desk, options, 1));
    EXPECT_THAT(printer.calls, IsEmpty());
    EXPECT_NEAR(session.sheet.papier_breite, 0.2864 - 0.0155, 1e-9);
}

TEST_F(PlotOptionsTest, FormatWithMoreSheetsThanCanBeCountedIsTakenBack) {
    add_point(session, 0, 7950);
    open();
    // 7950 m in 1:1: 28962 sheets of 274.5 mm, but 42400 of 187.5 mm.
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "1"));
    EXPECT_FALSE(choose_plot_format(session, desk, options, 1));
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_EQ(printer.Orientation(), 1);
    EXPECT_NEAR(session.sheet.papier_hoehe, 0.2745, 1e-6);
    EXPECT_EQ(session.sheet.plot_auto_hoch, 28962);
}

TEST_F(PlotOptionsTest, MarginChangesTheNetArea) {
    open();
    EXPECT_TRUE(choose_binding_margin(session, desk, options, 3));
    EXPECT_EQ(session.plot.plot_heftrand, 3);
    EXPECT_NEAR(session.sheet.papier_breite, 0.199, 1e-6);
    EXPECT_TRUE(choose_binding_margin(session, desk, options, 1));
    EXPECT_NEAR(session.sheet.papier_breite, 0.199, 1e-6);
    EXPECT_NEAR(session.sheet.papier_hoehe, 0.260, 1e-6);
}

TEST_F(PlotOptionsTest, MarginMayDecideOnASheetMore) {
    open();
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "505"));
    // 595 mm: 3.2 sheets of 184.5 mm, 2.99 of 199 mm.
    expect_counts(4, 2);
    EXPECT_TRUE(choose_binding_margin(session, desk, options, 3));
    expect_counts(3, 2);
}

// Zero point

TEST_F(PlotOptionsTest, SheetsAreCountedFromTheZeroPoint) {
    session.plot.plot_null_rechts = -100;
    session.plot.plot_null_hoch = -100;
    open();
    // 400.5 mm and 300.5 mm from the zero point, 301 mm and 201 mm from the lower left.
    expect_counts(3, 2);
    EXPECT_TRUE(choose_zero_point(session, options, true));
    expect_counts(2, 1);
    EXPECT_EQ(session.plot.plot_null_rechts, -100);
    EXPECT_TRUE(choose_zero_point(session, options, false));
    expect_counts(3, 2);
}

TEST_F(PlotOptionsTest, OkMovesTheZeroPointToTheLowerLeft) {
    session.plot.plot_null_rechts = -100;
    session.plot.plot_null_hoch = -100;
    open();
    EXPECT_TRUE(choose_zero_point(session, options, true));
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.plot.plot_null_rechts, session.extents.gesamt_rw_min);
    EXPECT_EQ(session.plot.plot_null_hoch, session.extents.gesamt_hw_min);
    EXPECT_NEAR(session.plot.plot_null_rechts, -0.5, 0.02);
    expect_counts(2, 1);
}

TEST_F(PlotOptionsTest, OkLeavesTheZeroPointAloneOtherwise) {
    session.plot.plot_null_rechts = -100;
    open();
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.plot.plot_null_rechts, -100);
}

// OK and Abbrechen

TEST_F(PlotOptionsTest, OkTakesTheTypedScaleWithItsSheets) {
    open();
    EXPECT_TRUE(accept_plot_options(session, desk, options, "500"));
    EXPECT_EQ(session.plot.plot_massstab, 0.002);
    EXPECT_EQ(session.plot.plot_blatt_auto, -1);
    expect_counts(4, 2);
    EXPECT_EQ(session.plot_merk.plot_massstab, 0.002);
    EXPECT_EQ(session.plot_merk.plot_blatt_rechts, 4);
    EXPECT_THAT(ui.pointers, ElementsAre(11, 0));
    EXPECT_EQ(session.window.mouse_pointer, 0);
}

TEST_F(PlotOptionsTest, OkSettlesWhetherEmptySheetsAreLeftOut) {
    open();
    EXPECT_FALSE(options.ohne_leere);
    options.ohne_leere = true;
    reject_plot_options(session, desk);
    EXPECT_EQ(session.printer.ohne_leere, table_false);
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.printer.ohne_leere, table_true);
    open();
    EXPECT_TRUE(options.ohne_leere);
    options.ohne_leere = false;
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.printer.ohne_leere, table_false);
}

TEST_F(PlotOptionsTest, OkTakesManualCounts) {
    open();
    EXPECT_TRUE(choose_auto_sheets(session, options, false));
    options.blatt_rechts = "3";
    options.blatt_hoch = " 5,0";
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.plot.plot_blatt_auto, 0);
    expect_counts(3, 5);
    EXPECT_EQ(session.plot_merk.plot_blatt_hoch, 5);
}

TEST_F(PlotOptionsTest, ManualCountsAreAtLeastOneAndFitTheirField) {
    open();
    EXPECT_TRUE(choose_auto_sheets(session, options, false));
    const auto counts_of = [&](const char* rechts, const char* hoch) {
        options.blatt_rechts = rechts;
        options.blatt_hoch = hoch;
        EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    };
    counts_of("0", "");
    expect_counts(1, 1);
    counts_of("-4", "abc");
    expect_counts(1, 1);
    counts_of("70000", "32767");
    expect_counts(32767, 32767);
}

TEST_F(PlotOptionsTest, OkWithAWrongScaleChangesNothing) {
    open();
    EXPECT_TRUE(choose_auto_sheets(session, options, false));
    options.blatt_rechts = "9";
    EXPECT_FALSE(accept_plot_options(session, desk, options, "0"));
    EXPECT_EQ(session.plot.plot_massstab, 0.001);
    EXPECT_EQ(session.plot.plot_blatt_auto, -1);
    expect_counts(2, 1);
    EXPECT_THAT(ui.pointers, IsEmpty());
}

TEST_F(PlotOptionsTest, OkMarksThePartInView) {
    open();
    options.netzteil_plotten = false;
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.netz[1].netz_plotmarke, -1);
    EXPECT_EQ(session.netz[2].netz_plotmarke, 0);
    open();
    EXPECT_FALSE(options.netzteil_plotten);
    options.netzteil_plotten = true;
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    EXPECT_EQ(session.netz[2].netz_plotmarke, -1);
}

TEST_F(PlotOptionsTest, OkFitsTheViewportInView) {
    session.picture = {15000, 15000};
    open();
    EXPECT_TRUE(accept_plot_options(session, desk, options, "1 000"));
    // 300 m by 200 m in a square picture.
    EXPECT_NEAR(session.view.ansicht_rw_max - session.view.ansicht_rw_min, 300, 1e-9);
    EXPECT_NEAR(session.view.ansicht_hw_max - session.view.ansicht_hw_min, 300, 1e-9);
    EXPECT_NEAR(session.view.ansicht_hw_min, -50, 1e-9);
}

TEST_F(PlotOptionsTest, AbbrechenPutsAllBack) {
    open();
    const Extents extents = session.extents;
    EXPECT_TRUE(choose_plot_scale(session, desk, options, "250"));
    EXPECT_TRUE(choose_plot_format(session, desk, options, 1));
    EXPECT_TRUE(choose_binding_margin(session, desk, options, 3));
    reject_plot_options(session, desk);
    EXPECT_EQ(session.plot.plot_massstab, 0.001);
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_EQ(session.plot.plot_heftrand, 2);
    expect_counts(2, 1);
    EXPECT_EQ(session.extents.gesamt_rw_max, extents.gesamt_rw_max);
    EXPECT_NEAR(session.sheet.papier_breite, 0.1845, 1e-6);
    EXPECT_EQ(printer.Orientation(), 1);
}

}  // namespace
}  // namespace veldra
