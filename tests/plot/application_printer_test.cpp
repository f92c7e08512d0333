#include "plot/application_printer.h"

#include <gmock/gmock.h>

#include "recording_interface.h"
#include "scripted_printer.h"

namespace veldra {
namespace {

using test::RecordingInterface;
using test::ScriptedDevice;
using test::ScriptedPrinter;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ApplicationPrinter : public testing::Test {
 protected:
    void expect_unavailable() const { EXPECT_EQ(session.printer.drucker_ok, 0); }
    /// The printer has passed its check and nothing is left of that in the list of calls.
    void make_ready() {
        CheckPrinter(session, &printer);
        ASSERT_EQ(session.printer.drucker_ok, -1);
        printer.clear_calls();
    }

    Session session;
    ScriptedPrinter printer;
};

// CheckPrinter

TEST_F(ApplicationPrinter, PrinterThatTakesBothOrientationsIsUsable) {
    CheckPrinter(session, &printer);
    EXPECT_EQ(session.printer.drucker_ok, -1);
    EXPECT_EQ(session.printer.drucker_name, "Plotter");
    EXPECT_EQ(printer.Orientation(), 2);
}

TEST_F(ApplicationPrinter, FirstCheckEndsNoDocumentAsNothingIsKnownToWork) {
    CheckPrinter(session, &printer);
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 1", "Orientation 2"));
}

TEST_F(ApplicationPrinter, LaterChecksCarryThePaperAcross) {
    make_ready();
    printer.set_PaperSize(8);
    printer.clear_calls();
    CheckPrinter(session, &printer);
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 1", "EndDoc", "PaperBin 7", "PaperSize 8",
                                           "Orientation 2", "EndDoc", "PaperBin 7", "PaperSize 8"));
    EXPECT_EQ(printer.PaperSize(), 8);
}

TEST_F(ApplicationPrinter, PrinterThatSilentlyStaysUprightIsNotUsable) {
    printer.device().orientations = {1};
    CheckPrinter(session, &printer);
    expect_unavailable();
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 1", "Orientation 2", "EndDoc"));
}

TEST_F(ApplicationPrinter, PrinterThatSilentlyStaysInLandscapeIsNotUsable) {
    printer.set_Orientation(2);
    printer.clear_calls();
    printer.device().orientations = {2};
    CheckPrinter(session, &printer);
    expect_unavailable();
    EXPECT_THAT(printer.calls, ElementsAre("Orientation 1", "EndDoc"));
}

TEST_F(ApplicationPrinter, PrinterThatRefusesAnOrientationLoudlyIsNotUsable) {
    printer.device().refusal = ScriptedDevice::Refusal::loud;
    for (const std::int16_t only : {std::int16_t{1}, std::int16_t{2}}) {
        printer.device().orientations = {only};
        CheckPrinter(session, &printer);
        expect_unavailable();
    }
}

TEST_F(ApplicationPrinter, FailureOfTheLastStepOfAFailedCheckIsIgnored) {
    printer.device().orientations = {1};
    printer.device().failing = {"EndDoc"};
    CheckPrinter(session, &printer);
    expect_unavailable();
}

TEST_F(ApplicationPrinter, PrinterThatNoLongerWorksLosesItsState) {
    make_ready();
    printer.device().failing = {"Orientation"};
    CheckPrinter(session, &printer);
    expect_unavailable();
    printer.device().failing = {};
    CheckPrinter(session, &printer);
    EXPECT_EQ(session.printer.drucker_ok, -1);
}

TEST_F(ApplicationPrinter, NoPrinterInstalledIsNotUsable) {
    ScriptedPrinter none{std::vector<ScriptedDevice>()};
    CheckPrinter(session, &none);
    expect_unavailable();
    session = Session();
    CheckPrinter(session, nullptr);
    expect_unavailable();
}

// ResetPrinter

