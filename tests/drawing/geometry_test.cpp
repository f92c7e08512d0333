#include "drawing/geometry.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace veldra {
namespace {

constexpr TargetBox box{0, 0, 10, 10};

void expect_segment(const Segment& segment, double ax, double ay, double bx, double by) {
    EXPECT_DOUBLE_EQ(segment.ax, ax);
    EXPECT_DOUBLE_EQ(segment.ay, ay);
    EXPECT_DOUBLE_EQ(segment.bx, bx);
    EXPECT_DOUBLE_EQ(segment.by, by);
}

TEST(ClipSegment, BothEndsInside) {
    const ClippedSegment clipped = ClipSegment(box, {1, 2, 3, 4});
    EXPECT_EQ(clipped.result, 4);
    expect_segment(clipped.segment, 1, 2, 3, 4);
}

TEST(ClipSegment, FirstEndCut) {
    const ClippedSegment clipped = ClipSegment(box, {-5, 0, 5, 5});
    EXPECT_EQ(clipped.result, 3);
    expect_segment(clipped.segment, 0, 2.5, 5, 5);
}

TEST(ClipSegment, SecondEndCut) {
    const ClippedSegment clipped = ClipSegment(box, {5, 5, 5, 15});
    EXPECT_EQ(clipped.result, 2);
    expect_segment(clipped.segment, 5, 5, 5, 10);
}

TEST(ClipSegment, BothEndsCut) {
    const ClippedSegment clipped = ClipSegment(box, {-5, 3, 15, 3});
    EXPECT_EQ(clipped.result, 1);
    expect_segment(clipped.segment, 0, 3, 10, 3);
}

TEST(ClipSegment, CutThroughTwoCorners) {
    const ClippedSegment clipped = ClipSegment(box, {-2, -4, 14, 12});
    EXPECT_EQ(clipped.result, 1);
    // y = x - 2.
    expect_segment(clipped.segment, 2, 0, 10, 8);
}

TEST(ClipSegment, EndOnAnEdgeStays) {
    const ClippedSegment clipped = ClipSegment(box, {0, 5, 10, 6});
    EXPECT_EQ(clipped.result, 4);
}

TEST(ClipSegment, BothEndsOnXminAreRejected) {
    EXPECT_EQ(ClipSegment(box, {0, 2, 0, 8}).result, 0);
    EXPECT_EQ(ClipSegment(box, {10, 2, 10, 8}).result, 0);
    EXPECT_EQ(ClipSegment(box, {2, 0, 8, 0}).result, 0);
    EXPECT_EQ(ClipSegment(box, {2, 10, 8, 10}).result, 0);
}

TEST(ClipSegment, SegmentsBesideTheBoxAreRejected) {
    EXPECT_EQ(ClipSegment(box, {-3, 2, -1, 8}).result, 0);
    EXPECT_EQ(ClipSegment(box, {2, 11, 8, 30}).result, 0);
}

TEST(ClipSegment, SegmentPassingACornerIsRejectedAfterTheFirstEndMoved) {
    // y = x + 12 leaves the box below: at x = 0 already 12.
    EXPECT_EQ(ClipSegment(box, {-4, 8, 4, 16}).result, 0);
    // From inside x to the right: the second end is moved to y 10 beyond x 10.
    EXPECT_EQ(ClipSegment(box, {8, 14, 14, 8}).result, 0);
}

TEST(ClipSegment, AlmostVerticalSegmentKeepsItsYWhenXMoves) {
    const ClippedSegment clipped = ClipSegment(box, {-0.0004, 2, 0.0004, 8});
    EXPECT_EQ(clipped.result, 3);
    expect_segment(clipped.segment, 0, 2, 0.0004, 8);
}

TEST(ClipSegment, AlmostHorizontalSegmentKeepsItsXWhenYMoves) {
    const ClippedSegment clipped = ClipSegment(box, {2, 10.0004, 8, 9.9996});
    EXPECT_EQ(clipped.result, 3);
    expect_segment(clipped.segment, 2, 10, 8, 9.9996);
}

void expect_lengthened(const CutLine& line, const TargetBox& window, double pen_width,
                       const CutLine& expected) {
    const CutLine longer = lengthened(line, window, pen_width);
    expect_segment(longer.piece, expected.piece.ax, expected.piece.ay, expected.piece.bx,
                   expected.piece.by);
    EXPECT_DOUBLE_EQ(longer.begun, expected.begun);
    EXPECT_DOUBLE_EQ(longer.rest, expected.rest);
}

TargetBox left_side(double x) {
    TargetBox window = no_sides;
    window.xmin = x;
    return window;
}

TEST(Lengthened, GoesOnToAPensWidthOutside) {
    expect_lengthened({{0, 5, 10, 5}, 100, 0}, left_side(0), 2, {{-2, 5, 10, 5}, 98, 0});
    expect_lengthened({{10, 5, 0, 5}, 0, 100}, left_side(0), 2, {{10, 5, -2, 5}, 0, 98});
    expect_lengthened({{0, 3, 10, 3}, 50, 60}, box, 1, {{-1, 3, 11, 3}, 49, 59});
}

TEST(Lengthened, SlantingLineGoesOnFarther) {
    // 3 across and 4 up: 2 below the lower side are 2.5 along the line.
    TargetBox window = no_sides;
    window.ymin = 0;
    expect_lengthened({{10, 0, 16, 8}, 100, 0}, window, 2, {{8.5, -2, 16, 8}, 97.5, 0});
}

TEST(Lengthened, EndsWhereTheWholeLineDoes) {
    expect_lengthened({{0, 0, 6, 8}, 1, 0}, left_side(0), 2, {{-0.6, -0.8, 6, 8}, 0, 0});
}

TEST(Lengthened, TheFirstSideOnTheWayCounts) {
    // Past (0, 1) the line comes to y = -2 before x = -12.
    TargetBox window{0, 0, no_sides.xmax, no_sides.ymax};
    window.xmin = -10;
    expect_lengthened({{0, 1, 6, 9}, 100, 0}, window, 2, {{-2.25, -2, 6, 9}, 96.25, 0});
}

TEST(Lengthened, StaysWithoutSidesOrDirection) {
    expect_lengthened({{0, 0, 6, 8}, 10, 10}, no_sides, 2, {{0, 0, 6, 8}, 10, 10});
    expect_lengthened({{0, 5, 0, 5}, 10, 10}, left_side(0), 2, {{0, 5, 0, 5}, 10, 10});
}

TEST(VisitOutside, HandsOverWhatIsNotCovered) {
    const auto outside = [](const Segment& whole) {
        std::vector<Segment> parts;
        visit_outside(box, whole, [&parts](const Segment& part) { parts.push_back(part); });
        return parts;
    };
    EXPECT_TRUE(outside({2, 2, 8, 8}).empty());
    ASSERT_EQ(outside({-5, 20, 5, 20}).size(), 1U);
    expect_segment(outside({-5, 20, 5, 20})[0], -5, 20, 5, 20);
    ASSERT_EQ(outside({-5, 4, 5, 4}).size(), 1U);
    expect_segment(outside({-5, 4, 5, 4})[0], -5, 4, 0, 4);
    ASSERT_EQ(outside({5, 4, 5, 40}).size(), 1U);
    expect_segment(outside({5, 4, 5, 40})[0], 5, 10, 5, 40);
    ASSERT_EQ(outside({-5, 4, 15, 4}).size(), 2U);
    expect_segment(outside({-5, 4, 15, 4})[0], -5, 4, 0, 4);
    expect_segment(outside({-5, 4, 15, 4})[1], 10, 4, 15, 4);
}

TEST(CircleTouchesRect, ComparesInclusively) {
    EXPECT_TRUE(CircleTouchesRect(box, 5, 5, 1));
    EXPECT_TRUE(CircleTouchesRect(box, -1, 5, 1));
    EXPECT_TRUE(CircleTouchesRect(box, 11, 5, 1));
    EXPECT_TRUE(CircleTouchesRect(box, 5, -1, 1));
    EXPECT_TRUE(CircleTouchesRect(box, 5, 11, 1));
    EXPECT_FALSE(CircleTouchesRect(box, -1.01, 5, 1));
    EXPECT_FALSE(CircleTouchesRect(box, 11.01, 5, 1));
    EXPECT_FALSE(CircleTouchesRect(box, 5, -1.01, 1));
    EXPECT_FALSE(CircleTouchesRect(box, 5, 11.01, 1));
    // The square around the circle counts.
    EXPECT_TRUE(CircleTouchesRect(box, 10.9, 10.9, 1));
}

class ObservationSegmentTest : public testing::Test {
 protected:
    [[nodiscard]] Segment part(std::int32_t code) const {
        return ObservationSegment(ends, line_vector(ends), code, options);
    }

