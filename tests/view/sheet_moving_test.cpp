#include "view/sheet_moving.h"

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "model/undo.h"
#include "network_builder.h"
#include "plot/sheet_outlines.h"
#include "view/viewport.h"

namespace veldra {
namespace {

/// Sheets of 20 cm x 30 cm at 1:1000, two across and one up from (1000, 2000): 200 m x 300 m each.
class SheetMoving : public testing::Test {
 protected:
    SheetMoving() {
        session.plotmodus = 1;
        session.plot.plot_massstab = 0.001;
        session.plot.plot_null_rechts = 1000;
        session.plot.plot_null_hoch = 2000;
        session.plot.plot_blatt_rechts = 2;
        session.plot.plot_blatt_hoch = 1;
        session.sheet.papier_breite = 0.2;
        session.sheet.papier_hoehe = 0.3;
        session.picture = {1000, 1000};
        FitView(session, 900, 1900, 1900, 2900, 0);
        session.lbl_nubez.resize(2);
        session.lbl_nubez[1].visible = true;
        session.window.lbl_legende_visible = true;
    }

    void expect_origin(double rechts, double hoch) {
        EXPECT_DOUBLE_EQ(session.plot.plot_null_rechts, rechts);
        EXPECT_DOUBLE_EQ(session.plot.plot_null_hoch, hoch);
    }

    Session session;
};

TEST_F(SheetMoving, LinesPartTheSheetsOnceEach) {
    const std::vector<Segment> lines = sheet_outlines(session);
    ASSERT_EQ(lines.size(), 5U);
    const double xs[] = {1000, 1200, 1400};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(lines[i].ax, xs[i], 1e-9);
        EXPECT_NEAR(lines[i].bx, xs[i], 1e-9);
        EXPECT_NEAR(lines[i].ay, 2000, 1e-9);
        EXPECT_NEAR(lines[i].by, 2300, 1e-9);
    }
    EXPECT_NEAR(lines[4].ay, 2300, 1e-9);
    EXPECT_NEAR(lines[4].ax, 1000, 1e-9);
    EXPECT_NEAR(lines[4].bx, 1400, 1e-9);
}

TEST_F(SheetMoving, ThereAreNoLinesWithoutAScale) {
    session.plot.plot_massstab = -99;
    EXPECT_TRUE(sheet_outlines(session).empty());
}

TEST_F(SheetMoving, OnlyLinesInViewAreMadeOfThousands) {
    session.plot.plot_blatt_rechts = 32767;
    // Edges at 1000, 1200 ... of which 1000 to 1800 are in view, and one beyond.
    EXPECT_EQ(sheet_outlines(session).size(), 6U + 2U);
}

TEST_F(SheetMoving, BeginningStoresTheStepAndHidesTheLegend) {
    session.obj.obj_nube = 1;
    session.obj.obj_nbez = 1;
    begin_sheet_drag(session);
    EXPECT_EQ(session.window.undo.undo_art, 3);
    EXPECT_EQ(session.window.undo.undo_wert[0], 1000);
    EXPECT_EQ(session.window.undo.undo_wert[1], 2000);
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption,
              "Rückgängig: Verschiebung Blatteinteilung");
    EXPECT_FALSE(session.window.lbl_legende_visible);
    // Numbers at the nodes stay.
    EXPECT_TRUE(session.lbl_nubez[1].visible);
}

TEST_F(SheetMoving, NumbersOnTheEdgesAreHidden) {
    session.obj.obj_nube = 1;
    session.obj.obj_nbez = 2;
    begin_sheet_drag(session);
    EXPECT_FALSE(session.lbl_nubez[1].visible);
}

TEST_F(SheetMoving, NumbersOfNoDistrictsAreNotTouched) {
    session.obj.obj_nube = 0;
    session.obj.obj_nbez = 2;
    begin_sheet_drag(session);
    EXPECT_TRUE(session.lbl_nubez[1].visible);
}

TEST_F(SheetMoving, TheZeroPointFollowsTheMouse) {
    begin_sheet_drag(session);
    move_sheets(session, 12.5, -3);
    move_sheets(session, 1, 1);
    expect_origin(1013.5, 1998);
    session.window.lbl_legende_visible = true;
    undo_sheet_move(session);
    expect_origin(1000, 2000);
    EXPECT_EQ(session.window.undo.undo_art, 0);
    EXPECT_FALSE(session.window.lbl_legende_visible);
}

TEST_F(SheetMoving, FittingTakesTheCornerOfTheExtents) {
    test::show_nothing(session);
    test::add_point(session, 1500, 2500);
    test::end_points(session);
    test::FakeMeasurer measurer;
    EstimatedTextSize estimate(measurer);
    const Viewport before = session.view;
    fit_plot_origin(session, estimate);
    // A single point is shown as a square of 5 m about it.
    expect_origin(1497.5, 2497.5);
    EXPECT_EQ(session.window.undo.undo_art, 3);
    EXPECT_EQ(session.window[MenuItem::m_ansicht_undo].caption,
              "Rückgängig: Plotternullpunkt anpassen");
    EXPECT_DOUBLE_EQ(session.view.ansicht_rw_min, before.ansicht_rw_min);
    EXPECT_DOUBLE_EQ(session.view.ansicht_hw_max, before.ansicht_hw_max);
    undo_sheet_move(session);
    expect_origin(1000, 2000);
}

}  // namespace
}  // namespace veldra
