#include "plot/plot_page.h"

#include <random>

#include <gmock/gmock.h>

#include "drawing/geometry.h"
#include "drawing/pipeline.h"
#include "plot_fixture.h"
#include "temp_file.h"

namespace veldra {
namespace {

using operation::Circle;
using operation::LabelPlaced;
using operation::Line;
using operation::TextRotated;
using test::add_line;
using test::add_point;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlotPageTest : public test::PlotFixture {
 protected:
    PlotPageTest() {
        session.part.plot.plot_legendenlage = 0;
        set_sheets(3, 2);
        printer.begin_job({});
    }

    test::RecordedPage& plot(std::int16_t column, std::int16_t row) {
        PartOnPaper part;
        part.fonts = {10, 14};
        part.legend = measure_legend();
        printer.begin_sheet({});
        PlotPage(session, printer, ui, part, place(column, row));
        return printer.documents.back().pages.back();
    }

    /// What the layers draw, without the frame's corner marks.
    static std::vector<Line> lines_of(const test::RecordedPage& page) {
        std::vector<Line> lines = page.all<Line>();
        lines.erase(lines.begin(), lines.begin() + 8);
        return lines;
    }
};

TEST_F(PlotPageTest, BoundariesAreDrawnIfTheyAreChosen) {
    const testing_support::TempFolder folder;
    session.settings.verw_datei =
        folder.file("grenzen.dat", "@ 1 Land x LND\r\n2 2570010 5620100\r\n1 2570100 5620100\r\n");
    session.settings.verw_datum = {};
    session.settings.grenzdrw[1] = 4;
    session.part.plot.plot_null_rechts = 2570000;
    session.part.plot.plot_null_hoch = 5620000;
    session.part.extents = {2570000, 5620000, 2570500, 5620500, 0, 0};
    session.part.obj.obj_bezu = 1;
    session.part.obj.obj_bezu_elli = 1;
    session.part.obj.obj_bezu_abbi = 1;
    EXPECT_THAT(plot(1, 1).all<test::page::Polygon>(), IsEmpty());
    session.part.obj.obj_verw = 1;
    EXPECT_FALSE(plot(1, 1).all<test::page::Polygon>().empty());
}

TEST_F(PlotPageTest, SheetsLieEdgeToEdgeFromTheZeroPoint) {
    set_sheet_window(session, place(1, 1));
    EXPECT_EQ(session.blatt.blatt_rw_min, 1000);
    EXPECT_EQ(session.blatt.blatt_hw_min, 2000);
    const double right = session.blatt.blatt_rw_max;
    const double top = session.blatt.blatt_hw_max;
    EXPECT_NEAR(right, 1184.5, 1e-9);
    EXPECT_NEAR(top, 2274.5, 1e-9);
    set_sheet_window(session, place(2, 2));
    EXPECT_EQ(session.blatt.blatt_rw_min, right);
    EXPECT_EQ(session.blatt.blatt_hw_min, top);
    EXPECT_NEAR(session.blatt.blatt_rw_max, 1369, 1e-9);
    EXPECT_NEAR(session.blatt.blatt_hw_max, 2549, 1e-9);
}

TEST_F(PlotPageTest, PageIsScaledToTheGroundUnderItsMarginsToo) {
    const auto scales = plot(2, 1).all<test::page::Scale>();
    ASSERT_EQ(scales.size(), 1U);
    // Local metres of the printable area of 200 x 287 mm.
    EXPECT_NEAR(scales[0].left, -15, 1e-5);
    EXPECT_NEAR(scales[0].top, 275, 1e-4);
    EXPECT_NEAR(scales[0].right, 185, 1e-4);
    EXPECT_NEAR(scales[0].bottom, -12, 1e-5);
}

TEST_F(PlotPageTest, GroundUnderTheUpperLeftCornerOfThePage) {
    set_sheet_window(session, place(3, 2));
    const PageGround ground = page_ground(session);
    EXPECT_NEAR(ground.left, 1000 + 2 * 184.5 - 15, 1e-9);
    EXPECT_NEAR(ground.top, 2000 + 2 * 274.5 + 0.5, 1e-9);
}

TEST_F(PlotPageTest, LayersComeInTheirOrder) {
    const test::RecordedPage& page = plot(1, 1);
    std::vector<PageLayer> layers;
    for (const test::page::Layer& step : page.all<test::page::Layer>()) {
        layers.push_back(step.layer);
    }
    EXPECT_THAT(layers, ElementsAre(PageLayer::frame, PageLayer::boundaries, PageLayer::districts,
                                    PageLayer::observations, PageLayer::signatures,
                                    PageLayer::values, PageLayer::labels));
}

TEST_F(PlotPageTest, FrameAndBoundariesAreInMillimetres) {
    const test::RecordedPage& page = plot(1, 1);
    const auto at = [&page](const test::PageStep& wanted) {
        return std::find_if(
                   page.steps.begin(), page.steps.end(),
                   [&](const test::PageStep& step) { return step.index() == wanted.index(); }) -
               page.steps.begin();
    };
    const auto scale = at(test::page::Scale{});
    EXPECT_EQ(at(test::page::Millimetres{}), 0);
    EXPECT_GT(scale, 0);
    const auto* before =
        std::get_if<test::page::Layer>(&page.steps[static_cast<std::size_t>(scale - 1)]);
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(before->layer, PageLayer::boundaries);
}

TEST_F(PlotPageTest, LinesEndAtTheEdgeOfTheSheetAndGoOnAtTheNext) {
    session.part.obj.obj_beob = 2;
    session.part.obj.obj_pusi = 1;
    session.settings.punsigplo.fill(0);
    add_line(session, {1100, 2100, 1300, 2100}).lin_typ_hin = 11;
    const test::RecordedPage& first = plot(1, 1);
    EXPECT_THAT(lines_of(first), ElementsAre(Line{100, 100, 184.5F, 100}));
    EXPECT_THAT(first.all<test::page::Begun>(), IsEmpty());
    const test::RecordedPage& second = plot(2, 1);
    EXPECT_THAT(lines_of(second),
                ElementsAre(Line{0, 100, 15.5F, 100}, Line{15.5F, 100, 115.5F, 100}));
    EXPECT_THAT(second.all<test::page::Begun>(), ElementsAre(test::page::Begun{84.5F}));
    EXPECT_THAT(lines_of(plot(3, 1)), IsEmpty());
    EXPECT_THAT(lines_of(plot(1, 2)), IsEmpty());
}

TEST_F(PlotPageTest, CutLinesTellWhatIsMissingAndAtWhichSide) {
    session.part.obj.obj_beob = 2;
    session.part.obj.obj_pusi = 1;
    session.settings.punsigplo.fill(0);
    // The first half of the line, to (1200, 2100), is what type 11 draws of it in one go.
    add_line(session, {1100, 2100, 1300, 2100}).lin_typ_hin = 11;
    const auto sides = [](const LineCut& cut) {
        return std::array{cut.window.xmin, cut.window.ymin, cut.window.xmax, cut.window.ymax};
    };
    const double none = no_sides.xmax;
    const std::vector<LineCut> first = plot(1, 1).cuts;
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].begun, 0);
    EXPECT_NEAR(first[0].rest, 15.5, 1e-4);
    EXPECT_THAT(sides(first[0]), ElementsAre(-none, -none, testing::DoubleNear(184.5, 1e-4), none));
    const std::vector<LineCut> second = plot(2, 1).cuts;
    ASSERT_EQ(second.size(), 1U);
    EXPECT_NEAR(second[0].begun, 84.5, 1e-4);
    EXPECT_EQ(second[0].rest, 0);
    EXPECT_THAT(sides(second[0]), ElementsAre(0, -none, none, none));
}

