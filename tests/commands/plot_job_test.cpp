#include "commands/plot_job.h"

#include <gmock/gmock.h>

#include "commands/lifecycle.h"
#include "commands/offered_commands.h"
#include "fake_measurer.h"
#include "model/long_work.h"
#include "plot/application_printer.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "session_fixture.h"
#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using test::ScriptedDocument;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Part A: two points 30 m and 40 m apart at 1:1000, one sheet. Part B: 400 m wide, at 1:1000 three
/// sheets across. Part C has nothing. Part D was never plotted.
constexpr const char* four_parts =
    "VERFAHRENLEGENDE Netz\n"
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 0 0 73\n"
    "TITEL2 Titel von A\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 100 120 0 0 1 \"3\"\nPUNKTSIGNATUR 500 180 0 0 0 \"4\"\n"
    "NETZTEIL C\nMAßSTABGRUNDRISS 1000 0 0 73\n"
    "NETZTEIL D\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1000 1200 0 0 1 \"5\"\nPUNKTSIGNATUR 1060 1240 0 0 0 \"6\"\n";

class PlotJobTest : public testing_support::SessionOnFile {
 protected:
    void open(std::string_view utf8 = four_parts) {
        take_printer(session, &printer);
        datei_neu_laden(session, folder.file("ve.dat", from_utf8(utf8)), OpenedBy::open_command,
                        desk);
        printer.calls.clear();
        drawn = 0;
    }
    void mark(const std::vector<bool>& marks) {
        for (std::size_t i = 0; i < marks.size(); ++i) {
            session.netz[static_cast<std::int32_t>(i + 1)].netz_plotmarke =
                marks[i] ? table_true : table_false;
        }
    }
    /// Part and sheet of each page of the only document.
    [[nodiscard]] std::vector<std::string> pages() const {
        std::vector<std::string> titles;
        EXPECT_EQ(printer.documents.size(), 1U);
        for (const test::RecordedPage& page : printer.documents.front().pages) {
            titles.push_back(page.title.netzteil + " " + page.title.blatt);
        }
        return titles;
    }
    [[nodiscard]] ScriptedDocument::State state() const { return printer.documents.front().state; }

    test::FakeMeasurer measurer;
    test::ScriptedPrinter printer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }, &printer};
};

TEST_F(PlotJobTest, CopiesOfOnePartAreOneDocument) {
    open();
    session.printer.exemplare = 3;
    EXPECT_TRUE(plotten_aktuell(session, desk));
    EXPECT_THAT(pages(),
                ElementsAre("A Blatt 1.1 (1.1)", "A Blatt 1.1 (1.1)", "A Blatt 1.1 (1.1)"));
    EXPECT_EQ(state(), ScriptedDocument::State::sent);
    EXPECT_EQ(printer.documents.front().title.titel, "Netz");
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(drawn, 1);
}

TEST_F(PlotJobTest, PrinterIsResetBeforeTheJobAndAfterItsEnd) {
    open();
    plotten_aktuell(session, desk);
    std::vector<std::string> order;
    for (const std::string& call : printer.calls) {
        const std::string name = call.substr(0, call.find(' '));
        if (name == "EndDoc" || name == "begin_job" || name == "end_job" || name == "begin_sheet" ||
            name == "NewPage") {
            order.push_back(name);
        }
    }
    EXPECT_THAT(order,
                ElementsAre("EndDoc", "begin_job", "begin_sheet", "NewPage", "end_job", "EndDoc"));
}

TEST_F(PlotJobTest, SheetsComeByColumnsFromBelow) {
    open();
    session.part.plot.plot_blatt_auto = table_false;
    session.part.plot.plot_blatt_rechts = 2;
    session.part.plot.plot_blatt_hoch = 3;
    plotten_aktuell(session, desk);
    EXPECT_THAT(pages(),
                ElementsAre("A Blatt 1.1 (2.3)", "A Blatt 1.2 (2.3)", "A Blatt 1.3 (2.3)",
                            "A Blatt 2.1 (2.3)", "A Blatt 2.2 (2.3)", "A Blatt 2.3 (2.3)"));
}