    // 3-4-5 triangle: length 50.
    LineCoordinates ends{100, 200, 130, 240};
    SegmentOptions options{5, 10, 20, false, false};
};

TEST_F(ObservationSegmentTest, HalvesWithoutTest) {
    for (const std::int32_t code : {1, 11}) {
        expect_segment(part(code), 100, 200, 115, 220);
    }
    for (const std::int32_t code : {2, 12}) {
        expect_segment(part(code), 115, 220, 130, 240);
    }
}

TEST_F(ObservationSegmentTest, ThirdsWithTest) {
    options.tested = true;
    ends = {0, 0, 30, 60};
    expect_segment(part(1), 0, 0, 10, 20);
    expect_segment(part(12), 20, 40, 30, 60);
    expect_segment(part(3), 10, 20, 20, 40);
    expect_segment(part(13), 10, 20, 20, 40);
}

TEST_F(ObservationSegmentTest, PiecesBeginOutsideOfSignatures) {
    options.signatures = true;
    expect_segment(part(1), 103, 204, 115, 220);
    expect_segment(part(12), 115, 220, 124, 232);
    // The middle third does not know of signatures.
    expect_segment(part(3), 110, 200 + 40.0 / 3, 120, 240 - 40.0 / 3);
}

TEST_F(ObservationSegmentTest, StubHasAFixedLength) {
    // 20 along (0.6, 0.8).
    expect_segment(part(8), 100, 200, 106, 208);
    expect_segment(part(9), 106, 208, 112, 216);
    options.signatures = true;
    expect_segment(part(8), 103, 204, 106, 208);
    expect_segment(part(9), 106, 208, 112, 216);
}

TEST_F(ObservationSegmentTest, LineShorterThanTheSignatureCollapsesOutsideOfTheFirstPoint) {
    options.signatures = true;
    options.radius1 = 60;
    options.radius2 = 80;
    expect_segment(part(1), 136, 248, 136, 248);
    expect_segment(part(2), 82, 176, 82, 176);
}

TEST_F(ObservationSegmentTest, LineAsLongAsTheSignatureDoesNotCollapse) {
    options.signatures = true;
    options.radius1 = 50;
    expect_segment(part(1), 130, 240, 115, 220);
    // A length that narrows to the radius is not below it.
    ends.x2 = 130 - 1e-9;
    const Segment nearly = part(1);
    EXPECT_NE(nearly.bx, nearly.ax);
}

TEST_F(ObservationSegmentTest, LineOfNoLengthGivesNoNumbersWithSignatures) {
    options.signatures = true;
    ends = {100, 200, 100, 200};
    EXPECT_TRUE(std::isnan(part(1).ax));
    EXPECT_TRUE(std::isnan(part(8).bx));
    options.signatures = false;
    expect_segment(part(1), 100, 200, 100, 200);
}

class TestPens : public testing::Test {
 protected:
    void expect_pen(std::int16_t obj_test, const TestValues& values, std::int16_t width,
                    std::int32_t colour) {
        const TestPen pen = test_pen(settings, obj_test, values);
        EXPECT_EQ(pen.width, width) << values.ev << ' ' << values.nv << ' ' << values.ep;
        EXPECT_EQ(pen.colour, colour) << values.ev << ' ' << values.nv << ' ' << values.ep;
    }

