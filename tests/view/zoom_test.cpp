#include "view/zoom.h"

#include <gtest/gtest.h>

namespace veldra {
namespace {

/// A picture of 1000 x 500 twips over 2000 m x 1000 m of ground: 2 m a twip.
class Zoom : public testing::Test {
 protected:
    Zoom() {
        session.picture = {1000, 500};
        FitView(session, 10000, 20000, 12000, 21000, 0);
    }

    void expect_view(double rw_min, double hw_min, double rw_max, double hw_max) {
        EXPECT_DOUBLE_EQ(session.view.ansicht_rw_min, rw_min);
        EXPECT_DOUBLE_EQ(session.view.ansicht_hw_min, hw_min);
        EXPECT_DOUBLE_EQ(session.view.ansicht_rw_max, rw_max);
        EXPECT_DOUBLE_EQ(session.view.ansicht_hw_max, hw_max);
    }

    void expect_undo(std::int16_t kind, const char* caption) {
        EXPECT_EQ(session.window.undo.undo_art, kind);
        EXPECT_EQ(session.window.undo.caption, caption);
    }

    Session session;
};

TEST_F(Zoom, InMovesEachEdgeByAQuarterOfItsSpan) {
    EXPECT_TRUE(zoom_in(session));
    expect_view(10500, 20250, 11500, 20750);
    EXPECT_DOUBLE_EQ(session.view.ansicht_masseinheit, 1);
    expect_undo(4, "Rückgängig: Vergrößern");
    EXPECT_EQ(session.window.undo.undo_wert, (std::array<double, 4>{10000, 20000, 12000, 21000}));
}

TEST_F(Zoom, OutMovesEachEdgeByHalfOfItsSpan) {
    zoom_out(session);
    expect_view(9000, 19500, 13000, 21500);
    EXPECT_DOUBLE_EQ(session.view.ansicht_masseinheit, 4);
    expect_undo(5, "Rückgängig: Verkleinern");
}

TEST_F(Zoom, InAtTenMetresDoesNothingAndKeepsTheOldUndo) {
    FitView(session, 100, 200, 120, 210, 0);  // 20 m wide, 10 m high
    zoom_out(session);
    FitView(session, 100, 200, 120, 210, 0);
    EXPECT_FALSE(zoom_in(session));
    expect_view(100, 200, 120, 210);
    expect_undo(5, "Rückgängig: Verkleinern");
}

TEST_F(Zoom, InJustAboveTenMetresWorks) {
    FitView(session, 100, 200, 120.04, 210.02, 0);
    EXPECT_TRUE(zoom_in(session));
}

TEST_F(Zoom, ShiftsMoveTheViewByAThirdAndClearUndo) {
    FitView(session, 0, 0, 900, 450, 0);
    zoom_out(session);
    FitView(session, 0, 0, 900, 450, 0);
    shift_view(session, ShiftTo::rechts);
    expect_view(300, 0, 1200, 450);
    expect_undo(0, "Rückgängig:");
    shift_view(session, ShiftTo::links);
    shift_view(session, ShiftTo::links);
    expect_view(-300, 0, 600, 450);
    shift_view(session, ShiftTo::hoch);
    expect_view(-300, 150, 600, 600);
    shift_view(session, ShiftTo::runter);
    shift_view(session, ShiftTo::runter);
    expect_view(-300, -150, 600, 300);
}

TEST_F(Zoom, WholeFitsTheExtentsWithTheirMarginAndClearsUndo) {
    session.part.extents = {1000, 2000, 3000, 2400, 0, 0};
    zoom_in(session);
    show_whole(session);
    // 5 % of 2000 m on each side: 2200 m over 1000 twips; 1100 m about the middle 2200.
    expect_view(900, 1650, 3100, 2750);
    expect_undo(0, "Rückgängig:");
}

TEST_F(Zoom, BandIsFittedWhateverItsDirection) {
    EXPECT_TRUE(zoom_to_band(session, {10400, 20600}, {10200, 20500}));
    expect_view(10200, 20500, 10400, 20600);
    expect_undo(4, "Rückgängig: Vergrößern");
    EXPECT_EQ(session.window.undo.undo_wert, (std::array<double, 4>{10000, 20000, 12000, 21000}));
}

TEST_F(Zoom, TallBandIsCentred) {
    EXPECT_TRUE(zoom_to_band(session, {10000, 20000}, {10100, 20100}));
    expect_view(9950, 20000, 10150, 20100);
}

TEST_F(Zoom, BandOfFiveMetresIsTooSmall) {
    zoom_out(session);
    FitView(session, 10000, 20000, 12000, 21000, 0);
    EXPECT_FALSE(zoom_to_band(session, {10000, 20000}, {10005, 20100}));
    EXPECT_FALSE(zoom_to_band(session, {10000, 20000}, {10100, 20005}));
    EXPECT_FALSE(zoom_to_band(session, {10000, 20000}, {10000, 20000}));
    expect_view(10000, 20000, 12000, 21000);
    expect_undo(5, "Rückgängig: Verkleinern");
    EXPECT_TRUE(zoom_to_band(session, {10000, 20000}, {10005.5, 20005.5}));
}

TEST_F(Zoom, UndoGoesBackOneStepOnly) {
    zoom_in(session);
    zoom_in(session);
    undo_zoom(session);
    expect_view(10500, 20250, 11500, 20750);
    expect_undo(0, "Rückgängig:");
}

TEST_F(Zoom, ResizeClearsUndo) {
    session.datei_geladen = 1;
    zoom_in(session);
    resize_picture(session, WindowMode::normal, WindowMode::normal, {800, 500});
    expect_undo(0, "Rückgängig:");
}

TEST_F(Zoom, AboutAPlaceKeepsItWhereItIs) {
    // A quarter of the way across and half of the way up.
    EXPECT_TRUE(zoom_about(session, {10500, 20500}, 2));
    expect_view(10250, 20250, 11250, 20750);
    expect_undo(4, "Rückgängig: Vergrößern");
    EXPECT_TRUE(zoom_about(session, {10500, 20500}, 0.5));
    expect_view(10000, 20000, 12000, 21000);
    expect_undo(5, "Rückgängig: Verkleinern");
}

TEST_F(Zoom, AboutAPlaceStopsAtTenMetres) {
    FitView(session, 100, 200, 120, 210, 0);
    EXPECT_FALSE(zoom_about(session, {100, 200}, 1.25));
    expect_view(100, 200, 120, 210);
    EXPECT_TRUE(zoom_about(session, {100, 200}, 0.5));
    expect_view(100, 200, 140, 220);
}

TEST_F(Zoom, ManyNotchesAtOnceComeNoCloserThanTheButtonCan) {
    // The button halves a view of just over 10 m, so 5 m are left of the shorter side.
    EXPECT_TRUE(zoom_about(session, {10500, 20500}, 1e6));
    expect_view(10497.5, 20497.5, 10507.5, 20502.5);
    FitView(session, 100, 200, 122, 211, 0);
    EXPECT_TRUE(zoom_about(session, {100, 200}, 1.25));  // one notch as ever
    expect_view(100, 200, 117.6, 208.8);
}

TEST_F(Zoom, MousePlacesCountTwipsFromTheUpperLeftCorner) {
    const PicturePoint corner = from_twips(session.view, 0, 0);
    EXPECT_EQ(corner.x, 0.0F);
    EXPECT_EQ(corner.y, 1000.0F);
    const WorldPoint place = to_world(session.view, from_twips(session.view, 250, 400));
    EXPECT_DOUBLE_EQ(place.rechts, 10500);
    EXPECT_DOUBLE_EQ(place.hoch, 20200);
}

}  // namespace
}  // namespace veldra
