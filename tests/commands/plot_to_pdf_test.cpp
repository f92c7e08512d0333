// "Plot als PDF speichern...": the part in view with the sheets of the application printer.

#include "commands/plot_to_pdf.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "commands/lifecycle.h"
#include "commands/offered_commands.h"
#include "commands/plot_job.h"
#include "pdf/pdf_reader.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra::pdf_test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// At 1:1000 with the zero point (0, 0), upright sheets bound at the left, legend at the lower
/// right. Signatures have a radius of 2 mm.
constexpr const char* two_parts =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 0 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 363 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 1000 0 0 73\nPUNKTSIGNATUR 10 20 0 0 1 \"3\"\n";

class PlotToPdf : public testing_support::SessionOnFile {
 protected:
    void open() {
        take_printer(session, desk.printer);
        datei_neu_laden(session, folder.file("ve.dat", from_utf8(two_parts)),
                        OpenedBy::open_command, desk);
        settle();
        drawn = 0;
    }
    /// Brings sheets and printer to where the preview has them.
    void settle() {
        ComputeSheetDivision(session, desk);
        printer.calls.clear();
    }
    [[nodiscard]] std::vector<ShownPage> plotted() {
        plot_als_pdf(session, file, desk);
        return shown_pages(file);
    }
    [[nodiscard]] std::string message() {
        try {
            plot_als_pdf(session, file, desk);
        } catch (const FatalError& failure) {
            return failure.what();
        }
        return "";
    }
    /// Names of all files in the test's folder.
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    test::FakeMeasurer measurer;
    test::ScriptedPrinter printer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }, &printer};
    std::string file = folder.path("plan.pdf");
};

TEST_F(PlotToPdf, SheetsAreThoseOfTheApplicationPrinterWithItsMargins) {
    printer.device().margin = 7;
    open();
    const auto pages = plotted();
    // 365.01 m from the zero point on sheets of 210 - 2 * 7 - 15.5 = 180.5 mm. With the 5 mm that
    // the device itself leaves free they would be two.
    ASSERT_EQ(pages.size(), 3U);
    for (const ShownPage& page : pages) {
        EXPECT_NEAR(page.width, 210, 0.01);
        EXPECT_NEAR(page.height, 297, 0.01);
    }
    // 7 mm that cannot be printed on, 15 mm to bind or 12 mm of foot; a metre is a millimetre.
    const auto first = circle_centres(pages[0]);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_NEAR(first[0].x, 7 + 15 + 10, 0.01);
    EXPECT_NEAR(first[0].y, 7 + 12 + 20, 0.01);
    const auto last = circle_centres(pages[2]);
    ASSERT_EQ(last.size(), 1U);
    EXPECT_NEAR(last[0].x, 7 + 15 + 363 - 2 * 180.5, 0.01);
    EXPECT_NEAR(last[0].y, 7 + 12 + 60, 0.01);
    // The legend stands on the last sheet.
    const auto prints = [&pages](std::size_t page, const std::string& text) {
        return std::any_of(pages[page].texts.begin(), pages[page].texts.end(),
                           [&](const Text& shown) { return shown.bytes == text; });
    };
    EXPECT_TRUE(prints(2, "Grundriss 1: 1000"));
    EXPECT_FALSE(prints(0, "Grundriss 1: 1000"));
}

TEST_F(PlotToPdf, LyingPaperOfAnotherSize) {
    open();
    printer.set_PaperSize(8);
    session.part.plot.plot_ausrichtung = 2;
    session.part.plot.plot_heftrand = 3;
    settle();
    const auto pages = plotted();
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_NEAR(pages[0].width, 420, 0.01);
    EXPECT_NEAR(pages[0].height, 297, 0.01);
    const auto circles = circle_centres(pages[0]);
    ASSERT_EQ(circles.size(), 2U);
    EXPECT_NEAR(circles[0].x, 5 + 0.5 + 10, 0.01);
    EXPECT_NEAR(circles[0].y, 5 + 12 + 20, 0.01);
}

