#include "drawing/display_samples.h"

#include <chrono>

#include <gtest/gtest.h>

#include "describe.h"
#include "fake_measurer.h"

namespace veldra::test {
namespace {

/// A picture of 3000 by 1500 twips. Points of class 1 stand 300 twips from its sides.
class DisplaySamples : public testing::Test {
 protected:
    [[nodiscard]] Lines circles() const { return only(described(target), "Circle"); }
    [[nodiscard]] Lines lines() const { return only(described(target), "Line"); }
    /// Pen of each line, in their order, as "width colour".
    [[nodiscard]] Lines pens() const {
        Lines result;
        std::string width;
        std::string colour;
        for (const std::string& line : described(target)) {
            if (line.rfind("DrawWidth ", 0) == 0) {
                width = line.substr(10);
            } else if (line.rfind("ForeColor ", 0) == 0) {
                colour = line.substr(10);
            } else if (line.rfind("Line", 0) == 0) {
                result.push_back(width + " " + colour);
            }
        }
        return result;
    }

    Session session;
    FakeMeasurer measurer;
    RecordingTarget target;
    SampleSize size{3000, 1500};
};

TEST_F(DisplaySamples, PointsHaveTheRadiiOfTheScreen) {
    session.settings.punsigscr = {50, 40, 30, 20};
    draw_point_sample(session, measurer, target, size, SampleMedium::screen, 0);
    // At 6, 28, 50 and 72 percent of the width, 68 percent of the height.
    EXPECT_EQ(circles(), (Lines{"Circle 180 1020 50", "Circle 840 1020 40", "Circle 1500 1020 30",
                                "Circle 2160 1020 20"}));
}

TEST_F(DisplaySamples, PointsHaveTheRadiiOfThePlotInTheirTrueSize) {
    session.settings.punsigplo = {25.4F, 12.7F, 2.54F, 1.27F};
    draw_point_sample(session, measurer, target, size, SampleMedium::plot, 0);
    // An inch has 1440 twips.
    EXPECT_EQ(circles(), (Lines{"Circle 180 1020 1440", "Circle 840 1020 720",
                                "Circle 1500 1020 144", "Circle 2160 1020 72"}));
}

TEST_F(DisplaySamples, TheLabelOfTheChosenClassStandsAtTheStandardOffset) {
    session.settings.stanplt = 50;
    session.settings.stanptp = 25;
    const PointSample sample =
        draw_point_sample(session, measurer, target, size, SampleMedium::screen, 1);
    // 10 points: a line is 200 twips high, a letter 100 wide.
    EXPECT_EQ(sample.pubez.caption, "1234567890ABCDEF");
    EXPECT_EQ(sample.pubez.left, 840 + 100);
    EXPECT_EQ(sample.pubez.top, 1020 + 50);
    EXPECT_EQ(sample.pubez.width, 1600);
    EXPECT_TRUE(sample.pubez.visible);
    EXPECT_EQ(sample.nubez.caption, "12345678");
    EXPECT_EQ(sample.nubez.width, 800);
}

TEST_F(DisplaySamples, TheDistrictLabelStandsInTheLowerPart) {
    const PointSample sample =
        draw_point_sample(session, measurer, target, size, SampleMedium::screen, 0);
    // Its middle, 200 twips high, at a quarter of the height.
    EXPECT_EQ(sample.nubez.left, 180);
    EXPECT_EQ(sample.nubez.top, 375 + 100);
    EXPECT_EQ(sample.nubez.height, 200);
}

TEST_F(DisplaySamples, OnlyThePointOfTheLastClassIsANewPoint) {
    draw_point_sample(session, measurer, target, size, SampleMedium::screen, 0);
    const std::string blue = fmt::format("FillColor {}", rgb(0, 127, 255));
    const std::string red = fmt::format("FillColor {}", rgb(255, 0, 63));
    Lines colours;  // of the circles, in the order of their classes
    std::string fill;
    for (const std::string& line : described(target)) {
        if (line.rfind("FillColor ", 0) == 0) {
            fill = line;
        } else if (line.rfind("Circle ", 0) == 0) {
            colours.push_back(fill);
        }
    }
    EXPECT_EQ(colours, (Lines{blue, blue, blue, red}));
}

TEST_F(DisplaySamples, LabelsInThePlotHaveTheirHeightOnPaper) {
    session.settings.pubsizplo = 2.54F;
    const PointSample sample =
        draw_point_sample(session, measurer, target, size, SampleMedium::plot, 0);
    // Digits of 2.54 mm (144 twips) stand in lines 1.68 times as high.
    EXPECT_NEAR(static_cast<double>(sample.pubez.height), 144 * 1.68, 0.01);
    EXPECT_NEAR(sample.pubez_font.points, 144 * 1.68 / 20, 0.001);
}

TEST_F(DisplaySamples, TerrestrialDistancesHaveAStrokeOfTheirSize) {
    session.settings.Stquerscr = 400;
    draw_observation_sample(session, measurer, target, size, SampleMedium::screen,
                            ObservationSample::terrestrial);
    const Lines all = lines();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[1], "Line 1500 950 1500 550");
}

TEST_F(DisplaySamples, SatelliteLinesHaveACrossInMillimetresOfPaper) {
    session.settings.Stkreuplo = 25.4;
    draw_observation_sample(session, measurer, target, size, SampleMedium::plot,
                            ObservationSample::satellite);
    const Lines all = lines();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[1], "Line 1860 1470 1140 30");
    EXPECT_EQ(all[2], "Line 1140 1470 1860 30");
}