TEST_F(PlotJobTest, AutomaticCountsFollowTheRealPaper) {
    open();
    session.part.extents.gesamt_rw_max = 500;
    session.part.plot.plot_blatt_rechts = 1;
    plotten_aktuell(session, desk);
    // 500 m from the zero point at 0 on sheets of 184.5 m.
    EXPECT_EQ(session.part.plot.plot_blatt_rechts, 3);
    EXPECT_EQ(pages().size(), 3U);
}

TEST_F(PlotJobTest, PointsAndDistrictsHaveFontsOfTheirOwnSize) {
    open();
    session.settings.pubsizplo = 2.5F;
    session.settings.nubsizplo = 5;
    const PartOnPaper part = prepare_part(session, printer, desk);
    // Lines of (2.5 + 0.05) * 1.68 = 4.28 mm and of 8.48 mm; a point is 0.353 mm.
    EXPECT_EQ(part.fonts.point_labels, 12);
    EXPECT_EQ(part.fonts.district_labels, 24);
}

TEST_F(PlotJobTest, UndoIsClearedAfterwards) {
    open();
    session.window.undo.undo_art = 4;
    session.window.undo.caption = "Rückgängig: Lupe";
    plotten_aktuell(session, desk);
    EXPECT_FALSE(offered_commands(session)[MenuItem::m_ansicht_undo].enabled);
    EXPECT_EQ(offered_commands(session)[MenuItem::m_ansicht_undo].caption, "Rückgängig:");
    EXPECT_FALSE(offered_commands(session)[ToolButton::rueckgaengig].enabled);
    EXPECT_EQ(offered_commands(session)[ToolButton::rueckgaengig].tool_tip, "Rückgängig:");
}

TEST_F(PlotJobTest, NoFileGivenMeansNothingHappens) {
    open();
    printer.device().cancels_jobs = true;
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_THAT(printer.documents, IsEmpty());
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(drawn, 0);
}

TEST_F(PlotJobTest, AllPartsNeedAYes) {
    open();
    ui.answer = false;
    EXPECT_FALSE(plotten_alle(session, desk));
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::question_yes_no));
    EXPECT_THAT(ui.titles, ElementsAre("Plotten"));
    EXPECT_THAT(ui.texts,
                ElementsAre("Sollen wirklich alle gekennzeichneten\nNetzteile geplottet werden?"));
    EXPECT_THAT(printer.calls, IsEmpty());
    EXPECT_EQ(drawn, 0);
}

TEST_F(PlotJobTest, CopiesAreTheOuterLoopAndPartsTheInner) {
    open();
    mark({true, true, false, false});
    session.printer.exemplare = 2;
    EXPECT_TRUE(plotten_alle(session, desk));
    const std::string a = "A Blatt 1.1 (1.1)";
    const std::vector<std::string> b{"B Blatt 1.1 (3.1)", "B Blatt 2.1 (3.1)", "B Blatt 3.1 (3.1)"};
    EXPECT_THAT(pages(), ElementsAre(a, b[0], b[1], b[2], a, b[0], b[1], b[2]));
    EXPECT_EQ(state(), ScriptedDocument::State::sent);
    EXPECT_EQ(drawn, 1);
}

TEST_F(PlotJobTest, TheHourglassStandsWhileTheWorkingCopyIsWritten) {
    struct PointerWatch final : LongWork {
        bool goes_on() override {
            if (step() == Step::writing) {
                seen.push_back(ui->pointers.back());
            }
            return true;
        }
        const test::RecordingInterface* ui = nullptr;
        std::vector<int> seen;
    };
    open();
    mark({true, false, false, false});
    PointerWatch work;
    work.ui = &ui;
    session.work = &work;
    EXPECT_TRUE(plotten_alle(session, desk));
    session.work = nullptr;
    EXPECT_THAT(work.seen, ElementsAre(11, 11));  // one window of the file, and its end
    EXPECT_EQ(ui.pointers.back(), 0);
}

TEST_F(PlotJobTest, EachPartIsReadOncePerCopyAndOnceForItsSheets) {
    open();
    mark({true, true, false, false});
    const auto reads = [this](std::int16_t copies) {
        session.printer.exemplare = copies;
        const std::uint64_t before = session.part.tables_revision;
        plotten_alle(session, desk);
        return session.part.tables_revision - before;
    };
    // The part in view is put aside and comes back; all else is reading.
    const std::uint64_t one = reads(1) - 2;
    const std::uint64_t three = reads(3) - 2;
    // Two parts to count their sheets, and two a copy; each reading takes the same passes.
    EXPECT_EQ(one % 4, 0U);
    EXPECT_EQ(three, one / 4 * 8);
}