TEST_F(PlotPageTest, SignatureOnAnEdgeStandsOnBothSheets) {
    session.part.obj.obj_pusi = 1;
    session.settings.punsigplo = {2, 2, 1, 0.5F};
    PointRow& point = add_point(session, 1185, 2100);
    point.pu_signatur = 1;
    point.pu_art_lage = 0;
    // 2 mm of paper at 1:1000; half a metre into the second sheet.
    EXPECT_THAT(plot(1, 1).all<Circle>(), ElementsAre(Circle{185, 100, 2}));
    const std::vector<Circle> second = plot(2, 1).all<Circle>();
    ASSERT_EQ(second.size(), 1U);
    EXPECT_NEAR(second[0].x, 0.5, 1e-5);
    EXPECT_THAT(plot(3, 1).all<Circle>(), IsEmpty());
}

TEST_F(PlotPageTest, LabelAcrossAnEdgeIsPrintedOnBothSheets) {
    session.part.obj.obj_pube = 1;
    add_point(session, 1180, 2100).pu_bez = "ABCD";
    test::end_points(session);
    // 10 points: 3.528 m high and as wide as two lines are high; 60 % of it to the east.
    const double height = 10 * 25.4 / 72;
    const std::vector<LabelPlaced> first = plot(1, 1).all<LabelPlaced>();
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].caption, "ABCD");
    EXPECT_NEAR(first[0].left, 180 + 0.6 * height, 1e-4);
    EXPECT_NEAR(first[0].top, 100, 1e-4);
    EXPECT_NEAR(first[0].width, 2 * height, 1e-4);
    EXPECT_NEAR(first[0].height, height, 1e-4);
    EXPECT_EQ(first[0].font, (FontSpec{"Arial", 10, 0, 0, 0}));
    const std::vector<LabelPlaced> second = plot(2, 1).all<LabelPlaced>();
    ASSERT_EQ(second.size(), 1U);
    EXPECT_NEAR(second[0].left, -4.5 + 0.6 * height, 1e-4);
    EXPECT_THAT(plot(1, 2).all<LabelPlaced>(), IsEmpty());
    EXPECT_THAT(plot(3, 1).all<LabelPlaced>(), IsEmpty());
}

