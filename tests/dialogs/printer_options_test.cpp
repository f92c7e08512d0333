#include "dialogs/printer_options.h"

#include <gmock/gmock.h>

#include "plot/application_printer.h"
#include "scripted_printer.h"

namespace veldra {
namespace {

using test::ScriptedDevice;
using test::ScriptedPrinter;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The lists

TEST(PaperList, HasTheTextsOfTheirCodes) {
    ASSERT_EQ(paper_texts().size(), 51U);
    EXPECT_EQ(paper_texts()[0], "US Letter, 8 1/2 x 11 Zoll");
    EXPECT_EQ(paper_texts()[4], "US Legal, 8 1/2 x 14 Zoll.");
    EXPECT_EQ(paper_texts()[6], "Executive, 7 1/2 x 10 ½ Zoll");
    EXPECT_EQ(paper_texts()[7], "DIN A3, 297 x 420 mm");
    EXPECT_EQ(paper_texts()[8], "DINA4, 210 x 297 mm");
    EXPECT_EQ(paper_texts()[25], "Blatt in E-Größe");
    EXPECT_EQ(paper_texts()[34], "Umschlag B6, 176 x 125 mm");
    EXPECT_EQ(paper_texts()[40], "Deutsch Legal-Durchschlag, 8 1/2 x 13 Zoll");
    EXPECT_EQ(paper_texts()[41], "DIN A4 (auf HP DesignJet)");
    EXPECT_EQ(paper_texts()[49], "DIN B1 (auf HP DesignJet)");
    EXPECT_EQ(paper_texts()[50], "Benutzerdefiniert");
}

TEST(PaperList, IndexAndCodeLeadToEachOther) {
    PrinterOptions options;
    for (std::int16_t code = 1; code <= 41; ++code) {
        EXPECT_EQ(paper_index(options, code), code - 1);
        EXPECT_EQ(paper_code(options, code - 1), code);
    }
    for (std::int16_t code = 268; code <= 276; ++code) {
        EXPECT_EQ(paper_index(options, code), code - 227);
        EXPECT_EQ(paper_code(options, code - 227), code);
    }
    EXPECT_EQ(paper_index(options, 256), 50);
    EXPECT_EQ(paper_code(options, 50), 256);
    EXPECT_FALSE(options.unknown_paper);
}

TEST(PaperList, CodesOfADriverAreRemembered) {
    PrinterOptions options;
    for (const int driver_code : {42, 255, 257, 267, 277, 300}) {
        const auto code = static_cast<std::int16_t>(driver_code);
        EXPECT_EQ(paper_index(options, code), 51) << code;
        EXPECT_EQ(options.unknown_paper, code);
        EXPECT_EQ(paper_code(options, 51), code);
    }
    EXPECT_EQ(unknown_paper_text(300), "(unbekanntes Format: 300)");
    // Another paper is shown; the driver's own stays in the list.
    EXPECT_EQ(paper_index(options, 9), 8);
    EXPECT_EQ(paper_code(options, 51), 300);
}

TEST(PaperList, CodesBelowOneAreNotInTheList) {
    PrinterOptions options;
    EXPECT_EQ(paper_index(options, 0), -1);
    EXPECT_EQ(paper_index(options, -5), -1);
}

TEST(BinList, HasItsTextsFromBinOneOn) {
    ASSERT_EQ(paper_bin_texts().size(), 15U);
    EXPECT_EQ(paper_bin_texts()[0], "oberer Papierschacht");
    EXPECT_EQ(paper_bin_texts()[6], "aktuelle Voreingestellung");
    EXPECT_EQ(paper_bin_texts()[10], "Einzug mit großen Papiervorrat");
    EXPECT_EQ(paper_bin_texts()[14], "automatisch auswählen");
    EXPECT_EQ(paper_bin_index(1), 0);
    EXPECT_EQ(paper_bin_index(15), 14);
    EXPECT_EQ(paper_bin_index(0), -1);
    EXPECT_EQ(paper_bin_index(16), -1);
    EXPECT_EQ(paper_bin_index(260), -1);
}

// Operations

class PrinterOptionsTest : public testing::Test {
 protected:
    PrinterOptionsTest() {
        ScriptedDevice plotter;
        ScriptedDevice laser;
        laser.name = "Laser";
        laser.has_colour = false;
        laser.own_paper = 8;
        laser.own_bin = 1;
        printer = std::make_unique<ScriptedPrinter>(std::vector<ScriptedDevice>{plotter, laser});
        take_printer(session, printer.get());
        printer->set_Orientation(1);
        printer->clear_calls();
    }

