#include <gmock/gmock.h>

#include "commands/lifecycle.h"
#include "fake_measurer.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "session_fixture.h"

namespace veldra {
namespace {

class PrinterLifecycle : public testing_support::SessionOnFile {
 protected:
    void open() {
        const std::string path =
            folder.file("a.dat",
                        "NETZTEIL A\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
                        "PUNKTSIGNATUR 0 0 0 0 1 \"1\"\nPUNKTSIGNATUR 4 4 0 0 0 \"2\"\n");
        datei_neu_laden(session, path, OpenedBy::open_command, desk);
    }

    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    test::ScriptedPrinter printer;
    Desk desk{measurer, ui, [] {}, &printer};
};

TEST_F(PrinterLifecycle, PartIsDividedIntoSheetsOfTheApplicationPrinter) {
    take_printer(session, &printer);
    open();
    // A4 upright with 5 mm on each side, bound on the left.
    EXPECT_EQ(session.plot.plot_ausrichtung, 1);
    EXPECT_NEAR(session.sheet.papier_breite, 0.200 - 0.0155, 1e-9);
    EXPECT_NEAR(session.sheet.papier_hoehe, 0.287 - 0.0125, 1e-9);
    EXPECT_GT(printer.heights_measured, 0);
}

TEST_F(PrinterLifecycle, PrinterThatDoesNotWorkIsLeftAlone) {
    printer.device().orientations = {1};
    take_printer(session, &printer);
    printer.clear_calls();
    open();
    EXPECT_NEAR(session.sheet.papier_breite, 0.1967 - 0.0155, 1e-9);
    EXPECT_THAT(printer.calls, ::testing::IsEmpty());
    EXPECT_EQ(printer.heights_measured, 0);
}

}  // namespace
}  // namespace veldra