TEST_F(PlotPageTest, LabelWhollyInTheMarginIsLeftToTheNextSheet) {
    session.part.obj.obj_pube = 1;
    add_point(session, 1184, 2100).pu_bez = "ABCD";  // the label begins 1.6 m in the second sheet
    test::end_points(session);
    EXPECT_THAT(plot(1, 1).all<LabelPlaced>(), IsEmpty());
    EXPECT_EQ(plot(2, 1).all<LabelPlaced>().size(), 1U);
}

class RemoteTargetTest : public PlotPageTest {
 protected:
    RemoteTargetTest() {
        session.part.obj.obj_beob = 1;
        session.part.obj.obj_pusi = 1;
        session.settings.lenoriplo = 35;
    }
    void aim(const LineCoordinates& ends) {
        LineRow& row = add_line(session, ends);
        row.lin_typ_seite = 10;
        row.lin_fernziel.set("Ziel");
    }
};

TEST_F(RemoteTargetTest, NameEndsAtTheTrueTipBeyondTheEdge) {
    aim({1150, 2100, 9000, 2100});
    const test::RecordedPage& first = plot(1, 1);
    EXPECT_THAT(first.all<test::page::MoveTo>(), ElementsAre(test::page::MoveTo{185, 100}));
    const std::vector<TextRotated> names = first.all<TextRotated>();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].text, "Ziel");
    EXPECT_EQ(names[0].align, 11);
    EXPECT_EQ(names[0].font, (FontSpec{"Arial", 10, 0, 0, 0}));
    const test::RecordedPage& second = plot(2, 1);
    const auto moves = second.all<test::page::MoveTo>();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_NEAR(moves[0].x, 0.5, 1e-5);
    EXPECT_EQ(second.all<TextRotated>().size(), 1U);
    EXPECT_THAT(plot(3, 1).all<TextRotated>(), IsEmpty());
}

TEST_F(RemoteTargetTest, NameAwayFromTheSheetIsNotPrinted) {
    // The tip lies 15.5 m in the second sheet and the name reaches 7.1 m back.
    aim({1165, 2100, 9000, 2100});
    EXPECT_THAT(plot(1, 1).all<TextRotated>(), IsEmpty());
    EXPECT_EQ(plot(2, 1).all<TextRotated>().size(), 1U);
}

TEST_F(RemoteTargetTest, NameBeginsAtAWesternTip) {
    aim({1200, 2100, -9000, 2100});  // the tip is at 1165 and the name ends at 1172.1
    EXPECT_EQ(plot(1, 1).all<TextRotated>().size(), 1U);
    EXPECT_THAT(plot(2, 1).all<TextRotated>(), IsEmpty());
}

TEST_F(RemoteTargetTest, SteepNameRunsDownFromItsTip) {
    aim({1100, 2260, 1100, 9000});  // the tip is 20.5 m above the sheet, the name 7.1 m long
    EXPECT_THAT(plot(1, 1).all<TextRotated>(), IsEmpty());
    EXPECT_EQ(plot(1, 2).all<TextRotated>().size(), 1U);
}

TEST_F(PlotPageTest, PlotSizesOfObservations) {
    session.part.obj.obj_beob = 2;
    session.settings.Stquerplo = 4;
    session.settings.faktorStrich = 3;
    LineRow& row = add_line(session, {1050, 2100, 1150, 2100});
    row.lin_typ_hin = 11;
    row.lin_typ_rueck = 11;
    row.lin_typ_seite = 1;
    session.part.obj.obj_pusi = 1;
    const test::RecordedPage& page = plot(1, 1);
    // Signatures of class 3 have half a millimetre.
    EXPECT_THAT(lines_of(page), ElementsAre(Line{50.5F, 100, 100, 100}, Line{100, 102, 100, 98},
                                            Line{100, 100, 149.5F, 100}));
    EXPECT_THAT(page.all<operation::DrawWidth>().back(), operation::DrawWidth{1});  // of labels
    EXPECT_THAT(page.all<operation::DrawWidth>(), testing::Contains(operation::DrawWidth{3}));
}

TEST_F(PlotPageTest, SignaturesAndLabelsKeepTheirWidth) {
    session.part.obj.obj_pusi = 1;
    session.settings.faktorStrich = 3;
    session.settings.punkt_breite = 2;
    add_point(session, 1050, 2100).pu_signatur = 1;
    test::end_points(session);
    std::vector<operation::DrawWidth> widths = plot(1, 1).all<operation::DrawWidth>();
    // Of the frame, of the district lines, of the signatures, of the dots of the labels.
    widths.erase(widths.begin(), widths.end() - 2);
    EXPECT_THAT(widths, ElementsAre(operation::DrawWidth{1}, operation::DrawWidth{2}));
}

