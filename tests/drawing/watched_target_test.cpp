#include "drawing/watched_target.h"

#include <gtest/gtest.h>

#include "drawing/pipeline.h"
#include "layer_fixture.h"
#include "recording_interface.h"

namespace veldra::test {
namespace {

class CountingWork final : public LongWork {
 public:
    bool goes_on() override { return ++calls < last_call; }
    int calls = 0;
    int last_call = 1000000;
};

class WatchedDrawing : public LayerFixture {
 protected:
    /// Points with labels, a metre apart, from (1010, 2010) to the north.
    void add_points(int count) {
        for (int i = 0; i < count; ++i) {
            PointRow& row = add_point(session, 1010, 2010 + i);
            row.pu_signatur = 1;
            row.pu_bez = "1";
        }
        end_points(session);
        session.obj.obj_pube = 1;
    }

    CountingWork work;
    RecordingInterface ui;
};

TEST_F(WatchedDrawing, HearsOfEvery1024thOperation) {
    WatchedTarget watched(target, &work);
    for (int i = 0; i < 3000; ++i) {
        watched.Circle(0, 0, 1);
    }
    EXPECT_EQ(work.calls, 2);
    EXPECT_EQ(target.operations().size(), 3000U);
}

TEST_F(WatchedDrawing, WithoutAListenerEverythingIsDrawn) {
    WatchedTarget watched(target, nullptr);
    for (int i = 0; i < 3000; ++i) {
        watched.Line(0, 0, 1, 1);
    }
    EXPECT_EQ(target.operations().size(), 3000U);
}

TEST_F(WatchedDrawing, GivenUpAmongTheSignaturesThereAreNoLabels) {
    add_points(2000);
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(session.lbl_pubez_placed.size(), 2000U);
    session.work = &work;
    work.last_call = 1;
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(work.calls, 1);
    EXPECT_TRUE(session.lbl_pubez_placed.empty());
    EXPECT_FALSE(session.lbl_pubez[1].visible);
    EXPECT_FALSE(session.lbl_pubez[2000].visible);
}

TEST_F(WatchedDrawing, GivenUpAmongTheLabelsThereAreNone) {
    add_points(2000);
    session.work = &work;
    work.last_call = 3;  // the third time is behind 2000 signatures and 1072 labels
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(work.calls, 3);
    EXPECT_TRUE(session.lbl_pubez_placed.empty());
    EXPECT_FALSE(session.lbl_pubez[1].visible);
}

TEST_F(WatchedDrawing, GivenUpTheCommandsAreOfferedAndTheNextDrawingIsWhole) {
    add_points(2000);
    session.work = &work;
    work.last_call = 1;
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(ui.pointers.back(), 0);
    EXPECT_TRUE(session.window[ToolButton::lupe_plus].enabled);
    EXPECT_TRUE(session.window[MenuItem::m_torvel_ansicht].enabled);
    session.work = nullptr;
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(session.lbl_pubez_placed.size(), 2000U);
}

}  // namespace
}  // namespace veldra::test
