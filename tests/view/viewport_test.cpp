#include "view/viewport.h"

#include <gtest/gtest.h>

#include "model/undo.h"

namespace veldra {
namespace {

/// A picture of 15000 x 9000 twips with a loaded file.
Session loaded_session() {
    Session session;
    session.picture = {15000, 9000};
    session.datei_geladen = 1;
    return session;
}

void expect_view(const Viewport& view, double rw_min, double hw_min, double rw_max, double hw_max,
                 double unit) {
    EXPECT_DOUBLE_EQ(view.ansicht_rw_min, rw_min);
    EXPECT_DOUBLE_EQ(view.ansicht_hw_min, hw_min);
    EXPECT_DOUBLE_EQ(view.ansicht_rw_max, rw_max);
    EXPECT_DOUBLE_EQ(view.ansicht_hw_max, hw_max);
    EXPECT_DOUBLE_EQ(view.ansicht_masseinheit, unit);
}

TEST(FitView, TallNarrowRectangleIsCentredAndViewHoldsMoreEasting) {
    Session session = loaded_session();
    FitView(session, 100, 0, 110, 90, 0);
    expect_view(session.view, 30, 0, 180, 90, 0.01);
}

TEST(FitView, WideRectangleIsCentredInHeight) {
    Session session = loaded_session();
    FitView(session, 0, 10, 300, 20, 0);
    expect_view(session.view, 0, -75, 300, 105, 0.02);
}

TEST(FitView, EqualRatiosTakeTheWidthRule) {
    Session session = loaded_session();
    session.picture = {12000, 12000};
    // Centring loses the last digits of 0.1; the axis that decides keeps them.
    FitView(session, 0.1, 0.1, 50.1, 50.1, 0);
    EXPECT_EQ(session.view.ansicht_rw_min, 0.1);
    EXPECT_EQ(session.view.ansicht_rw_max, 50.1);
    EXPECT_NE(session.view.ansicht_hw_min, 0.1);
    EXPECT_DOUBLE_EQ(session.view.ansicht_hw_max, 50.1);
}

TEST(FitView, MarginIsFivePercentOnEachSide) {
    Session session = loaded_session();
    FitView(session, 0, 0, 100, 20, 1);
    expect_view(session.view, -5, -23, 105, 43, 110.0 / 15000);
}

TEST(FitView, LeavesItsArgumentsAlone) {
    Session session = loaded_session();
    double rw1 = 0;
    double hw1 = 0;
    double rw2 = 100;
    double hw2 = 20;
    FitView(session, rw1, hw1, rw2, hw2, 1);
    EXPECT_EQ(rw1, 0);
    EXPECT_EQ(hw1, 0);
    EXPECT_EQ(rw2, 100);
    EXPECT_EQ(hw2, 20);
}

TEST(FitView, PictureOfNoHeightGivesNumbers) {
    Session session = loaded_session();
    session.picture = {15000, 0};
    FitView(session, 0, 0, 150, 90, 0);
    EXPECT_EQ(session.view.ansicht_masseinheit, 90);
    EXPECT_EQ(session.view.ansicht_hw_max, 90);
}

TEST(PictureScale, SpansArePictureCorners) {
    Session session = loaded_session();
    FitView(session, 32500000, 5700000, 32500150, 5700090, 0);
    const PictureScale scale = picture_scale(session.view);
    EXPECT_EQ(scale.rw_span, 150.0F);
    EXPECT_EQ(scale.hw_span, 90.0F);
}

TEST(WorldToPicture, SubtractsBeforeNarrowing) {
    Viewport view;
    view.ansicht_rw_min = 32500000.25;
    view.ansicht_hw_min = 5700000.5;
    const PicturePoint point = to_picture(view, {32500001.5, 5700003.625});
    EXPECT_EQ(point.x, 1.25F);
    EXPECT_EQ(point.y, 3.125F);
}

TEST(PictureToWorld, IsTheInverse) {
    Viewport view;
    view.ansicht_rw_min = 32500000.25;
    view.ansicht_hw_min = 5700000.5;
    const WorldPoint world = to_world(view, {1.25F, 3.125F});
    EXPECT_EQ(world.rechts, 32500001.5);
    EXPECT_EQ(world.hoch, 5700003.625);
}

TEST(Resize, DraggingTheBorderKeepsTopLeftCornerAndScale) {
    Session session = loaded_session();
    FitView(session, 0, 0, 150, 90, 0);
    const ResizeResult result =
        resize_picture(session, WindowMode::normal, WindowMode::normal, {30000, 12000});
    EXPECT_TRUE(result.layout);
    EXPECT_TRUE(result.redraw);
    EXPECT_EQ(session.picture.width, 30000);
    expect_view(session.view, 0, -30, 300, 90, 0.01);
}

TEST(Resize, MaximisingKeepsTheGroundInView) {
    Session session = loaded_session();
    FitView(session, 0, 0, 150, 90, 0);
    resize_picture(session, WindowMode::normal, WindowMode::maximised, {30000, 9000});
    expect_view(session.view, -75, 0, 225, 90, 0.01);
    resize_picture(session, WindowMode::maximised, WindowMode::normal, {30000, 18000});
    expect_view(session.view, -75, -45, 225, 135, 0.01);
}

void allow_undo(Session& session) {
    store_undo(session.window, {undo_kind::zoom_in, 0, {}, {}}, undo_caption::zoom_in);
}

void expect_no_undo(const Session& session) {
    EXPECT_EQ(session.window.undo.caption, "Rückgängig:");
    EXPECT_EQ(session.window.undo.undo_art, undo_kind::none);
}

TEST(Resize, MinimisingAndRestoringNeitherRefitsNorRedrawsYetClearsUndo) {
    Session session = loaded_session();
    FitView(session, 0, 0, 150, 90, 0);
    const std::pair<WindowMode, WindowMode> changes[] = {
        {WindowMode::normal, WindowMode::minimised}, {WindowMode::minimised, WindowMode::normal}};
    for (const auto& [last, now] : changes) {
        allow_undo(session);
        const ResizeResult result = resize_picture(session, last, now, {300, 300});
        EXPECT_FALSE(result.layout);
        EXPECT_FALSE(result.redraw);
        EXPECT_EQ(session.picture.width, 15000);
        expect_view(session.view, 0, 0, 150, 90, 0.01);
        expect_no_undo(session);
    }
}

TEST(Resize, WithoutAFileOnlyThePictureIsPlaced) {
    Session session = loaded_session();
    session.datei_geladen = 0;
    allow_undo(session);
    const Viewport before = session.view;
    const ResizeResult result =
        resize_picture(session, WindowMode::normal, WindowMode::normal, {30000, 12000});
    EXPECT_TRUE(result.layout);
    EXPECT_FALSE(result.redraw);
    EXPECT_EQ(session.picture.height, 12000);
    EXPECT_EQ(session.view.ansicht_masseinheit, before.ansicht_masseinheit);
    expect_no_undo(session);
}

}  // namespace
}  // namespace veldra
