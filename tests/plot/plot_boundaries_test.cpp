#include <chrono>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "drawing/boundaries.h"
#include "fake_measurer.h"
#include "network_builder.h"
#include "plot/paper_frame.h"
#include "plot/plot_layers.h"
#include "recorded_page.h"
#include "temp_file.h"

namespace veldra {
namespace {

using test::RecordedPage;
using testing_support::TempFolder;

/// A sheet of 200 by 280 mm at 1:1000 in DHDN with its corner at 2570000, 5620000: a metre of
/// ground is a millimetre of paper. The page begins 15 mm left of the sheet and 0.5 mm above it;
/// its pixels are 0.1 mm. The legend covers 50 by 50 m in the lower right corner.
class PlotBoundariesTest : public testing::Test {
 protected:
    PlotBoundariesTest() {
        test::show_nothing(session);
        session.settings.verw_datum = {};
        session.settings.grenzdrw = {0, 4, 3, 2, 1, 1, 1, 1};
        session.settings.grenzrgb = {0, rgb(30, 60, 90), 2, 3, 4, 5, 6, 7};
        session.settings.faktorStrich = 2;
        session.plot.plot_massstab = 0.001;
        session.plot.plot_legendenlage = 4;
        session.blatt = {2570000, 5620000, 2570200, 5620280};
        session.extents = {2570000, 5620000, 2570200, 5620280, 0, 0};
        session.legende = {2570150, 5620000, 2570200, 5620050};
        session.obj.obj_bezu = 1;
        session.obj.obj_bezu_elli = 1;
        session.obj.obj_bezu_abbi = 1;
        session.obj.obj_verw = 7;
    }