TEST_F(PlotJobTest, ThePartInViewStaysAsItIs) {
    open();
    mark({true, true, false, false});
    session.part.lbl_pubez.resize(2);
    session.part.lbl_pubez[1].left = 4711;
    session.part.obj.obj_beob = 0;
    const PointRow* const row = &session.part.pu[1];
    const Extents extents = session.part.extents;
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(&session.part.pu[1], row) << "read again";
    EXPECT_EQ(session.part.lbl_pubez[1].left, 4711);
    EXPECT_EQ(session.part.obj.obj_beob, 0);
    EXPECT_EQ(session.part.extents.gesamt_rw_max, extents.gesamt_rw_max);
}

TEST_F(PlotJobTest, ManySheetsAreAskedAboutWithThePointFarthestOut) {
    // 20 columns of 10 rows are 200 sheets, 67 columns of 3 rows are 201.
    open();
    session.part.plot.plot_blatt_auto = table_false;
    session.part.plot.plot_blatt_rechts = 20;
    session.part.plot.plot_blatt_hoch = 10;
    EXPECT_TRUE(plotten_aktuell(session, desk));
    EXPECT_THAT(ui.texts, IsEmpty());
    EXPECT_EQ(pages().size(), 200U);
    printer.documents.clear();
    session.part.plot.plot_blatt_rechts = 67;
    session.part.plot.plot_blatt_hoch = 3;
    ui.answer = false;
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_THAT(printer.documents, IsEmpty());
    ASSERT_EQ(ui.texts.size(), 1U);
    EXPECT_EQ(ui.styles[0], MessageStyle::question_no_yes);
    EXPECT_THAT(ui.texts[0], HasSubstr("201 Blätter"));
    ui.answer = true;
    EXPECT_TRUE(plotten_aktuell(session, desk));
    EXPECT_EQ(pages().size(), 201U);
}

/// Three points close together, and one whose easting has a digit too many.
constexpr const char* wild_parts =
    "NETZTEIL A\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
    "NETZTEIL B\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 100 120 0 0 1 \"3\"\nPUNKTSIGNATUR 50000 180 0 0 0 \"wild\"\n"
    "PUNKTSIGNATUR 110 130 0 0 1 \"5\"\n"
    "NETZTEIL C\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 1 1 0 0 0 0 0 2 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1 1 0 0 1 \"7\"\nPUNKTSIGNATUR 2 99000000 0 0 1 \"fern\"\n"
    "PUNKTSIGNATUR 3 3 0 0 1 \"8\"\n";

TEST_F(PlotJobTest, AllMarkedPartsTogetherAreAskedAbout) {
    open(wild_parts);
    mark({true, true, false});
    EXPECT_TRUE(plotten_alle(session, desk));
    // One sheet, and 50 km on sheets of 184.5 m: 271 full ones and one more.
    EXPECT_EQ(pages().size(), 273U);
    ASSERT_EQ(ui.texts.size(), 2U);
    EXPECT_THAT(ui.texts[1],
                ::testing::AllOf(HasSubstr("273 Blätter"),
                                 HasSubstr("Punkt \"wild\" (50000.00, 180.00), Zeile 10 "
                                           "(PUNKTSIGNATUR), Netzteil \"B\"")));
}

TEST_F(PlotJobTest, CopiesOfAllMarkedPartsCountAmongTheSheets) {
    open(wild_parts);
    mark({true, true, false});
    session.printer.exemplare = 2;
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(pages().size(), 546U);
    ASSERT_EQ(ui.texts.size(), 2U);
    EXPECT_THAT(ui.texts[1], HasSubstr("546 Blätter"));
}

