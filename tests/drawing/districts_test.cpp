#include "drawing/districts.h"

#include "describe.h"
#include "layer_fixture.h"
#include "network_builder.h"

namespace veldra {
namespace {

using test::described;
using test::Lines;
using test::only;

/// A view of 3 by 2 km in DHDN with kilometre lines at 2571 to 2573 and 5619 to 5620; a twip is
/// 1 m of ground, so labels are 200 m high and 100 m wide a letter.
class DistrictsTest : public test::LayerFixture {
 protected:
    DistrictsTest() {
        session.settings.numbez_datum = {};
        session.view = {2570500, 5618500, 2573500, 5620500, 1};
        session.extents = {2570500, 5618500, 2573500, 5620500, 0, 0};
        session.obj.obj_bezu = 1;
        session.obj.obj_bezu_elli = 1;
        session.obj.obj_bezu_abbi = 1;
        session.obj.obj_nube_meridian = 2;
        session.obj.obj_nube = districts::klv;
        session.obj.obj_nbez = 1;
    }

    [[nodiscard]] TargetBox area() const {
        const Viewport& view = session.view;
        return {view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max, view.ansicht_hw_max};
    }
    Lines draw() {
        target = {};
        DrawGrid(session, frame(), target, area());
        return described(target);
    }
    /// Coordinates of lines, rounded to metres.
    std::vector<std::array<long, 4>> lines() {
        draw();
        std::vector<std::array<long, 4>> found;
        for (const Operation& op : target.operations()) {
            if (const auto* line = std::get_if<operation::Line>(&op)) {
                found.push_back({std::lround(line->x1), std::lround(line->y1),
                                 std::lround(line->x2), std::lround(line->y2)});
            }
        }
        return found;
    }
    struct Placed {
        int index;
        std::string caption;
        long left;
        long top;
        bool operator==(const Placed&) const = default;
    };
    std::vector<Placed> labels() {
        draw();
        std::vector<Placed> found;
        for (const Operation& op : target.operations()) {
            if (const auto* label = std::get_if<operation::LabelPlaced>(&op)) {
                EXPECT_EQ(label->array, LabelArray::lbl_nubez);
                found.push_back({label->index, label->caption, std::lround(label->left),
                                 std::lround(label->top)});
            }
        }
        return found;
    }
    void move_label(const std::string& name, double rechts, double hoch) {
        NubezOffsetRow& row = session.nuoff[session.nuoff.append()];
        row = {name, rechts, hoch};
    }
};

TEST_F(DistrictsTest, PenComesFirstInTheColourOfTheLabels) {
    session.settings.nubcolor = rgb(1, 2, 3);
    const Lines ops = draw();
    ASSERT_GT(ops.size(), 3U);
    EXPECT_EQ((Lines{ops.begin(), ops.begin() + 3}),
              (Lines{"DrawStyle 0", "DrawWidth 1", fmt::format("ForeColor {}", rgb(1, 2, 3))}));
    EXPECT_EQ(ops[3].substr(0, 4), "Line");
}

TEST_F(DistrictsTest, NoKindSetsThePenAndNothingElse) {
    session.obj.obj_nube = 0;
    EXPECT_EQ(draw().size(), 3U);
}

TEST_F(DistrictsTest, LocalSystemDrawsNoGrid) {
    session.obj.obj_bezu = 0;
    EXPECT_EQ(draw().size(), 3U);
}

TEST_F(DistrictsTest, LinesAreClippedToTheView) {
    // Nodes 2570 to 2574 by 5618 to 5621, four columns and three rows with lines: at each the line
    // to the north, then to the east.
    EXPECT_EQ(lines(), (std::vector<std::array<long, 4>>{{0, 500, 500, 500},      // 2570/5619 east
                                                         {0, 1500, 500, 1500},    // 2570/5620 east
                                                         {500, 0, 500, 500},      // 2571/5618 north
                                                         {500, 500, 500, 1500},   // 2571/5619 north
                                                         {500, 500, 1500, 500},   // 2571/5619 east
                                                         {500, 1500, 500, 2000},  // 2571/5620 north
                                                         {500, 1500, 1500, 1500},  // 2571/5620 east
                                                         {1500, 0, 1500, 500},
                                                         {1500, 500, 1500, 1500},
                                                         {1500, 500, 2500, 500},
                                                         {1500, 1500, 1500, 2000},
                                                         {1500, 1500, 2500, 1500},
                                                         {2500, 0, 2500, 500},
                                                         {2500, 500, 2500, 1500},
                                                         {2500, 500, 3000, 500},
                                                         {2500, 1500, 2500, 2000},
                                                         {2500, 1500, 3000, 1500}}));
}

TEST_F(DistrictsTest, LabelsStandAboveAndRightOfTheNodesInTheView) {
    // Four rows: node 2571/5619 is (2 - 1) * 4 + 2.
    EXPECT_EQ(labels(), (std::vector<Placed>{{6, "25715619 ", 500, 700},
                                             {7, "25715620 ", 500, 1700},
                                             {10, "25725619 ", 1500, 700},
                                             {11, "25725620 ", 1500, 1700},
                                             {14, "25735619 ", 2500, 700},
                                             {15, "25735620 ", 2500, 1700}}));
    const Label& label = session.lbl_nubez[6];
    EXPECT_TRUE(label.visible);
    EXPECT_TRUE(label.enabled);
    EXPECT_EQ(label.width, 900);
    EXPECT_EQ(label.height, 200);
    EXPECT_FALSE(session.lbl_nubez[5].visible);
}

TEST_F(DistrictsTest, LinesAndNumbersLeaveAGapOut) {
    // From 2571.2 to 2572.6 and from 5618.5 to 5619.3: beneath it lie the line 5619 from 700 to
    // 2100 m of the view, the line 2572 up to 800 m, and the number of 2572/5619, at 1500 to 2400
    // and 500 to 700 m. That of 2571/5619 begins outside, but reaches from 500 to 1400 m.
    LayerFrame gapped = frame();
    gapped.gap = TargetBox{2571200, 5618500, 2572600, 5619300};
    DrawGrid(session, gapped, target, area());
    std::vector<std::array<long, 4>> found;
    for (const Operation& op : target.operations()) {
        if (const auto* line = std::get_if<operation::Line>(&op)) {
            found.push_back({std::lround(line->x1), std::lround(line->y1), std::lround(line->x2),
                             std::lround(line->y2)});
        }
    }
    EXPECT_EQ(found, (std::vector<std::array<long, 4>>{{0, 500, 500, 500},
                                                       {0, 1500, 500, 1500},
                                                       {500, 0, 500, 500},
                                                       {500, 500, 500, 1500},
                                                       {500, 500, 700, 500},
                                                       {500, 1500, 500, 2000},
                                                       {500, 1500, 1500, 1500},
                                                       {1500, 800, 1500, 1500},
                                                       {2100, 500, 2500, 500},
                                                       {1500, 1500, 1500, 2000},
                                                       {1500, 1500, 2500, 1500},
                                                       {2500, 0, 2500, 500},
                                                       {2500, 500, 2500, 1500},
                                                       {2500, 500, 3000, 500},
                                                       {2500, 1500, 2500, 2000},
                                                       {2500, 1500, 3000, 1500}}));
    EXPECT_FALSE(session.lbl_nubez[6].visible);
    EXPECT_FALSE(session.lbl_nubez[6].enabled);
    EXPECT_TRUE(session.lbl_nubez[7].visible);
    EXPECT_FALSE(session.lbl_nubez[10].visible);
    EXPECT_TRUE(session.lbl_nubez[11].visible);
    EXPECT_TRUE(session.lbl_nubez[14].visible);
}

TEST_F(DistrictsTest, LabelIsAnnouncedBetweenTheLinesOfItsNodeWithFontAndColour) {
    session.settings.nubfon = "Courier New";
    session.settings.nubgrascr = 20;
    session.settings.nubita = table_true;
    session.settings.nubcolor = rgb(9, 8, 7);
    draw();
    const auto& ops = target.operations();
    std::size_t first = 0;
    while (!std::holds_alternative<operation::LabelPlaced>(ops[first])) {
        ++first;
    }
    const auto& label = std::get<operation::LabelPlaced>(ops[first]);
    EXPECT_EQ(label.font, (FontSpec{"Courier New", 20, 0, table_true, 0}));
    EXPECT_EQ(label.colour, rgb(9, 8, 7));
    EXPECT_EQ(label.height, 400);
    // Behind the pen, five lines come before the first node with a label.
    EXPECT_EQ(first, 3U + 5U);
}

TEST_F(DistrictsTest, AlkPutsTheHundredsOfBothAxesFirst) {
    session.obj.obj_nube = districts::alk;
    EXPECT_EQ(labels().front(), (Placed{6, " 25567119", 500, 700}));
}

TEST_F(DistrictsTest, OnlyAtTheEdgeMeansBlanksOnTheScreen) {
    for (const int choice : {0, 2}) {
        session.obj.obj_nbez = static_cast<std::int16_t>(choice);
        EXPECT_EQ(labels().front(), (Placed{6, "     ", 500, 700}));
    }
}

TEST_F(DistrictsTest, MovedLabelStandsAtItsPlace) {
    move_label("25725619", 2571800, 5619300);
    move_label("25735620", 2570000, 5618000);
    const auto placed = labels();
    EXPECT_EQ(placed[2], (Placed{10, "25725619 ", 1300, 1000}));
    EXPECT_EQ(placed[5], (Placed{15, "25735620 ", -500, -300}));
    session.obj.obj_nbez = 2;
    EXPECT_EQ(labels()[2], (Placed{10, "     ", 1500, 700})) << "blanks stay at their node";
}

TEST_F(DistrictsTest, LastStoredPlaceWins) {
    move_label("25725619", 1, 1);
    move_label("25725619", 2571800, 5619300);
    EXPECT_EQ(labels()[2], (Placed{10, "25725619 ", 1300, 1000}));
    const NumbezOffset found = FindNumbezOffset(session, "25725619");
    EXPECT_EQ(found.row, 2);
    EXPECT_EQ(found.rechts, 2571800);
    EXPECT_EQ(found.hoch, 5619300);
}

TEST_F(DistrictsTest, StoredPlacesAreComparedExactly) {
    EXPECT_FALSE(FindNumbezOffset(session, "25725619").found());
    move_label("25725619 ", 1, 1);
    move_label("l 5308", 1, 1);
    EXPECT_FALSE(FindNumbezOffset(session, "25725619").found());
    EXPECT_FALSE(FindNumbezOffset(session, "L 5308").found());
}

TEST_F(DistrictsTest, LargeGridHasLinesAndNoLabels) {
    session.view = {2500500, 5500500, 2700500, 5690500, 1};
    draw();
    EXPECT_TRUE(district_cache(session).grid.grid_zu_gross);
    EXPECT_EQ(only(described(target), "Label"), Lines{});
    EXPECT_GT(only(described(target), "Line").size(), 70000U);
    EXPECT_LE(session.lbl_nubez.size(), 1U);
}

TEST_F(DistrictsTest, LabelsAreHiddenByTheNextDrawingAndNeverUnloaded) {
    draw();
    const std::size_t loaded = session.lbl_nubez.size();
    EXPECT_EQ(loaded, 5U * 4U + 1U);
    session.obj.obj_nube = 0;
    draw();
    EXPECT_EQ(session.lbl_nubez.size(), loaded);
    for (const Label& label : session.lbl_nubez) {
        EXPECT_FALSE(label.visible);
        EXPECT_FALSE(label.enabled);
    }
}

TEST_F(DistrictsTest, ReusedGridGivesTheSamePictureAsANewOne) {
    const Lines first = draw();
    const DistrictGrid* grid = &district_cache(session).grid;
    const double* nodes = grid->grid_rechts.data();
    EXPECT_EQ(draw(), first);
    EXPECT_EQ(district_cache(session).grid.grid_rechts.data(), nodes) << "built again";
    district_cache(session) = {};
    EXPECT_EQ(draw(), first);
}

TEST_F(DistrictsTest, GridIsBuiltAgainWhenAnythingChangesThatItDependsOn) {
    const auto changes = [this](auto&& change) {
        draw();
        const DistrictInputs before = *district_cache(session).inputs;
        const Lines kept = described(target);
        change();
        draw();
        return district_cache(session).inputs != before && described(target) != kept;
    };
    EXPECT_TRUE(changes([this] { session.view.ansicht_rw_max += 1000; }));
    EXPECT_TRUE(changes([this] { session.settings.numbez_datum[0].dphi0 = 1; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_nube_meridian = 3; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_nube = districts::tk25; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_bezu_elli = 2; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_bezu = 0; }));
}

TEST_F(DistrictsTest, GreyFrameDrawsGridAndLabelsInGrey) {
    LayerFrame grey = frame();
    grey.grey = true;
    DrawGrid(session, grey, target, area());
    // (128 + 0 + 0) / 3
    EXPECT_EQ(only(described(target), "ForeColor"),
              Lines{fmt::format("ForeColor {}", rgb(43, 43, 43))});
}

TEST_F(DistrictsTest, SheetIsNamedAtItsSouthWestCorner) {
    session.obj.obj_nube = districts::tk25;
    session.view = {2568000, 5617000, 2572000, 5621000, 1};
    // The corner of sheet 5208 at 50°42' and 7°00' lies in this view.
    const auto placed = labels();
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_EQ(placed[0].caption, "5208 ");
    // Columns 40 to 43 and rows 505 to 508; the corner is column 42, row 507.
    EXPECT_EQ(placed[0].index, (3 - 1) * 4 + 3);
}

}  // namespace
}  // namespace veldra