    void use_file(std::string_view bytes) {
        session.settings.verw_datei = folder.file("grenzen.dat", bytes);
        std::filesystem::last_write_time(
            session.settings.verw_datei,
            std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    }
    /// A boundary of the first level through places relative to the sheet's corner.
    void use_line(const std::vector<std::pair<double, double>>& places) {
        std::string text = "@ 1 Land x LND\r\n";
        for (const auto& [x, y] : places) {
            text += fmt::format("{} {:.3f} {:.3f}\r\n", &places.front().first == &x ? 2 : 1,
                                2570000 + x, 5620000 + y);
        }
        use_file(text);
    }
    static std::vector<test::page::Polygon> strips(const RecordedPage& page) {
        return page.all<test::page::Polygon>();
    }
    RecordedPage plot() {
        RecordedPage page({}, 0.1);
        PlotBoundaries(session, paper_frame(session, {10, 10}, measurer), page, 2570000 - 15,
                       5620280 + 0.5);
        return page;
    }
    /// Ends of the strips' axes, relative to the sheet's corner, "x y x y" in metres.
    std::vector<std::string> axes() {
        std::vector<std::string> found;
        for (const test::page::Polygon& strip : strips(plot())) {
            const auto& c = strip.corners;
            const auto x = [](double on_page) { return std::round((on_page - 15) * 100) / 100; };
            const auto y = [](double on_page) { return std::round((280.5 - on_page) * 100) / 100; };
            found.push_back(fmt::format("{} {} {} {}", x((c[0].x + c[3].x) / 2),
                                        y((c[0].y + c[3].y) / 2), x((c[1].x + c[2].x) / 2),
                                        y((c[1].y + c[2].y) / 2)));
        }
        return found;
    }

    TempFolder folder;
    Session session;
    test::FakeMeasurer measurer;
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PlotBoundariesTest, SegmentIsARectangleOfThePensTrueWidth) {
    // Four pixels of 0.1 mm, twice as wide: 0.8 m of ground. From (10, 10) by (30, 40), 50 m long:
    // half the width across is (-0.4 * 40/50, 0.4 * 30/50) = (-0.32, 0.24).
    use_line({{10, 10}, {40, 50}});
    const RecordedPage page = plot();
    ASSERT_EQ(strips(page).size(), 1U);
    const std::vector<PagePoint> corners = strips(page)[0].corners;
    const std::vector<PagePoint> expected{{15 + 9.68, 280.5 - 10.24},
                                          {15 + 39.68, 280.5 - 50.24},
                                          {15 + 40.32, 280.5 - 49.76},
                                          {15 + 10.32, 280.5 - 9.76}};
    ASSERT_EQ(corners.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(corners[i].x, expected[i].x, 1e-4) << i;
        EXPECT_NEAR(corners[i].y, expected[i].y, 1e-4) << i;
    }
    EXPECT_THAT(page.all<operation::Line>(), IsEmpty());
}

TEST_F(PlotBoundariesTest, WidthFollowsTheLevelAndThePixel) {
    use_file(
        "@ 1 Land x LND\r\n2 2570010 5620100\r\n1 2570090 5620100\r\n"
        "@ 2 Bezirk x RBZ\r\n2 2570010 5620120\r\n1 2570090 5620120\r\n");
    RecordedPage page({}, 0.25);
    session.settings.faktorStrich = 1;
    PlotBoundaries(session, paper_frame(session, {10, 10}, measurer), page, 2570000, 5620280);
    ASSERT_EQ(strips(page).size(), 2U);
    const auto height = [&page](std::size_t i) {
        return strips(page)[i].corners[3].y - strips(page)[i].corners[0].y;
    };
    EXPECT_NEAR(height(0), 1.0, 1e-4);   // 4 * 0.25 mm
    EXPECT_NEAR(height(1), 0.75, 1e-4);  // 3 * 0.25 mm
    EXPECT_EQ(strips(page)[1].colour, 2);
}

TEST_F(PlotBoundariesTest, EndsFlushWithTheSheet) {
    use_line({{-50, 100}, {50, 100}, {50, 300}});
    EXPECT_THAT(axes(), ElementsAre("0 100 50 100", "50 100 50 280"));
}

TEST_F(PlotBoundariesTest, WhatLiesOutsideOfTheSheetIsLeftOut) {
    use_line({{-50, 100}, {-10, 100}, {-10, 300}, {100, 300}});
    EXPECT_THAT(axes(), IsEmpty());
}

TEST_F(PlotBoundariesTest, SegmentBeneathTheLegendIsLeftOut) {
    use_line({{160, 10}, {190, 40}});
    EXPECT_THAT(axes(), IsEmpty());
}

TEST_F(PlotBoundariesTest, SegmentThatLeavesTheLegendBeginsAtItsEdge) {
    use_line({{160, 20}, {100, 20}});
    EXPECT_THAT(axes(), ElementsAre("150 20 100 20"));
}

TEST_F(PlotBoundariesTest, SegmentThatEntersTheLegendEndsAtItsEdge) {
    use_line({{100, 20}, {160, 20}});
    EXPECT_THAT(axes(), ElementsAre("100 20 150 20"));
}

TEST_F(PlotBoundariesTest, SegmentThatCrossesTheLegendStaysWhole) {
    // It enters at (150, 30) and leaves at (160, 50).
    use_line({{140, 10}, {170, 70}});
    EXPECT_THAT(axes(), ElementsAre("140 10 170 70"));
}

TEST_F(PlotBoundariesTest, SheetAndLegendClipOneSegment) {
    use_line({{-20, 20}, {160, 20}});
    EXPECT_THAT(axes(), ElementsAre("0 20 150 20"));
}

TEST_F(PlotBoundariesTest, WithoutALegendNothingIsCovered) {
    session.plot.plot_legendenlage = 0;
    use_line({{160, 10}, {190, 40}});
    EXPECT_THAT(axes(), ElementsAre("160 10 190 40"));
}

TEST_F(PlotBoundariesTest, SegmentOfNoLengthDrawsNothing) {
    use_line({{20, 20}, {20, 20}, {30, 20}});
    EXPECT_THAT(axes(), ElementsAre("20 20 30 20"));
}

TEST_F(PlotBoundariesTest, GreyUnlessThePrinterHasColour) {
    use_line({{20, 20}, {30, 20}});
    session.printer.drucker_farbe = 2;
    EXPECT_EQ(strips(plot()).at(0).colour, rgb(30, 60, 90));
    session.printer.drucker_farbe = 1;
    EXPECT_EQ(strips(plot()).at(0).colour, rgb(60, 60, 60));
}

TEST_F(PlotBoundariesTest, LineWithoutABeginningComesFromTheSheetsCorner) {
    use_file("@ 1 Land x LND\r\n1 2570030 5620040\r\n");
    EXPECT_THAT(axes(), ElementsAre("0 0 30 40"));
}

TEST_F(PlotBoundariesTest, LocalSystemAndMissingFileDrawNothing) {
    use_line({{20, 20}, {30, 20}});
    session.obj.obj_bezu = 0;
    EXPECT_THAT(axes(), IsEmpty());
    session.obj.obj_bezu = 1;
    session.settings.verw_datei += ".fehlt";
    EXPECT_THAT(axes(), IsEmpty());
}

TEST_F(PlotBoundariesTest, TheSheetsOfAJobShareOneReading) {
    use_line({{20, 20}, {30, 20}});
    plot();
    const PlanePoint* const vertices = boundary_cache(session).lines.vertices.data();
    for (int sheet = 0; sheet < 30; ++sheet) {
        session.blatt = {2570000.0 + sheet, 5620000, 2570200.0 + sheet, 5620280};
        ASSERT_EQ(strips(plot()).size(), 1U);
        ASSERT_EQ(boundary_cache(session).lines.vertices.data(), vertices);
    }
}

}  // namespace
}  // namespace veldra