TEST_F(ApplicationPrinter, ResetCarriesBinAndPaperAcrossTheEndOfTheDocument) {
    make_ready();
    printer.set_PaperSize(8);
    printer.set_PaperBin(4);
    ResetPrinter(session, printer);
    EXPECT_EQ(printer.PaperSize(), 8);
    EXPECT_EQ(printer.PaperBin(), 4);
    EXPECT_EQ(session.printer.merk_format, 8);
    EXPECT_EQ(session.printer.merk_schacht, 4);
}

TEST_F(ApplicationPrinter, EndOfTheDocumentAloneForgetsThePaper) {
    printer.set_PaperSize(8);
    printer.EndDoc();
    EXPECT_EQ(printer.PaperSize(), 9);
}

TEST_F(ApplicationPrinter, ResetKeepsTheSizeOfUserDefinedPaperInWholeTwips) {
    make_ready();
    printer.set_PaperSize(256);
    printer.set_Width(34015.75F);  // 600 mm
    printer.set_Height(17007.25F);
    ResetPrinter(session, printer);
    EXPECT_EQ(printer.PaperSize(), 256);
    EXPECT_FLOAT_EQ(printer.Width(), 34016);
    EXPECT_FLOAT_EQ(printer.Height(), 17007);
    EXPECT_FLOAT_EQ(session.printer.merk_breite, 34015.75F);
}

TEST_F(ApplicationPrinter, ResetLeavesTheSizeOfAnyOtherPaperAlone) {
    make_ready();
    ResetPrinter(session, printer);
    EXPECT_THAT(printer.calls, ElementsAre("EndDoc", "PaperBin 7", "PaperSize 9"));
}

TEST_F(ApplicationPrinter, ResetCarriesADriversOwnPaperCodeAcross) {
    printer.device().papers[300] = {914, 1200};
    make_ready();
    printer.set_PaperSize(300);
    ResetPrinter(session, printer);
    EXPECT_EQ(printer.PaperSize(), 300);
}

TEST_F(ApplicationPrinter, ResetDoesNothingWithoutAWorkingPrinter) {
    ResetPrinter(session, printer);
    EXPECT_THAT(printer.calls, IsEmpty());
}

TEST_F(ApplicationPrinter, ResetGoesOnBehindACallThatFails) {
    make_ready();
    printer.device().failing = {"EndDoc", "PaperBin"};
    ResetPrinter(session, printer);
    EXPECT_THAT(printer.calls, ElementsAre("EndDoc", "PaperBin 7", "PaperSize 9"));
}

// CheckPrinterColour

TEST_F(ApplicationPrinter, ColourIsFoundByExperiment) {
    make_ready();
    session.printer.drucker_farbe = 1;
    CheckPrinterColour(session, printer);
    EXPECT_EQ(session.printer.drucker_farbe, 2);
    EXPECT_THAT(printer.calls,
                ElementsAre("ColorMode 1", "ColorMode 2", "EndDoc", "PaperBin 7", "PaperSize 9"));
}

TEST_F(ApplicationPrinter, PrinterThatStaysMonochromeHasNoColour) {
    printer.device().has_colour = false;
    make_ready();
    CheckPrinterColour(session, printer);
    EXPECT_EQ(session.printer.drucker_farbe, 1);
}

TEST_F(ApplicationPrinter, ErrorsOfTheColourModeAreIgnored) {
    printer.device().failing = {"ColorMode"};
    make_ready();
    CheckPrinterColour(session, printer);
    EXPECT_EQ(session.printer.drucker_farbe, 2);  // the mode that it reads back is colour
}

TEST_F(ApplicationPrinter, ColourIsNotLookedForWithoutAWorkingPrinter) {
    session.printer.drucker_farbe = 1;
    CheckPrinterColour(session, printer);
    EXPECT_EQ(session.printer.drucker_farbe, 1);
    EXPECT_THAT(printer.calls, IsEmpty());
}

// Start