    Settings settings;
    std::int32_t undefined = rgb(64, 0, 64);
    std::int32_t green = rgb(0, 255, 0);
    std::int32_t yellow = rgb(255, 255, 0);
    std::int32_t orange = rgb(255, 128, 0);
    std::int32_t red = rgb(255, 0, 0);
};

TEST_F(TestPens, DefaultsFallIntoTheUndefinedClass) {
    for (const auto obj_test : std::initializer_list<std::int16_t>{1, 2, 3}) {
        expect_pen(obj_test, {}, 1, undefined);
    }
}

TEST_F(TestPens, EvOnItsLimitBelongsToTheSecondClass) {
    expect_pen(1, {100.1, 0, 0}, 1, undefined);
    expect_pen(1, {100, 0, 0}, 2, green);
    expect_pen(1, {10.1, 0, 0}, 2, green);
    expect_pen(1, {10, 0, 0}, 5, red);
    expect_pen(1, {-3, 0, 0}, 5, red);
}

TEST_F(TestPens, NvOnALimitBelongsToTheLowerClass) {
    expect_pen(2, {0, -0.1, 0}, 1, undefined);
    expect_pen(2, {0, 0, 0}, 2, green);
    expect_pen(2, {0, 1.0, 0}, 2, green);
    expect_pen(2, {0, 1.1, 0}, 3, yellow);
    expect_pen(2, {0, 2.0, 0}, 3, yellow);
    expect_pen(2, {0, 3.3, 0}, 4, orange);
    expect_pen(2, {0, 3.4, 0}, 5, red);
}

TEST_F(TestPens, EpOnALimitBelongsToTheLowerClass) {
    expect_pen(3, {0, 0, -1}, 1, undefined);
    expect_pen(3, {0, 0, 2.0}, 2, green);
    expect_pen(3, {0, 0, 3.0}, 3, yellow);
    expect_pen(3, {0, 0, 3.1}, 5, red);
}

TEST_F(TestPens, FirstLimitThatHoldsCounts) {
    settings.stnvwert = {0, 5, 2, 3};
    expect_pen(2, {0, 4, 0}, 2, green);
}

TEST(SlopeAngle, IsOneForALineAndItsReverse) {
    EXPECT_EQ(SlopeAngle(1, 1), SlopeAngle(-1, -1));
    EXPECT_DOUBLE_EQ(SlopeAngle(1, 1), std::atan(1.0));
    EXPECT_DOUBLE_EQ(SlopeAngle(-1, 1), 6.28318530717959 - std::atan(1.0));
}

TEST(SlopeAngle, AxesHaveFixedValues) {
    EXPECT_EQ(SlopeAngle(5, 0), 6.28318530717959 / 4);
    EXPECT_EQ(SlopeAngle(-5, 0), 18.84955592153877 / 4);
    EXPECT_EQ(SlopeAngle(0, -5), 6.28318530717959 / 2);
    EXPECT_EQ(SlopeAngle(0, 5), 0);
    EXPECT_EQ(SlopeAngle(0, 0), 0);
    EXPECT_EQ(SlopeAngle(5e-11, -5e-11), 6.28318530717959 / 2);
    EXPECT_EQ(SlopeAngle(5, 1e-11), 6.28318530717959 / 4);
}

TEST(SlopeAngle, SmallestMagnitudeIsInclusive) {
    EXPECT_DOUBLE_EQ(SlopeAngle(1e-10, 1e-10), std::atan(1.0));
}

TEST(GreyOf, TakesTheMeanOfTheThreeBytes) {
    EXPECT_EQ(GreyOf(rgb(0, 0, 0)), rgb(0, 0, 0));
    EXPECT_EQ(GreyOf(rgb(255, 255, 255)), rgb(255, 255, 255));
    EXPECT_EQ(GreyOf(rgb(30, 60, 90)), rgb(60, 60, 60));
    EXPECT_EQ(GreyOf(rgb(1, 0, 0)), rgb(0, 0, 0));
    EXPECT_EQ(GreyOf(rgb(1, 1, 0)), rgb(1, 1, 1));
    EXPECT_EQ(GreyOf(rgb(255, 0, 63)), rgb(106, 106, 106));
}

}  // namespace
}  // namespace veldra