TEST_F(PlotToPdf, MarginsOfThePrinterStayAtTheSidesOfThePaperAsItLies) {
    printer.device().margin = 3;
    printer.device().margin_ends = 12;
    open();
    // Upright: 210 - 2 * 3 - 15.5 = 188.5 mm across, bound at the left.
    const auto upright = plotted();
    ASSERT_EQ(upright.size(), 2U);
    ASSERT_EQ(circle_centres(upright[0]).size(), 1U);
    EXPECT_NEAR(circle_centres(upright[0])[0].x, 3 + 15 + 10, 0.01);
    EXPECT_NEAR(circle_centres(upright[0])[0].y, 12 + 12 + 20, 0.01);
    session.part.plot.plot_ausrichtung = 2;
    session.part.plot.plot_heftrand = 1;
    settle();
    // Lying, 297 - 2 * 12 - 1 = 272 mm across.
    const auto lying = plotted();
    ASSERT_EQ(lying.size(), 2U);
    EXPECT_NEAR(lying[0].width, 297, 0.01);
    ASSERT_EQ(circle_centres(lying[0]).size(), 1U);
    EXPECT_NEAR(circle_centres(lying[0])[0].x, 12 + 0.5 + 10, 0.01);
    EXPECT_NEAR(circle_centres(lying[0])[0].y, 3 + 12 + 20, 0.01);
    ASSERT_EQ(circle_centres(lying[1]).size(), 1U);
    EXPECT_NEAR(circle_centres(lying[1])[0].x, 12 + 0.5 + 363 - 272, 0.01);
    EXPECT_NEAR(circle_centres(lying[1])[0].y, 3 + 12 + 60, 0.01);
}

TEST_F(PlotToPdf, PaperThatOnlyTheDriverKnows) {
    printer.device().papers[300] = {600, 900};
    open();
    printer.set_PaperSize(300);
    settle();
    const auto pages = plotted();
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_NEAR(pages[0].width, 600, 0.02);
    EXPECT_NEAR(pages[0].height, 900, 0.02);
}

TEST_F(PlotToPdf, WithoutAPrinterThePaperIsA4) {
    desk.printer = nullptr;
    open();
    const auto pages = plotted();
    // Upright A4 counts as 196.7 x 285.2 mm then; 365.01 m take three sheets of 181.2 mm.
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_NEAR(pages[0].width, 210, 0.01);
    EXPECT_NEAR(pages[0].height, 297, 0.01);
    const auto circles = circle_centres(pages[0]);
    ASSERT_EQ(circles.size(), 1U);
    EXPECT_NEAR(circles[0].x, (210 - 196.7) / 2 + 15 + 10, 0.01);
    EXPECT_NEAR(circles[0].y, (297 - 285.2) / 2 + 12 + 20, 0.01);
    EXPECT_EQ(session.printer.drucker_ok, table_false);
    EXPECT_EQ(offered_commands(session)[MenuItem::m_optionen_drucker].caption,
              "Druckertreiber nicht verfügbar");
    EXPECT_FALSE(offered_commands(session)[MenuItem::m_optionen_drucker].enabled);
}

