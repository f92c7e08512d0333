#include "commands/plot_mode.h"

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "recording_interface.h"

namespace veldra {
namespace {

TEST(PlotMode, EachCommandSetsItsModeAndDrawsOnce) {
    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    int drawn = 0;
    Desk desk{measurer, ui, [&drawn] { ++drawn; }};
    Session session;
    plotmodus_ein(session, desk);
    EXPECT_EQ(session.plotmodus, 1);
    EXPECT_EQ(drawn, 1);
    plotmodus_aus(session, desk);
    EXPECT_EQ(session.plotmodus, 0);
    EXPECT_EQ(drawn, 2);
}

}  // namespace
}  // namespace veldra