TEST_F(ApplicationPrinter, StartTakesNameStateAndColour) {
    printer.device().has_colour = false;
    session.printer.druck_in_datei = -1;
    session.printer.exemplare = 7;
    session.printer.exemplare_merk = 7;
    take_printer(session, &printer);
    EXPECT_EQ(session.printer.drucker_start, "Plotter");
    EXPECT_EQ(session.printer.drucker_ok, -1);
    EXPECT_EQ(session.printer.drucker_farbe, 1);
    EXPECT_EQ(session.printer.drucker_farbe_merk, 1);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
    EXPECT_EQ(session.printer.druck_in_datei_merk, 0);
    EXPECT_EQ(session.printer.exemplare, 1);
    EXPECT_EQ(session.printer.exemplare_merk, 1);
    EXPECT_EQ(printer.Orientation(), 2);
}

TEST_F(ApplicationPrinter, StartWithoutPrintersHasNoName) {
    ScriptedPrinter none{std::vector<ScriptedDevice>()};
    take_printer(session, &none);
    expect_unavailable();
    EXPECT_EQ(session.printer.drucker_start, "");
    take_printer(session, nullptr);
    expect_unavailable();
}

// FitPrinterFont, SetPrinterFont. A line of the double is as high as its font: 25.4/72 mm a point.

TEST_F(ApplicationPrinter, FontIsTheLastSizeBeforeTheTargetIsPassed) {
    make_ready();
    std::int16_t points = 0;
    // (2.5 + 0.05) * 1.68 = 4.284 mm = 12.14 points.
    FitPrinterFont(session, printer, 2.5F, {"Arial", 10, 0, 0, 0}, points);
    EXPECT_EQ(points, 12);
    // 2.1 mm: 3.612 mm = 10.24 points. 2.05 mm: 3.528 mm = 10.0006 points, 2.049 mm: 9.996.
    FitPrinterFont(session, printer, 2.1F, {"Arial", 10, 0, 0, 0}, points);
    EXPECT_EQ(points, 10);
    FitPrinterFont(session, printer, 2.05F, {"Arial", 10, 0, 0, 0}, points);
    EXPECT_EQ(points, 10);
    FitPrinterFont(session, printer, 2.049F, {"Arial", 10, 0, 0, 0}, points);
    EXPECT_EQ(points, 9);
}

TEST_F(ApplicationPrinter, FontSearchNeverGoesBelowSevenPoints) {
    make_ready();
    for (const float size : {0.0F, -5.0F, 1.0F}) {
        std::int16_t points = 0;
        FitPrinterFont(session, printer, size, FontSpec(), points);
        EXPECT_EQ(points, 7);
    }
}

TEST_F(ApplicationPrinter, FontSearchStopsAt2161Points) {
    make_ready();
    std::int16_t points = 0;
    FitPrinterFont(session, printer, 500, FontSpec(), points);
    EXPECT_EQ(points, 2161);
    // 2160 points are 762 mm: (453.5 + 0.05) * 1.68 = 761.964 mm is just below.
    FitPrinterFont(session, printer, 453.5F, FontSpec(), points);
    EXPECT_EQ(points, 2159);
}

TEST_F(ApplicationPrinter, FontSearchLeavesThePointsAloneWithoutAWorkingPrinter) {
    std::int16_t points = 99;
    FitPrinterFont(session, printer, 2.5F, FontSpec(), points);
    EXPECT_EQ(points, 99);
    EXPECT_EQ(printer.heights_measured, 0);
}

TEST_F(ApplicationPrinter, DigitHeightFollowsFromTheSizeInPoints) {
    make_ready();
    float size = 0;
    SetPrinterFont(session, printer, {"Arial", 12, 0, 0, 0}, size);
    EXPECT_FLOAT_EQ(size, static_cast<float>(12 * 25.4 / 72 / 1.68));
    session.printer.drucker_ok = 0;
    SetPrinterFont(session, printer, {"Arial", 24, 0, 0, 0}, size);
    EXPECT_FLOAT_EQ(size, static_cast<float>(12 * 25.4 / 72 / 1.68));
}

