// What rows outside the view still draw into it, and stubs along the axes.
#include "drawing/observation_layers.h"
#include "layer_fixture.h"

namespace veldra {
namespace {

using test::add_line;
using test::described;
using test::Lines;
using test::only;

/// Boxes are metres from the corner of the view.
class LinesBeyondTheView : public test::LayerFixture {
 protected:
    LineRow& orientation(const LineCoordinates& ends, const std::string& name) {
        LineRow& row = add_line(session, ends);
        row.lin_typ_seite = 10;
        row.lin_fernziel.set(name);
        return row;
    }
    Lines texts_in(const TargetBox& visible) {
        RecordingTarget seen;
        seen.set_visible_box(visible);
        DrawOrientations(session, frame(), seen);
        return only(described(seen), "TextRotated");
    }
    Lines drawn_in(const TargetBox& visible, const char* kind) {
        RecordingTarget seen;
        seen.set_visible_box(visible);
        DrawObservations(session, frame(), seen, ObservationForm::horizontal);
        return only(described(seen), kind);
    }
};

TEST_F(LinesBeyondTheView, LongRemoteNameReachesBackIntoTheView) {
    // The stub ends 20 m east of its point; 60 letters of 1 m run back to 40 m west of it.
    orientation({1000, 2000, 1600, 2000}, std::string(60, 'w'));
    orientation({1000, 2900, 1600, 2900}, "kurz");  // the longest name need not be the last
    EXPECT_EQ(texts_in({-45, -5, -35, 5}),
              Lines{"TextRotated '" + std::string(60, 'w') + "' 0 11"});
}

TEST_F(LinesBeyondTheView, ShortNameFarOutsideIsLeftOut) {
    orientation({1000, 2000, 1600, 2000}, "kurz");
    EXPECT_EQ(texts_in({-245, -5, -235, 5}), Lines{});
    EXPECT_EQ(texts_in({-5, -5, 5, 5}), Lines{"TextRotated 'kurz' 0 11"});
}

TEST_F(LinesBeyondTheView, StrokeOfALineOutsideReachesIntoTheView) {
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 1;
    // The line runs along the lower edge, 0.5 m below the box; its stroke is 1 m high.
    EXPECT_EQ(drawn_in({40, 0.5, 60, 10}, "Line")[1], "Line 50 1 50 -1");
    EXPECT_EQ(drawn_in({40, 20, 60, 30}, "Line"), Lines{});
}

TEST_F(LinesBeyondTheView, CrossOfALineOutsideReachesIntoTheView) {
    session.settings.Stquerscr = 1;
    session.settings.Stkreuscr = 1000;  // 10 m
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 2;
    EXPECT_EQ(drawn_in({40, 4.5, 60, 14}, "Line")[1], "Line 52.5 5 47.5 -5");
}

TEST_F(LinesBeyondTheView, DotOfALineOutsideReachesIntoTheView) {
    session.settings.Stquerscr = 0;
    session.settings.Stkreuscr = 0;
    session.settings.punsigscr = {};
    session.obj.obj_pusi = 0;
    add_line(session, {1000, 2000, 1100, 2000});
    EXPECT_EQ(drawn_in({-5, 0.1, 5, 10}, "Circle"),
              (Lines{"Circle 0 0 0.15", "Circle 100 0 0.15"}));
}

TEST_F(LinesBeyondTheView, StubDueWestIsReadFromItsTip) {
    orientation({1000, 2000, 400, 2000}, "Turm");
    DrawOrientations(session, frame(), target);
    EXPECT_EQ(only(described(target), "Line")[1], "Line -10 0 -20 0");
    EXPECT_EQ(only(described(target), "TextRotated"), Lines{"TextRotated 'Turm' 0 9"});
}

TEST_F(LinesBeyondTheView, NamesAlongTheAxesStandOnTheSheetsThatTheyTouch) {
    // Due west: 4 m from the tip 20 m west of the point eastwards, 2 m high.
    // Due north: 4 m from the tip 20 m north of the point southwards, 2 m to the west.
    orientation({1000, 2000, 400, 2000}, "West");
    orientation({1000, 2000, 1000, 2600}, "Nord");
    const auto names_on = [this](const TargetBox& sheet) {
        RecordingTarget paper;
        LayerFrame on_paper = frame();
        on_paper.window = sheet;
        DrawOrientations(session, on_paper, paper);
        Lines names = only(described(paper), "TextRotated");
        return names;
    };
    EXPECT_EQ(names_on({979, 2001, 981, 2003}), Lines{"TextRotated 'West' 0 9"});
    EXPECT_EQ(names_on({985, 2001, 987, 2003}), Lines{});
    EXPECT_EQ(names_on({998.5, 2017, 999.5, 2018}), Lines{"TextRotated 'Nord' 900 11"});
    EXPECT_EQ(names_on({1000.5, 2017, 1001.5, 2018}), Lines{});
    EXPECT_EQ(names_on({998.5, 2021, 999.5, 2022}), Lines{});
}

}  // namespace
}  // namespace veldra