TEST_F(DisplaySamples, OrientationsHaveTheirLength) {
    session.settings.lenoriscr = 1000;
    session.settings.punsigscr[1] = 0;
    draw_observation_sample(session, measurer, target, size, SampleMedium::screen,
                            ObservationSample::orientation);
    EXPECT_EQ(lines(), (Lines{"Line 300 750 800 750", "Line 800 750 1300 750"}));
}

TEST_F(DisplaySamples, ThePlotMultipliesItsPens) {
    session.settings.faktorStrich = 4;
    draw_observation_sample(session, measurer, target, size, SampleMedium::plot,
                            ObservationSample::terrestrial);
    EXPECT_EQ(pens(), (Lines{"4 0", "4 0", "4 0"}));
}

TEST_F(DisplaySamples, VectorsHaveWidthColourAndScaleOfTheirGroup) {
    session.settings.vektAdrw[2] = 6;
    session.settings.vektArgb[2] = 255;
    session.vektor_massstab[2] = 0.5;
    draw_vector_sample(session, measurer, target, size, 2, true, 2.54);
    EXPECT_EQ(pens(), (Lines{"6 255"}));
    // 2.54 cm at 1:2 are half an inch of paper, 720 twips, from a fifth of the width.
    EXPECT_EQ(lines(), (Lines{"Line 600 750 1320 750"}));
}

TEST_F(DisplaySamples, HeightsStandUpright) {
    session.settings.vektNrgb[5] = 99;
    session.vektor_massstab[5] = 0.25;
    draw_vector_sample(session, measurer, target, size, 5, false, 2.54);
    EXPECT_EQ(pens(), (Lines{"2 99"}));
    EXPECT_EQ(lines(), (Lines{"Line 600 300 600 660"}));
}

TEST_F(DisplaySamples, NegativeHeightsHangDown) {
    session.vektor_massstab[4] = 0.25;
    draw_vector_sample(session, measurer, target, size, 4, true, -2.54);
    EXPECT_EQ(lines(), (Lines{"Line 600 1200 600 840"}));
}

TEST_F(DisplaySamples, VectorsOfWidthZeroAreNotDrawn) {
    session.settings.vektNdrw[4] = 0;
    draw_vector_sample(session, measurer, target, size, 4, false, 1);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(circles().size(), 1U);
}

TEST_F(DisplaySamples, EllipsesAreDrawnAtNewPoints) {
    session.settings.vektNrgb[3] = 1234;
    draw_vector_sample(session, measurer, target, size, 3, true, 1);
    EXPECT_EQ(lines().size(), 200U);
    EXPECT_EQ(pens().front(), "1 1234");
}

TEST_F(DisplaySamples, EachTestClassHasItsPenWhateverTheLimits) {
    Settings& settings = session.settings;
    settings.stevwert = {0, 100};  // no value is above it
    settings.stnvwert = {0, 5, 5, 5};
    settings.stepwert = {0, 5, 5};
    settings.stnddrw = 1;
    settings.stndrgb = 10;
    settings.stevdrw = {0, 2, 3};
    settings.stevrgb = {0, 11, 12};
    settings.stnvdrw = {0, 4, 5, 6, 1};
    settings.stnvrgb = {0, 13, 14, 15, 16};
    settings.stepdrw = {0, 2, 3, 4};
    settings.steprgb = {0, 17, 18, 19};
    const struct {
        std::int16_t statistic;
        std::size_t number;
        const char* pen;
    } classes[] = {{0, 0, "1 10"}, {1, 1, "2 11"}, {1, 2, "3 12"}, {2, 1, "4 13"}, {2, 2, "5 14"},
                   {2, 3, "6 15"}, {2, 4, "1 16"}, {3, 1, "2 17"}, {3, 2, "3 18"}, {3, 3, "4 19"}};
    for (const auto& one : classes) {
        target = RecordingTarget();
        draw_test_sample(session, measurer, target, size, one.statistic, one.number);
        EXPECT_EQ(pens(), (Lines{one.pen, one.pen, one.pen}));
    }
}

TEST_F(DisplaySamples, BoundariesHaveThePenOfTheirLevel) {
    for (std::size_t level = 1; level <= 7; ++level) {
        session.settings.grenzdrw[level] = static_cast<std::int16_t>(level);
        session.settings.grenzrgb[level] = static_cast<std::int32_t>(100 + level);
    }
    for (std::size_t level = 1; level <= 7; ++level) {
        target = RecordingTarget();
        draw_boundary_sample(session, measurer, target, size, level);
        const std::string pen = std::to_string(level) + " " + std::to_string(100 + level);
        EXPECT_EQ(pens(), (Lines{pen, pen, pen, pen}));
    }
}

TEST_F(DisplaySamples, SamplesLeaveTheSessionAlone) {
    draw_point_sample(session, measurer, target, size, SampleMedium::plot, 2);
    draw_vector_sample(session, measurer, target, size, 1, true, 1);
    EXPECT_EQ(session.pu.count(), 0);
    EXPECT_EQ(session.plot.plot_massstab, -99.0);
    EXPECT_TRUE(session.lbl_pubez_placed.empty());
}

TEST_F(DisplaySamples, UnreasonableSizesAreDrawnToo) {
    session.settings.punsigscr = {-5, 0, 3e38F, 1};
    session.settings.pubsizplo = 3e38F;
    session.settings.Stquerscr = 1e300;
    draw_point_sample(session, measurer, target, size, SampleMedium::screen, 2);
    draw_point_sample(session, measurer, target, size, SampleMedium::plot, 2);
    draw_observation_sample(session, measurer, target, size, SampleMedium::screen,
                            ObservationSample::terrestrial);
    EXPECT_EQ(only(described(target), "Circle 180 1020").front(), "Circle 180 1020 -5");
}

}  // namespace
}  // namespace veldra::test