TEST_F(PlotToPdf, PrinterAndSettingsStayAndOneCopyIsPlotted) {
    open();
    PrinterState& state = session.printer;
    state.exemplare = 3;
    state.drucker_farbe = 1;
    state.druck_in_datei = table_true;
    state.merk_format = 270;
    session.part.plot.plot_blatt_auto = table_false;
    session.part.plot.plot_blatt_rechts = 2;
    session.part.plot.plot_blatt_hoch = 2;
    settle();
    const std::string caption = offered_commands(session)[MenuItem::m_optionen_drucker].caption;
    const auto pages = plotted();
    EXPECT_EQ(pages.size(), 4U);
    EXPECT_EQ(state.exemplare, 3);
    EXPECT_EQ(state.drucker_farbe, 1);
    EXPECT_EQ(state.druck_in_datei, table_true);
    EXPECT_EQ(state.merk_format, 270);
    EXPECT_EQ(state.drucker_ok, table_true);
    EXPECT_EQ(offered_commands(session)[MenuItem::m_optionen_drucker].caption, caption);
    EXPECT_THAT(printer.documents, IsEmpty());
    EXPECT_EQ(printer.Orientation(), 1);
    EXPECT_EQ(printer.PaperSize(), 9);
    EXPECT_EQ(printer.PaperBin(), 7);
    const PlotSettings& plot = session.part.plot;
    EXPECT_EQ(plot.plot_massstab, 0.001);
    EXPECT_EQ(plot.plot_ausrichtung, 1);
    EXPECT_EQ(plot.plot_heftrand, 2);
    EXPECT_EQ(plot.plot_legendenlage, 4);
    EXPECT_EQ(plot.plot_blatt_auto, table_false);
    EXPECT_EQ(plot.plot_blatt_rechts, 2);
    EXPECT_EQ(plot.plot_blatt_hoch, 2);
    EXPECT_EQ(plot.plot_null_rechts, 0);
    EXPECT_EQ(plot.plot_null_hoch, 0);
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(session.window.mouse_pointer, 0);
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(drawn, 1);
    EXPECT_THAT(files(), ElementsAre("plan.pdf", "ve.dat"));
}

TEST_F(PlotToPdf, ColoursStayWhereThePrinterHasNone) {
    open();
    session.printer.drucker_farbe = 1;
    const auto pages = plotted();
    // The signature of a control point is blue: three numbers instead of one.
    const auto& paths = pages.front().paths;
    EXPECT_TRUE(std::any_of(paths.begin(), paths.end(), [](const Path& path) {
        return std::count(path.pen.fill.begin(), path.pen.fill.end(), ' ') == 3;
    }));
}

TEST_F(PlotToPdf, FolderThatIsNotThereIsTold) {
    open();
    file = folder.path("fehlt") + "/plan.pdf";
    EXPECT_EQ(message(), file +
                             ": Datei kann nicht geschrieben werden: Datei oder Verzeichnis nicht "
                             "vorhanden");
    EXPECT_THAT(files(), ElementsAre("ve.dat"));
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(session.printer.drucker_ok, table_true);
    EXPECT_EQ(drawn, 0);
}

TEST_F(PlotToPdf, FailureAmongTheSheetsLeavesTheOldFileAndTheSettings) {
    open();
    static_cast<void>(folder.file("plan.pdf", "alt"));
    // A pen of 2 times 32767 pixels is too wide for 16 bits.
    session.settings.faktorStrich = 32767;
    session.settings.punkt_breite = 2;
    session.part.obj.obj_pusi = 0;
    session.part.lin.lin_suchen({10, 20, 40, 60});
    ++session.part.tables_revision;
    session.printer.exemplare = 2;
    EXPECT_THAT(message(), HasSubstr("Überlauf"));
    EXPECT_EQ(testing_support::file_bytes(file), "alt");
    EXPECT_THAT(files(), ElementsAre("plan.pdf", "ve.dat"));
    EXPECT_EQ(session.printer.exemplare, 2);
    EXPECT_EQ(session.printer.drucker_ok, table_true);
    EXPECT_EQ(session.part.plot.plot_massstab, 0.001);
    EXPECT_EQ(session.window.mouse_pointer, 0);
    EXPECT_EQ(drawn, 1);
}

TEST_F(PlotToPdf, NothingCanBeUndoneAfterwards) {
    open();
    session.window.undo.undo_art = 4;
    session.window.undo.undo_art = 3;
    plot_als_pdf(session, file, desk);
    EXPECT_FALSE(offered_commands(session)[MenuItem::m_ansicht_undo].enabled);
    EXPECT_EQ(session.window.undo.undo_art, 0);
}

}  // namespace
}  // namespace veldra::pdf_test