TEST_F(PlotPageTest, OnlyAColourPrinterKeepsTheFills) {
    session.part.obj.obj_pusi = 1;
    add_point(session, 1050, 2100).pu_signatur = 1;
    session.printer.drucker_farbe = 2;
    const std::int32_t blue = rgb(0, 127, 255);
    EXPECT_THAT(plot(1, 1).all<operation::FillColor>(),
                testing::Contains(operation::FillColor{blue}));
    for (const std::int16_t other : {std::int16_t{1}, std::int16_t{0}, std::int16_t{3}}) {
        session.printer.drucker_farbe = other;
        EXPECT_THAT(plot(1, 1).all<operation::FillColor>(),
                    testing::Contains(operation::FillColor{GreyOf(blue)}));
    }
}

TEST_F(PlotPageTest, EllipseWithinTheSheetIsHandedOverWholeAndCutAtItsEdge) {
    test::show_values(session, 7);
    session.part.obj.obj_wert_lage = 3;
    session.vektor_massstab[3] = 1;  // a centimetre is 10 m
    PointRow& row = add_point(session, 1090, 2100);
    row.pu_wert_lage = -3;
    row.pu_wert_rechts = 2;
    row.pu_wert_hoch = 1;
    EXPECT_EQ(lines_of(plot(1, 1)).size(), 200U);
    session.part.pu[1].pu_rechts = 1184.5;
    ++session.part.tables_revision;
    for (const Line& line : lines_of(plot(1, 1))) {
        EXPECT_LE(line.x1, 184.5F);
        EXPECT_LE(line.x2, 184.5F);
    }
    // Half of the curve on either sheet.
    EXPECT_EQ(lines_of(plot(1, 1)).size(), 100U);
    EXPECT_EQ(lines_of(plot(2, 1)).size(), 100U);
}

/// A network over all sheets and beyond, drawn without a window and clipped here.
class WholeNetworkTest : public PlotPageTest {
 protected:
    void fill() {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> rechts(900, 1700);
        std::uniform_real_distribution<double> hoch(1900, 2700);
        for (int i = 0; i < 300; ++i) {
            LineRow& row =
                add_line(session, {rechts(random), hoch(random), rechts(random), hoch(random)});
            row.lin_typ_hin = i % 3 == 0 ? 11 : 0;
            row.lin_typ_seite = static_cast<std::int16_t>(i % 3);
            PointRow& point = add_point(session, rechts(random), hoch(random));
            point.pu_wert_lage = i % 2 == 0 ? 1 : -1;
            point.pu_wert_rechts = i % 7 - 3;
            point.pu_wert_hoch = i % 5 - 2;
        }
        session.part.obj.obj_beob = 2;
        session.part.obj.obj_pusi = 1;
        session.part.obj.obj_wert_lage = 1;
    }

    std::vector<Segment> expected_on_sheet() {
        LayerFrame frame = paper_frame(session, {10, 10}, measurer);
        const TargetBox window = *frame.window;
        frame.window.reset();
        RecordingTarget everything;
        draw_network(session, frame, everything);
        std::vector<Segment> kept;
        for (const Operation& op : everything.operations()) {
            if (const Line* line = std::get_if<Line>(&op)) {
                const auto local = [](float value) { return static_cast<double>(value); };
                const ClippedSegment part = ClipSegment(
                    {0, 0, window.xmax - window.xmin, window.ymax - window.ymin},
                    {local(line->x1), local(line->y1), local(line->x2), local(line->y2)});
                if (part.result != 0) {
                    kept.push_back(part.segment);
                }
            }
        }
        return kept;
    }
};

TEST_F(WholeNetworkTest, IndexOfASheetLosesNothingAndAddsNothing) {
    fill();
    for (std::int16_t column = 1; column <= 3; ++column) {
        for (std::int16_t row = 1; row <= 2; ++row) {
            const std::vector<Line> lines = lines_of(plot(column, row));
            const std::vector<Segment> expected = expected_on_sheet();
            ASSERT_EQ(lines.size(), expected.size());
            for (std::size_t i = 0; i < lines.size(); ++i) {
                ASSERT_NEAR(lines[i].x1, expected[i].ax, 2e-3);
                ASSERT_NEAR(lines[i].y1, expected[i].ay, 2e-3);
                ASSERT_NEAR(lines[i].x2, expected[i].bx, 2e-3);
                ASSERT_NEAR(lines[i].y2, expected[i].by, 2e-3);
            }
        }
    }
}

}  // namespace
}  // namespace veldra