TEST_F(PlotJobTest, PartWithoutASelectionBeginsWithTheOneInView) {
    open(
        "NETZTEIL A\nPUNKTSIGNATUR 10 20 0 0 1\n"
        "NETZTEIL B\nMAßSTABGRUNDRISS 1000 0 0 73\n"
        "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
        "NETZTEIL C\nMAßSTABGRUNDRISS 1000 0 0 73\nOBJEKTE 0 1 0 0 0 0 0 0 0 0 0 0 0\n"
        "PUNKTSIGNATUR 10 20 0 0 1 \"3\"\nPUNKTSIGNATUR 40 60 0 0 0 \"4\"\n");
    mark({false, true, true});
    ASSERT_EQ(session.part.obj.obj_pube, 1);
    EXPECT_TRUE(plotten_alle(session, desk));
    const auto labels = [this](std::size_t page) {
        std::vector<std::string> captions;
        for (const auto& placed :
             printer.documents.front().pages.at(page).all<operation::LabelPlaced>()) {
            captions.emplace_back(trim(placed.caption));
        }
        return captions;
    };
    EXPECT_THAT(labels(0), ElementsAre("1", "2"));
    EXPECT_THAT(labels(1), ElementsAre("", ""));
}

TEST_F(PlotJobTest, ADeclinedJobLeavesThePartInView) {
    open(wild_parts);
    mark({true, true, false});
    session.part.obj.obj_pube = 0;
    // "alle" is asked with Yes first, the many sheets with No.
    struct YesThenNo final : UserInterface {
        bool message_box(MessageStyle style, const std::string&, const std::string&) override {
            return style == MessageStyle::question_yes_no;
        }
        void set_mouse_pointer(int) override {}
    } answers;
    const Desk asking{measurer, answers, [] {}, &printer};
    EXPECT_FALSE(plotten_alle(session, asking));
    EXPECT_THAT(printer.documents, IsEmpty());
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.obj.obj_pube, 0);
}

TEST_F(PlotJobTest, PartWithTooManySheetsToCountIsToldAndTheOthersArePlotted) {
    open(wild_parts);
    mark({true, false, true});
    session.printer.exemplare = 2;
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_THAT(pages(), ElementsAre("A Blatt 1.1 (1.1)", "A Blatt 1.1 (1.1)"));
    EXPECT_EQ(state(), ScriptedDocument::State::sent);
    ASSERT_EQ(ui.texts.size(), 2U) << "the question, and one message for both copies";
    EXPECT_EQ(ui.titles[1], "Netzteil(e) plotten");
    EXPECT_THAT(ui.texts[1],
                ::testing::AllOf(HasSubstr("Überlauf"),
                                 HasSubstr("Punkt \"fern\" (2.00, 99000000.00), Zeile 16 "
                                           "(PUNKTSIGNATUR), Netzteil \"C\"")));
    EXPECT_EQ(session.netz[3].netz_plotmarke, table_true);
}

TEST_F(PlotJobTest, EmptySheetsAreLeftOutOnlyIfWished) {
    // Points at (10, 20) and (40, 60) on sheets of 184.5 x 274.5 m; the legend is at the lower
    // right.
    open();
    session.part.plot.plot_blatt_auto = table_false;
    session.part.plot.plot_blatt_rechts = 3;
    session.part.plot.plot_blatt_hoch = 2;
    session.part.plot.plot_legendenlage = 4;
    EXPECT_TRUE(plotten_aktuell(session, desk));
    EXPECT_EQ(pages().size(), 6U);
    printer.documents.clear();
    session.printer.ohne_leere = table_true;
    EXPECT_TRUE(plotten_aktuell(session, desk));
    EXPECT_THAT(pages(), ElementsAre("A Blatt 1.1 (3.2)", "A Blatt 3.1 (3.2)"));
}

TEST_F(PlotJobTest, TitlesOfThePartInViewStandAfterAll) {
    open();
    mark({false, true, false, true});
    session.part.titel[1].setTitelText("zwei");
    session.part.titel[2].setTitelText("drei");
    session.part.titel[3].setTitelText("vier");
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(session.part.titel[0].getTitelText(), "Netz");
    EXPECT_EQ(session.part.titel[1].getTitelText(), "zwei");
    EXPECT_EQ(session.part.titel[2].getTitelText(), "drei");
    EXPECT_EQ(session.part.titel[3].getTitelText(), "vier");
}

