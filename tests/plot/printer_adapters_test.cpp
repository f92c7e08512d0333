#include "plot/printer_adapters.h"

#include <gmock/gmock.h>

#include "network_builder.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"

namespace veldra {
namespace {

using test::FakeMeasurer;
using test::ScriptedPrinter;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double millimetres_per_point = 25.4 / 72;

class PrinterAdapters : public testing::Test {
 protected:
    PrinterAdapters() {
        test::show_nothing(session);
        CheckPrinter(session, &printer);
        printer.clear_calls();
    }

    Session session;
    FakeMeasurer screen;
    ScriptedPrinter printer;
    test::RecordingInterface ui;
    Desk desk{screen, ui, [] {}, &printer};
};

TEST_F(PrinterAdapters, PrintableAreaIsReadOnceThePaperIsTurned) {
    ApplicationSheets sheets(session, printer);
    const PrintableArea upright = sheets.printable_area(1);
    EXPECT_FLOAT_EQ(upright.breite, 200);
    EXPECT_FLOAT_EQ(upright.hoehe, 287);
    const PrintableArea lying = sheets.printable_area(2);
    EXPECT_FLOAT_EQ(lying.breite, 287);
    EXPECT_FLOAT_EQ(lying.hoehe, 200);
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 1", "Orientation 2"));
}

TEST_F(PrinterAdapters, PaperAreaComesFromThePrinter) {
    session.part.plot.plot_ausrichtung = 1;
    session.part.plot.plot_heftrand = 2;
    ComputePaperArea(session, desk);
    EXPECT_NEAR(session.part.sheet.papier_breite, 0.200 - 0.0155, 1e-9);
    EXPECT_NEAR(session.part.sheet.papier_hoehe, 0.287 - 0.0125, 1e-9);
}

TEST_F(PrinterAdapters, PrinterThatFailsAtThePaperAreaCountsAsGone) {
    printer.device().failing = {"Orientation"};
    session.part.plot.plot_ausrichtung = 1;
    session.part.plot.plot_heftrand = 3;
    ComputePaperArea(session, desk);
    EXPECT_DOUBLE_EQ(session.part.sheet.papier_breite, 0.1967 - 0.001);
    EXPECT_EQ(session.printer.drucker_ok, 0);
}

TEST_F(PrinterAdapters, SheetDivisionTriesBothOrientationsOnThePrinter) {
    session.part.plot.plot_massstab = 0.001;
    test::add_point(session, 0, 0);
    test::add_point(session, 10, 10);
    ComputeSheetDivision(session, desk);
    EXPECT_EQ(session.part.plot.plot_ausrichtung, 1);
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 2", "EndDoc", "PaperBin 7", "PaperSize 9",
                                           "Orientation 1", "EndDoc", "PaperBin 7", "PaperSize 9"));
    EXPECT_NEAR(session.part.sheet.papier_breite, 0.200 - 0.0155, 1e-9);
}

TEST_F(PrinterAdapters, SheetDivisionWithoutPrinterTakesTheFixedSizes) {
    desk.printer = nullptr;
    test::add_point(session, 0, 0);
    ComputeSheetDivision(session, desk);
    EXPECT_DOUBLE_EQ(session.part.sheet.papier_breite, 0.1967 - 0.0155);
    EXPECT_THAT(printer.calls, IsEmpty());
}

TEST_F(PrinterAdapters, TextsHaveTheSizeOfTheWholePointsThatThePrinterIsGiven) {
    PaperTextOnDesk text(session, screen, &printer);
    // Digits of 2.5 mm take 12 points; a letter is half as wide.
    text.set_font({"Arial", 8, 0, 0, 0}, 2.5F);
    const PaperExtent size = text.text_size("abc");
    EXPECT_NEAR(size.height, 12 * millimetres_per_point / 1000, 1e-9);
    EXPECT_NEAR(size.width, 3 * 6 * millimetres_per_point / 1000, 1e-9);
    const FontSpec fitted{"Arial", 12, 0, 0, 0};
    EXPECT_DOUBLE_EQ(size.height * 1000, printer.TextHeight("abc", fitted));
    EXPECT_DOUBLE_EQ(size.width * 1000, printer.TextWidth("abc", fitted));
}

TEST_F(PrinterAdapters, TextsAreEstimatedWhileNoPrinterWorks) {
    session.printer.drucker_ok = 0;
    for (Printer* any : {static_cast<Printer*>(&printer), static_cast<Printer*>(nullptr)}) {
        PaperTextOnDesk text(session, screen, any);
        text.set_font({"Arial", 8, 0, 0, 0}, 2.5F);
        // The line is 1.68 times the digits, a letter half as wide as that.
        EXPECT_NEAR(text.text_size("abc").height, 0.0042, 1e-9);
        EXPECT_NEAR(text.text_size("abc").width, 0.0063, 1e-9);
    }
    EXPECT_EQ(printer.heights_measured, 0);
}

TEST_F(PrinterAdapters, ExtentsFollowThePrintersTextSizes) {
    session.part.obj.obj_pube = 1;
    session.settings.stanplt = 0;
    session.settings.stanptp = 0;
    session.settings.pubsizplo = 2.5F;
    session.part.plot.plot_massstab = 0.001;
    test::add_point(session, 0, 0).pu_bez = "Meierhof";
    ComputeExtents(session, desk);
    // Eight letters of 6 points at 1:1000, and a centimetre.
    EXPECT_NEAR(session.part.extents.gesamt_rw_max, 8 * 6 * millimetres_per_point + 0.01, 1e-6);
    desk.printer = nullptr;
    ComputeExtents(session, desk);
    EXPECT_NEAR(session.part.extents.gesamt_rw_max, 8 * 2.1 + 0.01, 1e-6);
}

}  // namespace
}  // namespace veldra