// PreparePrintToFile

/// What the user does when the form is shown, one entry a time.
struct Answer {
    std::size_t chosen = 0;  ///< the printer that becomes the default one
    bool to_file = true;
};

class ScriptedDialog final : public PrintDialog {
 public:
    ScriptedDialog(ScriptedPrinter& printer, std::vector<Answer> answers)
        : printer_(printer), answers_(std::move(answers)) {}

    std::int32_t ShowPrinter(std::int32_t flags) override {
        printer_.calls.push_back("ShowPrinter " + std::to_string(flags));
        if (shown >= answers_.size()) {
            throw std::logic_error("the form is shown once more than there are answers");
        }
        const Answer& answer = answers_[shown++];
        printer_.set_default(answer.chosen);
        return answer.to_file ? flags | print_to_file : flags & ~print_to_file;
    }

    std::size_t shown = 0;

 private:
    ScriptedPrinter& printer_;
    std::vector<Answer> answers_;
};

class PrintToFile : public ApplicationPrinter {
 protected:
    /// Three printers, the second of which is the application printer.
    PrintToFile() {
        for (const char* name : {"A", "B", "C"}) {
            ScriptedDevice device;
            device.name = name;
            many.devices.push_back(device);
        }
        many.devices.erase(many.devices.begin());
        many.assign(1);
        CheckPrinter(session, &many);
        session.printer.druck_in_datei = -1;
        many.clear_calls();
    }
    void prepare(std::vector<Answer> answers) {
        ScriptedDialog dialog(many, std::move(answers));
        PreparePrintToFile(session, many, ui, dialog);
        shown = dialog.shown;
    }

    ScriptedPrinter many;
    RecordingInterface ui;
    std::size_t shown = 0;
};

TEST_F(PrintToFile, NothingIsAskedUnlessTheOutputGoesToAFile) {
    session.printer.druck_in_datei = 0;
    prepare({});
    EXPECT_THAT(many.calls, IsEmpty());
    EXPECT_THAT(ui.texts, IsEmpty());
}

TEST_F(PrintToFile, WantedPrinterChosenAtOnceEndsAfterOneRound) {
    prepare({{1, true}});
    EXPECT_THAT(many.calls, ElementsAre("TrackDefault true", "ShowPrinter 36", "Copies 1",
                                        "TrackDefault false"));
    EXPECT_EQ(session.printer.druck_in_datei, -1);
    EXPECT_EQ(many.DeviceName(), "B");
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::information));
    EXPECT_THAT(ui.titles, ElementsAre("Ausgabe in Datei"));
    EXPECT_THAT(
        ui.texts,
        ElementsAre("Zur Ausgabe der Druckbefehle in eine Datei müssen Sie\n"
                    "im folgenden Formular den gewünschten Drucker (B)\n"
                    "als Standarddrucker einstellen und nach OK den Dateinamen eingeben.\n"
                    "Die erzeugte Datei können Sie ausdrucken, indem Sie im DOS-Fenster eingeben\n"
                    "PRINT dateiname bzw. TYPE dateiname > \"B\""));
}

TEST_F(PrintToFile, AnotherPrinterWithTheBoxTickedIsAskedForAgain) {
    prepare({{0, true}, {2, true}, {1, true}});
    EXPECT_EQ(shown, 3U);
    EXPECT_EQ(ui.texts.size(), 3U);
    EXPECT_EQ(session.printer.druck_in_datei, -1);
    EXPECT_EQ(many.DeviceName(), "B");
}

TEST_F(PrintToFile, UntickedBoxEndsTheQuestionAndReturnsToTheWantedPrinter) {
    prepare({{2, false}});
    EXPECT_EQ(shown, 1U);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
    EXPECT_EQ(many.DeviceName(), "B");
    EXPECT_THAT(many.calls, Contains("assign 1"));
    EXPECT_FALSE(many.tracks_default);
    // The default printer stays changed.
    many.set_TrackDefault(true);
    EXPECT_EQ(many.DeviceName(), "C");
}