TEST_F(PlotJobTest, EmptyPartLosesItsMarkSilently) {
    open();
    mark({true, false, true, false});
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_EQ(session.netz[3].netz_plotmarke, table_false);
    EXPECT_EQ(session.netz[1].netz_plotmarke, table_true);
    EXPECT_EQ(pages().size(), 1U);
    EXPECT_EQ(ui.texts.size(), 1U);  // the question
}

TEST_F(PlotJobTest, NoMarkedPartPrintsNothingAndLeavesThePartInView) {
    open();
    mark({false, false, false, false});
    EXPECT_TRUE(plotten_alle(session, desk));
    EXPECT_THAT(pages(), IsEmpty());
    EXPECT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(drawn, 1);
}

TEST_F(PlotJobTest, PartInViewIsAsBefore) {
    open();
    mark({false, true, false, true});
    session.part.obj.obj_pube = 0;  // chosen in the window, not in the file
    session.part.titel[2].setTitelText("Eigene Zeile");
    session.part.plot.plot_legendenlage = 1;
    session.view = {5, 7, 5 + 15000 * 0.01, 7 + 9000 * 0.01, 0.01};
    const Viewport view = session.view;
    plotten_alle(session, desk);
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[1].pu_rechts, 10);
    EXPECT_EQ(session.part.obj.obj_pube, 0);
    EXPECT_EQ(session.part.titel[1].getTitelText(), "Titel von A");
    EXPECT_EQ(session.part.titel[2].getTitelText(), "Eigene Zeile");
    EXPECT_EQ(session.part.plot.plot_legendenlage, 1);
    EXPECT_NEAR(session.view.ansicht_rw_min, view.ansicht_rw_min, 1e-9);
    EXPECT_NEAR(session.view.ansicht_hw_max, view.ansicht_hw_max, 1e-9);
    EXPECT_NEAR(session.view.ansicht_masseinheit, 0.01, 1e-12);
    EXPECT_EQ(session.window.mouse_pointer, 0);
    EXPECT_THAT(ui.pointers, testing::Contains(11));
}

TEST_F(PlotJobTest, EachTitleLineOfThePartInViewIsAsBeforeAmongPartsWithTheirOwn) {
    open(
        "NETZTEIL A\nMAßSTABGRUNDRISS 1000 0 0 73\nTITEL2 A zwei\nTITEL3 A drei\nTITEL4 A vier\n"
        "PUNKTSIGNATUR 10 20 0 0 1 \"1\"\nPUNKTSIGNATUR 40 60 0 0 0 \"2\"\n"
        "NETZTEIL B\nMAßSTABGRUNDRISS 1000 0 0 73\nTITEL2 B zwei\n"
        "PUNKTSIGNATUR 10 20 0 0 1 \"3\"\nPUNKTSIGNATUR 40 60 0 0 0 \"4\"\n"
        "NETZTEIL C\nMAßSTABGRUNDRISS 1000 0 0 73\nTITEL2 C zwei\nTITEL3 C drei\nTITEL4 C vier\n"
        "PUNKTSIGNATUR 10 20 0 0 1 \"5\"\nPUNKTSIGNATUR 40 60 0 0 0 \"6\"\n");
    mark({true, true, true});
    const auto titles = [this] {
        return std::vector<std::string>{session.part.titel[1].getTitelText(),
                                        session.part.titel[2].getTitelText(),
                                        session.part.titel[3].getTitelText()};
    };
    plotten_alle(session, desk);
    EXPECT_THAT(titles(), ElementsAre("A zwei", "A drei", "A vier"));
    netzteil_anzeigen(session, 2, desk);
    session.part.titel[3].setTitelText("eigene vierte");
    plotten_alle(session, desk);
    EXPECT_EQ(session.part.netz_aktuell, 2);
    EXPECT_THAT(titles(), ElementsAre("B zwei", "", "eigene vierte"));
}

TEST_F(PlotJobTest, TitleLinesOfThePartInViewDoNotStandInOtherLegends) {
    open();
    mark({true, true, false, false});
    plotten_alle(session, desk);
    const auto texts = [this](std::size_t page) {
        return printer.documents.front().pages[page].printed_texts();
    };
    EXPECT_THAT(texts(0), testing::Contains("Titel von A"));
    for (std::size_t page = 1; page < 4; ++page) {
        EXPECT_THAT(texts(page), testing::Not(testing::Contains("Titel von A")));
    }
    // On the sheet in the lower right corner.
    EXPECT_THAT(texts(3), testing::Contains(HasSubstr("B: ")));
}