    void open() {
        options = open_printer_options(printer.get());
        printer->clear_calls();
    }
    [[nodiscard]] PaperView view() { return view_paper(*printer); }

    Session session;
    std::unique_ptr<ScriptedPrinter> printer;
    PrinterOptions options;
};

TEST_F(PrinterOptionsTest, OpeningRemembersPrinterAndPaper) {
    printer->assign(1);
    printer->set_Orientation(2);
    open();
    EXPECT_EQ(options.printer_index, 1);
    EXPECT_EQ(options.paper.bin, 1);
    EXPECT_EQ(options.paper.paper, 8);
    EXPECT_EQ(options.paper.orientation, 2);
    // 420 mm in twips.
    EXPECT_NEAR(options.paper.width, 23811, 1);
}

TEST_F(PrinterOptionsTest, OpeningWithoutPrintersRemembersNothing) {
    EXPECT_EQ(open_printer_options(nullptr).printer_index, -1);
    ScriptedPrinter none{std::vector<ScriptedDevice>()};
    EXPECT_EQ(open_printer_options(&none).printer_index, -1);
}

TEST_F(PrinterOptionsTest, ViewShowsPaperAndPrintableArea) {
    const PaperView upright = view();
    EXPECT_EQ(upright.lbl_quer_netto, "quer:   200.0 mm");
    EXPECT_EQ(upright.lbl_hoch_netto, "hoch:   287.0 mm");
    EXPECT_EQ(upright.txt_quer, "210");
    EXPECT_EQ(upright.txt_hoch, "297");
    EXPECT_FALSE(upright.user_defined);
    choose_orientation(*printer, 2);
    EXPECT_EQ(view().lbl_quer_netto, "quer:   287.0 mm");
    EXPECT_EQ(view().txt_quer, "297");
    EXPECT_EQ(view().orientation, 2);
}

TEST_F(PrinterOptionsTest, RefusedOrientationStaysAsItWas) {
    printer->device().orientations = {1};
    choose_orientation(*printer, 2);
    EXPECT_EQ(view().orientation, 1);
    printer->device().refusal = ScriptedDevice::Refusal::loud;
    choose_orientation(*printer, 2);
    EXPECT_EQ(view().orientation, 1);
}

TEST_F(PrinterOptionsTest, ChosenPrinterKeepsTheOrientationAndTellsItsColour) {
    printer->set_Orientation(2);
    session.printer.druck_in_datei = -1;
    open();
    options.unknown_paper = 300;
    EXPECT_EQ(choose_printer(session, *printer, options, 1), 1);
    EXPECT_EQ(printer->DeviceName(), "Laser");
    EXPECT_EQ(printer->Orientation(), 2);
    EXPECT_EQ(session.printer.drucker_farbe, 1);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
    EXPECT_EQ(view().paper, 8);
    EXPECT_EQ(view().bin, 1);
    EXPECT_FALSE(options.unknown_paper);
    EXPECT_EQ(options.printer_index, 0);
}

TEST_F(PrinterOptionsTest, PrinterThatCannotBeTakenLeavesTheOneBefore) {
    printer->device().failing = {"assign"};
    open();
    EXPECT_EQ(choose_printer(session, *printer, options, 1), 0);
    EXPECT_EQ(printer->DeviceName(), "Plotter");
}

TEST_F(PrinterOptionsTest, OneOfTwoPrintersOfTheSameNameIsTheOneChosen) {
    printer->devices[1].name = "Plotter";
    open();
    EXPECT_EQ(choose_printer(session, *printer, options, 0), 0);
    EXPECT_EQ(choose_printer(session, *printer, options, 1), 1);
}

TEST_F(PrinterOptionsTest, PaperIsWrittenAndTheOrientationRestored) {
    printer->set_Orientation(2);
    open();
    choose_paper(*printer, 8);
    EXPECT_THAT(printer->calls, ElementsAre("PaperSize 8", "Orientation 2"));
    EXPECT_EQ(view().paper, 8);
    EXPECT_EQ(view().txt_quer, "420");
}

TEST_F(PrinterOptionsTest, RefusedPaperStaysAsItWas) {
    for (const auto refusal : {ScriptedDevice::Refusal::silent, ScriptedDevice::Refusal::loud}) {
        printer->device().refusal = refusal;
        choose_paper(*printer, 272);
        EXPECT_EQ(view().paper, 9);
    }
}

TEST_F(PrinterOptionsTest, BinIsWrittenAndTheOrientationRestored) {
    open();
    choose_paper_bin(*printer, 4);
    EXPECT_THAT(printer->calls, ElementsAre("PaperBin 4", "Orientation 1"));
    EXPECT_EQ(view().bin, 4);
}

TEST_F(PrinterOptionsTest, UserPaperIsWrittenInTheUnitsOfThePrinter) {
    choose_paper(*printer, 256);
    EXPECT_TRUE(view().user_defined);
    printer->clear_calls();
    set_user_paper(*printer, "600", "400,4");
    // 600 mm are 34015.7 twips, 400.4 mm are 22699.8.
    EXPECT_THAT(printer->calls, ElementsAre("Width 34016", "Height 22700"));
    EXPECT_EQ(view().txt_quer, "600");
    EXPECT_EQ(view().txt_hoch, "400");
    EXPECT_EQ(view().lbl_quer_netto, "quer:   590.0 mm");
    EXPECT_EQ(view().lbl_hoch_netto, "hoch:   390.4 mm");
}

TEST_F(PrinterOptionsTest, UserPaperLiesAsItIsShown) {
    choose_paper(*printer, 256);
    set_user_paper(*printer, "600", "400");
    choose_orientation(*printer, 2);
    EXPECT_EQ(view().txt_quer, "400");
    EXPECT_EQ(view().txt_hoch, "600");
}

TEST_F(PrinterOptionsTest, SizesThatAreNoneAreNotWritten) {
    choose_paper(*printer, 256);
    printer->clear_calls();
    for (const char* wrong : {"", "0", "-300", "abc", "1e30"}) {
        set_user_paper(*printer, wrong, wrong);
        EXPECT_THAT(printer->calls, IsEmpty()) << wrong;
    }
    EXPECT_EQ(view().txt_quer, "210");
}

TEST_F(PrinterOptionsTest, PaperWithoutPrintableAreaIsStillMeasured) {
    printer->device().margin = 105;  // nothing remains across
    EXPECT_EQ(view().txt_quer, "210");
    EXPECT_EQ(view().lbl_quer_netto, "quer:     0.0 mm");
}

TEST_F(PrinterOptionsTest, OtherPapersRefuseASize) {
    for (const auto refusal : {ScriptedDevice::Refusal::silent, ScriptedDevice::Refusal::loud}) {
        printer->device().refusal = refusal;
        set_user_paper(*printer, "600", "400");
        EXPECT_EQ(view().txt_quer, "210");
    }
}

TEST_F(PrinterOptionsTest, CopiesAreOneToAHundred) {
    EXPECT_EQ(copies_of_text("0"), 1);
    EXPECT_EQ(copies_of_text(""), 1);
    EXPECT_EQ(copies_of_text("abc"), 1);
    EXPECT_EQ(copies_of_text("-3"), 1);
    EXPECT_EQ(copies_of_text("12"), 12);
    EXPECT_EQ(copies_of_text("2,5"), 2);
    EXPECT_EQ(copies_of_text("500"), 100);
    EXPECT_EQ(copies_of_text("70000"), 100);
    EXPECT_EQ(copies_of_text("1e300"), 100);
    EXPECT_EQ(limited_copies(0), 1);
    EXPECT_EQ(limited_copies(101), 100);
}

TEST_F(PrinterOptionsTest, StandardTakesTheDefaultPrinterOfTheSystem) {
    printer->set_default(1);
    printer->set_Orientation(2);
    session.printer.druck_in_datei = -1;
    open();
    EXPECT_EQ(choose_standard_printer(session, *printer, options), 1);
    EXPECT_EQ(printer->DeviceName(), "Laser");
    EXPECT_TRUE(printer->tracks_default);
    EXPECT_EQ(printer->Orientation(), 2);
    EXPECT_EQ(session.printer.drucker_farbe, 1);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
    EXPECT_EQ(options.printer_index, 1);
    EXPECT_EQ(printer->calls[0], "EndDoc");
    EXPECT_EQ(printer->calls[1], "TrackDefault true");
}

// OK and Abbrechen

TEST_F(PrinterOptionsTest, OkEndsTheDocumentAndKeepsThePaper) {
    open();
    choose_printer(session, *printer, options, 1);
    choose_paper(*printer, 256);
    choose_orientation(*printer, 2);
    set_user_paper(*printer, "600", "400");
    choose_paper_bin(*printer, 4);
    printer->clear_calls();
    session.printer.druck_in_datei = -1;
    accept_printer_options(session, *printer, options, "7");
    EXPECT_EQ(printer->calls.front(), "EndDoc");
    EXPECT_EQ(view().paper, 256);
    EXPECT_EQ(view().bin, 4);
    EXPECT_EQ(view().orientation, 2);
    EXPECT_EQ(view().txt_quer, "600");
    EXPECT_EQ(view().txt_hoch, "400");
    EXPECT_EQ(options.printer_index, 1);
    const PrinterState& state = session.printer;
    EXPECT_EQ(state.exemplare, 7);
    EXPECT_EQ(state.exemplare_merk, 7);
    EXPECT_EQ(state.drucker_farbe_merk, 1);
    EXPECT_EQ(state.druck_in_datei_merk, -1);
    EXPECT_EQ(session.window[MenuItem::m_optionen_drucker].caption, "&Anwendungsdrucker: Laser");
}

TEST_F(PrinterOptionsTest, OkWritesNoSizeForOtherPapers) {
    open();
    accept_printer_options(session, *printer, options, "1");
    EXPECT_THAT(printer->calls,
                ElementsAre("EndDoc", "PaperBin 7", "PaperSize 9", "Orientation 1"));
}

TEST_F(PrinterOptionsTest, AbbrechenReturnsToThePrinterAndItsPaper) {
    choose_paper(*printer, 256);
    set_user_paper(*printer, "600", "400");
    choose_orientation(*printer, 2);
    choose_paper_bin(*printer, 4);
    session.printer.exemplare = 3;
    session.printer.exemplare_merk = 3;
    open();
    choose_printer(session, *printer, options, 1);
    choose_paper(*printer, 9);
    session.printer.exemplare = 50;
    session.printer.druck_in_datei = -1;
    reject_printer_options(session, printer.get(), options);
    EXPECT_EQ(printer->DeviceName(), "Plotter");
    EXPECT_EQ(view().paper, 256);
    EXPECT_EQ(view().bin, 4);
    EXPECT_EQ(view().orientation, 2);
    EXPECT_EQ(view().txt_quer, "400");
    EXPECT_EQ(view().txt_hoch, "600");
    EXPECT_EQ(session.printer.exemplare, 3);
    EXPECT_EQ(session.printer.drucker_farbe, 2);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
}

TEST_F(PrinterOptionsTest, AbbrechenAfterStandardStaysWithTheDefaultPrinter) {
    printer->set_default(1);
    open();
    choose_standard_printer(session, *printer, options);
    reject_printer_options(session, printer.get(), options);
    EXPECT_EQ(printer->DeviceName(), "Laser");
}

TEST_F(PrinterOptionsTest, AbbrechenWithoutPrintersRestoresTheRest) {
    session.printer.exemplare = 9;
    reject_printer_options(session, nullptr, PrinterOptions());
    EXPECT_EQ(session.printer.exemplare, 1);
    ScriptedPrinter none{std::vector<ScriptedDevice>()};
    session.printer.exemplare = 9;
    reject_printer_options(session, &none, PrinterOptions());
    EXPECT_EQ(session.printer.exemplare, 1);
    EXPECT_THAT(none.calls, IsEmpty());
}

TEST_F(PrinterOptionsTest, PrinterThatFailsAtEverythingEndsNothing) {
    open();
    for (ScriptedDevice& device : printer->devices) {
        device.failing = {"assign", "Orientation", "PaperSize",    "PaperBin", "Width",
                          "Height", "ColorMode",   "TrackDefault", "EndDoc"};
    }
    choose_printer(session, *printer, options, 1);
    choose_standard_printer(session, *printer, options);
    choose_paper(*printer, 256);
    choose_paper_bin(*printer, 2);
    choose_orientation(*printer, 2);
    set_user_paper(*printer, "600", "400");
    accept_printer_options(session, *printer, options, "1");
    reject_printer_options(session, printer.get(), options);
    EXPECT_EQ(view().paper, 9);
    EXPECT_EQ(view().orientation, 1);
}

}  // namespace
}  // namespace veldra
