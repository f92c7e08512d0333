// The paper that a plot without a printer is drawn for.
#include <gtest/gtest.h>

#include "commands/plot_job.h"
#include "fake_measurer.h"
#include "recording_interface.h"

namespace veldra {
namespace {

TEST(PlotPaperTest, WithoutAPrinterItIsA4TheWayThatThePartLies) {
    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    const Desk desk{measurer, ui, [] {}};
    Session session;
    session.printer.drucker_ok = table_false;
    session.plot.plot_massstab = 0.001;
    session.plot.plot_heftrand = 3;
    // 210 and 297 mm in twips of 25.4/1440 mm.
    constexpr float across = 11905.512F;
    constexpr float up = 16837.795F;
    session.plot.plot_ausrichtung = 1;
    const PlotPaper upright = plot_paper(session, desk);
    EXPECT_EQ(upright.code, 9);
    EXPECT_NEAR(upright.width, across, 0.01F);
    EXPECT_NEAR(upright.height, up, 0.01F);
    EXPECT_LT(upright.printable_width, upright.printable_height);
    session.plot.plot_ausrichtung = 2;
    const PlotPaper lying = plot_paper(session, desk);
    EXPECT_NEAR(lying.width, up, 0.01F);
    EXPECT_NEAR(lying.height, across, 0.01F);
    EXPECT_GT(lying.printable_width, lying.printable_height);
}

}  // namespace
}  // namespace veldra