TEST_F(PrintToFile, OfPrintersWithOneNameTheLastIsReturnedTo) {
    many.devices[2].name = "B";
    prepare({{0, false}});
    EXPECT_THAT(many.calls, Contains("assign 2"));
}

TEST_F(PrintToFile, FailureEndsTheTracking) {
    many.devices[2].failing = {"Copies"};
    EXPECT_THROW(prepare({{2, true}}), PrinterError);
    EXPECT_FALSE(many.tracks_default);
}

// The question at the end of the program

class DefaultPrinterQuestion : public PrintToFile {
 protected:
    void ask(std::vector<Answer> answers) {
        many.set_default(0);
        session.printer.drucker_start = "A";
        many.set_default(new_default);
        many.clear_calls();
        ScriptedDialog dialog(many, std::move(answers));
        ask_for_default_printer(session, many, ui, dialog);
        shown = dialog.shown;
    }

    std::size_t new_default = 2;
};

TEST_F(DefaultPrinterQuestion, UnchangedDefaultAsksNothing) {
    new_default = 0;
    ask({});
    EXPECT_THAT(many.calls, ElementsAre("TrackDefault true", "TrackDefault false"));
    EXPECT_THAT(ui.texts, IsEmpty());
}

TEST_F(DefaultPrinterQuestion, ChangedDefaultMayBeChosenAgain) {
    ask({{0, false}});
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::question_yes_no));
    EXPECT_THAT(ui.titles, ElementsAre("Druckerauswahl"));
    EXPECT_THAT(ui.texts,
                ElementsAre("Sie haben im Laufe der Bearbeitung Ihren Standarddrucker verändert.\n"
                            "Wollen Sie ihn jetzt erneut auswählen?"));
    EXPECT_THAT(many.calls,
                ElementsAre("TrackDefault true", "ShowPrinter 64", "TrackDefault false"));
}

TEST_F(DefaultPrinterQuestion, NoLeavesTheDefaultAsItIs) {
    ui.answer = false;
    ask({});
    EXPECT_EQ(ui.texts.size(), 1U);
    EXPECT_THAT(many.calls, ElementsAre("TrackDefault true", "TrackDefault false"));
}

TEST_F(DefaultPrinterQuestion, NamesAreComparedExactly) {
    many.devices[0].name = "a";
    new_default = 0;
    ask({{0, false}});
    EXPECT_EQ(shown, 1U);
}

TEST_F(DefaultPrinterQuestion, NothingIsAskedWithoutPrinters) {
    ScriptedPrinter none{std::vector<ScriptedDevice>()};
    ScriptedDialog dialog(none, {});
    ask_for_default_printer(session, none, ui, dialog);
    EXPECT_THAT(none.calls, IsEmpty());
    EXPECT_THAT(ui.texts, IsEmpty());
}

// The double itself

TEST_F(ApplicationPrinter, PageThatCannotBeOpenedEndsInAnError) {
    printer.device().unreachable_at_page = 2;
    EXPECT_TRUE(printer.begin_job({"Netz"}));
    printer.begin_sheet({"A", "1.1"});
    printer.page().scale_millimetres();
    printer.page().Line(0, 0, 5, 5);
    printer.NewPage();
    EXPECT_THROW(printer.begin_sheet({"A", "1.2"}), PrinterError);
    printer.abort_job();
    const test::ScriptedDocument& document = printer.documents.front();
    EXPECT_EQ(document.state, test::ScriptedDocument::State::aborted);
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_THAT(document.pages[0].all<operation::Line>(), ElementsAre(operation::Line{0, 0, 5, 5}));
    EXPECT_EQ(document.pages[0].steps.size(), 2U);
}

}  // namespace
}  // namespace veldra