TEST_F(PlotJobTest, MovedLabelsReachTheFileBeforeItIsRead) {
    open();
    mark({true, false, false, false});
    session.part.pu[1].pu_bez_rechts = 150;
    session.part.pu[1].pu_bez_hoch = -30;
    plotten_alle(session, desk);
    EXPECT_EQ(session.part.pu[1].pu_bez_rechts, 150);
    EXPECT_EQ(session.part.pu[1].pu_bez_hoch, -30);
}

TEST_F(PlotJobTest, PartNeverPlottedGetsSettings) {
    open();
    mark({false, false, false, true});
    ASSERT_EQ(session.netz[4].netz_ausrichtung, -99);
    plotten_alle(session, desk);
    EXPECT_NE(session.netz[4].netz_ausrichtung, -99);
    EXPECT_GT(session.netz[4].netz_massstab, 0);
    EXPECT_THAT(pages(), ElementsAre("D Blatt 1.1 (1.1)"));
}

TEST_F(PlotJobTest, FailureEndsTheJobAfterOneMessage) {
    open();
    session.printer.exemplare = 5;
    printer.device().unreachable_at_page = 2;
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_EQ(printer.pages_begun, 2);
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::critical));
    EXPECT_THAT(ui.titles, ElementsAre("Netzteil(e) plotten"));
    EXPECT_THAT(ui.texts, ElementsAre("Drucker-PC bzw. Netz nicht erreichbar\n"
                                      "Plotter: nicht erreichbar"));
    EXPECT_EQ(state(), ScriptedDocument::State::aborted);
    EXPECT_EQ(printer.calls.back().substr(0, 9), "PaperSize");  // the reset after the job
    EXPECT_EQ(session.window.mouse_pointer, 0);
    EXPECT_EQ(drawn, 1);
}

TEST_F(PlotJobTest, FailureLeavesAllLoopsAndRestoresThePart) {
    open();
    mark({true, true, false, false});
    session.printer.exemplare = 3;
    printer.device().unreachable_at_page = 3;  // the second sheet of B
    EXPECT_FALSE(plotten_alle(session, desk));
    EXPECT_EQ(printer.pages_begun, 3);
    EXPECT_EQ(ui.texts.size(), 2U);  // the question and the message
    EXPECT_EQ(state(), ScriptedDocument::State::aborted);
    EXPECT_EQ(session.part.netz_aktuell, 1);
    EXPECT_EQ(session.part.pu[1].pu_rechts, 10);
}

TEST_F(PlotJobTest, DocumentThatDoesNotGetThroughIsReported) {
    open();
    printer.device().failing = {"end_job"};
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_THAT(ui.styles, ElementsAre(MessageStyle::critical));
    EXPECT_THAT(ui.texts, ElementsAre("Drucker-PC bzw. Netz nicht erreichbar\nPlotter: end_job"));
    EXPECT_EQ(state(), ScriptedDocument::State::aborted);
}

TEST_F(PlotJobTest, PageThatDoesNotGetThroughIsReported) {
    open();
    printer.device().failing = {"NewPage"};
    session.printer.exemplare = 2;
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_EQ(ui.texts.size(), 1U);
    EXPECT_EQ(printer.pages_begun, 1);
}

TEST_F(PlotJobTest, WithoutPrintersThereIsAMessage) {
    open();
    desk.printer = nullptr;
    EXPECT_FALSE(plotten_aktuell(session, desk));
    EXPECT_THAT(ui.texts, ElementsAre("Drucker-PC bzw. Netz nicht erreichbar"));
}

TEST_F(PlotJobTest, FatalErrorDropsTheDocument) {
    open();
    session.part.obj.obj_beob = 1;
    session.settings.faktorStrich = 32767;
    session.settings.punkt_breite = 2;
    session.part.obj.obj_pusi = 0;
    session.part.lin.lin_suchen({10, 20, 40, 60});
    ++session.part.tables_revision;
    EXPECT_THROW(plotten_aktuell(session, desk), FatalError);
    EXPECT_EQ(state(), ScriptedDocument::State::aborted);
}

}  // namespace
}  // namespace veldra
