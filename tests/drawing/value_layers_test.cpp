#include "drawing/value_layers.h"

#include <cmath>

#include "drawing/layer_surface.h"
#include "layer_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using test::add_point;
using test::described;
using test::dot_pen;
using test::Lines;
using test::only;
using test::operator+;

constexpr int blue = rgb(0, 128, 255);
constexpr int red = rgb(255, 0, 0);

Lines pen(int width, int colour) {
    return {fmt::format("DrawWidth {}", width), fmt::format("ForeColor {}", colour)};
}

class ValueLayersTest : public test::LayerFixture {
 protected:
    Lines vectors(int kind) {
        DrawVectors(session, frame(), target, kind);
        return described(target);
    }
    Lines residuals(int kind) {
        DrawTestResiduals(session, frame(), target, kind);
        return described(target);
    }
    Lines ellipses() {
        DrawEllipses(session, frame(), target);
        return described(target);
    }
    PointRow& position_value(double rechts, double hoch, std::int16_t state) {
        PointRow& row = add_point(session, 1010, 2020);
        row.pu_wert_lage = state;
        row.pu_wert_rechts = rechts;
        row.pu_wert_hoch = hoch;
        return row;
    }
    PointRow& height_value(double dh, std::int16_t state) {
        PointRow& row = add_point(session, 1010, 2020);
        row.pu_wert_hoehe = state;
        row.pu_wert_dh = dh;
        return row;
    }
};

TEST_F(ValueLayersTest, VectorOfAControlPointTakesItsWidthAndColour) {
    position_value(2, -1, 1);
    EXPECT_EQ(vectors(1), Lines{"DrawStyle 0"} + pen(3, blue) + Lines{"Line 10 20 20 15"});
}

TEST_F(ValueLayersTest, VectorOfANewPointTakesItsWidthAndColour) {
    position_value(2, -1, -2);
    EXPECT_EQ(vectors(2), Lines{"DrawStyle 0"} + pen(2, red) + Lines{"Line 10 20 20 15"});
}

TEST_F(ValueLayersTest, AFurtherEpochWithoutAFirstBeginsAtTheOrigin) {
    position_value(2, -1, 1).pu_epoche = 1;
    // No end has been kept yet: 0, 0 of the ground, whose view begins at 1000, 2000.
    EXPECT_EQ(only(vectors(1), "Line"), Lines{"Line -1000 -2000 20 15"});
}

TEST_F(ValueLayersTest, VectorsOfOtherKindsAreSkipped) {
    position_value(2, -1, 2);
    EXPECT_EQ(vectors(1), Lines{"DrawStyle 0"});
}

TEST_F(ValueLayersTest, StyleIsSetEvenWithoutPoints) {
    EXPECT_EQ(vectors(4), Lines{"DrawStyle 0"});
    target = {};
    EXPECT_EQ(residuals(2), Lines{"DrawStyle 0"});
}

TEST_F(ValueLayersTest, VectorScaleIsThatOfItsKind) {
    session.vektor_massstab[2] = 0.1;  // 1 m for a centimetre
    position_value(2, -1, 2);
    EXPECT_EQ(only(vectors(2), "Line"), Lines{"Line 10 20 12 19"});
}

TEST_F(ValueLayersTest, WidthZeroHidesChangeVectorsOfControlPointsAndTheirDots) {
    session.obj.obj_pusi = 0;
    session.settings.vektAdrw[1] = 0;
    position_value(2, -1, 1);
    position_value(1, 1, -1);
    EXPECT_EQ(vectors(1), Lines{"DrawStyle 0"} + pen(2, red) + Lines{"Line 10 20 15 25"} +
                              dot_pen() + Lines{"Circle 10 20 0.15"});
}

TEST_F(ValueLayersTest, EpochsOfAPointFormOneChainOfThreePieces) {
    session.obj.obj_pusi = 0;
    position_value(1, 0, -1);
    position_value(2, 1, -1).pu_epoche = 1;
    position_value(0, 3, -1).pu_epoche = 2;
    EXPECT_EQ(vectors(1), Lines{"DrawStyle 0"} + pen(2, red) + Lines{"Line 10 20 15 20"} +
                              dot_pen() + Lines{"Circle 10 20 0.15"} + pen(2, red) +
                              Lines{"Line 15 20 20 25"} + pen(2, red) + Lines{"Line 20 25 10 35"});
}

TEST_F(ValueLayersTest, ChainGoesOnOverRowsOfOtherKinds) {
    position_value(1, 0, -1);
    height_value(9, 4);
    position_value(2, 1, -1).pu_epoche = 1;
    EXPECT_EQ(only(vectors(1), "Line"), (Lines{"Line 10 20 15 20", "Line 15 20 20 25"}));
}

TEST_F(ValueLayersTest, NegativeEpochDrawsNothing) {
    position_value(1, 0, -1).pu_epoche = -1;
    EXPECT_EQ(vectors(1), Lines{"DrawStyle 0"});
}

TEST_F(ValueLayersTest, HeightVectorOfTheFirstEpochStandsOnThePoint) {
    height_value(2, -4);
    EXPECT_EQ(only(vectors(4), "Line"), Lines{"Line 10 20 10 30"});
}

TEST_F(ValueLayersTest, LaterEpochsOfAHeightMoveEastMillimetreByMillimetre) {
    height_value(2, 4);
    height_value(-1, 4).pu_epoche = 1;
    height_value(0, 4).pu_epoche = 2;
    EXPECT_EQ(only(vectors(4), "Line"),
              (Lines{"Line 10 20 10 30", "Line 10 30 11 15", "Line 11 15 12 20"}));
}

TEST_F(ValueLayersTest, HeightErrorsTakeTheWidthOfNewPoints) {
    height_value(2, -6);
    EXPECT_EQ(vectors(6), Lines{"DrawStyle 0"} + pen(3, rgb(0, 64, 0)) + Lines{"Line 10 20 10 30"});
}

TEST_F(ValueLayersTest, KindOutOfRangeIsARangeError) {
    EXPECT_THROW(vectors(0), FatalError);
    EXPECT_THROW(vectors(7), FatalError);
}

TEST_F(ValueLayersTest, TestedResidualColoursItsComponents) {
    session.obj.obj_test = 2;
    PointRow& row = position_value(2, -1, 2);
    row.pu_nv_lage = 0.5;   // class 1
    row.pu_nv_hoehe = 2.5;  // class 3
    EXPECT_EQ(residuals(2), Lines{"DrawStyle 0"} + pen(1, 0) + Lines{"Line 10 20 20 15"} +
                                Lines{"DrawStyle 0"} + pen(2, rgb(0, 255, 0)) +
                                Lines{"Line 10 20 20 20"} + Lines{"DrawStyle 0"} +
                                pen(4, rgb(255, 128, 0)) + Lines{"Line 20 20 20 15"});
}

TEST_F(ValueLayersTest, TestedResidualOfANewPointIsItsResultantOnly) {
    session.obj.obj_pusi = 0;
    position_value(2, -1, -2);
    EXPECT_EQ(residuals(2), Lines{"DrawStyle 0"} + pen(1, 0) + Lines{"Line 10 20 20 15"} +
                                dot_pen() + Lines{"Circle 10 20 0.15"});
}

TEST_F(ValueLayersTest, TestedHeightResidualTakesTheFirstSetOfTestValues) {
    session.obj.obj_test = 1;
    PointRow& row = height_value(2, 5);
    row.pu_ev_lage = 5;    // class 2
    row.pu_ev_hoehe = 50;  // not looked at
    row.pu_epoche = 4;     // no offset in this layer
    EXPECT_EQ(residuals(5), Lines{"DrawStyle 0"} + Lines{"DrawStyle 0"} + pen(5, red) +
                                Lines{"Line 10 20 10 30"});
}

TEST_F(ValueLayersTest, TestedHeightResidualOfANewPointIsThinAndBlack) {
    height_value(-2, -5);
    EXPECT_EQ(residuals(5), Lines{"DrawStyle 0"} + pen(1, 0) + Lines{"Line 10 20 10 10"});
}

TEST_F(ValueLayersTest, ComponentsWithoutTestValuesAreOfTheUndefinedClass) {
    position_value(2, -1, 2);
    EXPECT_EQ(only(residuals(2), "ForeColor"),
              (Lines{"ForeColor 0", fmt::format("ForeColor {}", rgb(64, 0, 64)),
                     fmt::format("ForeColor {}", rgb(64, 0, 64))}));
}

TEST_F(ValueLayersTest, SwitchedOffGroupHasNoTestedResiduals) {
    session.settings.vektAdrw[2] = 0;
    position_value(2, -1, 2);
    EXPECT_EQ(residuals(2), Lines{"DrawStyle 0"});
}

TEST_F(ValueLayersTest, EllipseIsTracedByTwoHundredLines) {
    session.obj.obj_pusi = 0;
    position_value(4, 1, -3).pu_wert_dh = 100;
    const Lines lines = ellipses();
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 3),
              pen(1, rgb(128, 64, 0)) + Lines{"DrawStyle 0"});
    EXPECT_EQ(only(lines, "Line").size(), 200U);
    EXPECT_EQ(Lines(lines.end() - 5, lines.end()), dot_pen() + Lines{"Circle 10 20 0.15"});
}

TEST_F(ValueLayersTest, EllipsesOfControlPointsAreNotDrawn) {
    position_value(4, 1, 3);
    EXPECT_EQ(ellipses(), Lines{});
}

TEST_F(ValueLayersTest, EllipsesWithAWidthBelowOneAreSwitchedOff) {
    session.obj.obj_pusi = 0;
    session.settings.vektNdrw[3] = 0;
    position_value(4, 1, -3);
    EXPECT_EQ(ellipses(), Lines{});
}

class ErrorEllipseTest : public test::LayerFixture {
 protected:
    /// The lines of an ellipse around the view's corner (1000, 2000).
    std::vector<operation::Line> trace(double a, double b, double t) {
        const LayerFrame view = frame();
        LayerSurface surface(view, target);
        DrawErrorEllipse(surface, 1000, 2000, a, b, t);
        std::vector<operation::Line> lines;
        for (const Operation& op : target.operations()) {
            lines.push_back(std::get<operation::Line>(op));
        }
        return lines;
    }
};

TEST_F(ErrorEllipseTest, FourBranchesAdvanceTogether) {
    const std::vector<operation::Line> lines = trace(20, 5, 0);
    ASSERT_EQ(lines.size(), 200U);
    // a points north: branches 0 and 1 start at its northern end, 2 and 3 at the southern one.
    for (const std::size_t k : {0U, 1U}) {
        EXPECT_NEAR(lines[k].x1, 0, 1e-6);
        EXPECT_NEAR(lines[k].y1, 20, 1e-6);
    }
    for (const std::size_t k : {2U, 3U}) {
        EXPECT_NEAR(lines[k].y1, -20, 1e-6);
    }
    // After one step of 3.6 degrees: U = 20 cos, V = 5 sin; q0 = (-V, U), q1 = (V, U).
    const double angle = std::acos(-1.0) / 50;
    EXPECT_NEAR(lines[0].x2, -5 * std::sin(angle), 1e-6);
    EXPECT_NEAR(lines[0].y2, 20 * std::cos(angle), 1e-5);
    EXPECT_NEAR(lines[1].x2, 5 * std::sin(angle), 1e-6);
    EXPECT_NEAR(lines[2].x2, -5 * std::sin(angle), 1e-6);
    EXPECT_NEAR(lines[2].y2, -20 * std::cos(angle), 1e-5);
    EXPECT_NEAR(lines[3].x2, 5 * std::sin(angle), 1e-6);
    // Each branch goes on where it was.
    for (std::size_t i = 4; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].x1, lines[i - 4].x2) << i;
        EXPECT_EQ(lines[i].y1, lines[i - 4].y2) << i;
    }
    // And ends at the other end of the axis.
    EXPECT_NEAR(lines[196].y2, -20, 1e-5);
    EXPECT_NEAR(lines[199].y2, 20, 1e-5);
}

TEST_F(ErrorEllipseTest, EqualAxesGiveACircleWhateverTheAzimuth) {
    for (const double t : {0.0, 33.0, 150.0, 399.0}) {
        target = {};
        for (const operation::Line& line : trace(7, 7, t)) {
            EXPECT_NEAR(std::hypot(line.x2, line.y2), 7, 1e-5) << t;
        }
    }
}

TEST_F(ErrorEllipseTest, HundredGonLayTheLongAxisToTheEast) {
    float widest = 0;
    float highest = 0;
    for (const operation::Line& line : trace(20, 5, 100)) {
        widest = std::max(widest, line.x2);
        highest = std::max(highest, line.y2);
    }
    EXPECT_NEAR(widest, 20, 1e-4);
    EXPECT_NEAR(highest, 5, 1e-4);
}

TEST_F(ErrorEllipseTest, PointsLieOnTheTurnedEllipse) {
    const double t = 50;
    const double s = std::sqrt(0.5);
    for (const operation::Line& line : trace(20, 5, t)) {
        const double along = line.x2 * s + line.y2 * s;
        const double across = line.x2 * s - line.y2 * s;
        EXPECT_NEAR(along * along / 400 + across * across / 25, 1, 1e-5);
    }
}

TEST_F(ErrorEllipseTest, WindowClipsTheTrace) {
    LayerFrame sheet = frame();
    sheet.window = TargetBox{1000, 1900, 1100, 2100};
    LayerSurface surface(sheet, target);
    DrawErrorEllipse(surface, 1000, 2000, 20, 5, 0);
    ASSERT_EQ(target.operations().size(), 100U);
    for (const Operation& op : target.operations()) {
        EXPECT_GE(std::get<operation::Line>(op).x1, 0);
        EXPECT_GE(std::get<operation::Line>(op).x2, 0);
    }
}

/// Takes ellipses as they are.
class EllipseTaker final : public DrawingTarget {
 public:
    void DrawStyle(std::int16_t /*style*/) override {}
    void DrawWidth(std::int16_t /*width*/) override {}
    void ForeColor(std::int32_t /*colour*/) override {}
    void FillStyle(std::int16_t /*style*/) override {}
    void FillColor(std::int32_t /*colour*/) override {}
    void Line(float /*x1*/, float /*y1*/, float /*x2*/, float /*y2*/) override { ++lines; }
    void Circle(float /*x*/, float /*y*/, float /*radius*/) override {}
    void Ellipse(const EllipseCurve& /*curve*/) override { ++whole; }
    bool EllipsePart(const EllipseCurve& /*curve*/, const TargetBox& window) override {
        windows.push_back(window);
        return true;
    }
    void TextRotated(std::string_view /*text*/, std::int32_t /*escapement*/, std::int32_t /*align*/,
                     const FontSpec& /*font*/) override {}
    void LabelPlaced(LabelArray /*array*/, std::int32_t /*index*/, const Label& /*label*/,
                     const FontSpec& /*font*/, std::int32_t /*colour*/) override {}

    int lines = 0;
    int whole = 0;
    std::vector<TargetBox> windows;
};

/// An ellipse on a sheet of 100 by 200 m with its corner at (1000, 1900).
EllipseTaker taken_on_sheet(LayerFrame sheet, double x, double y, double a, double b, double t) {
    sheet.window = TargetBox{1000, 1900, 1100, 2100};
    EllipseTaker taker;
    LayerSurface surface(sheet, taker);
    DrawErrorEllipse(surface, x, y, a, b, t);
    EXPECT_EQ(taker.lines, 0);
    return taker;
}

TEST_F(ErrorEllipseTest, WindowHasTheSidesThatCut) {
    // The a axis of 20 m points to the north, the origin is (1000, 2000).
    const double none = no_sides.xmax;
    const auto window = [&](double x, double y) {
        const EllipseTaker taken = taken_on_sheet(frame(), x, y, 20, 5, 0);
        EXPECT_EQ(taken.whole, 0);
        EXPECT_EQ(taken.windows.size(), 1U);
        const TargetBox sides = taken.windows.empty() ? TargetBox() : taken.windows[0];
        return std::array{sides.xmin, sides.ymin, sides.xmax, sides.ymax};
    };
    EXPECT_EQ(window(1004, 2000), (std::array{0.0, -none, none, none}));
    EXPECT_EQ(window(1050, 1919), (std::array{-none, -100.0, none, none}));
    EXPECT_EQ(window(1097, 2090), (std::array{-none, -none, 100.0, 100.0}));
}

TEST_F(ErrorEllipseTest, WholeInsideOfTheWindow) {
    EXPECT_EQ(taken_on_sheet(frame(), 1006, 2000, 20, 5, 0).whole, 1);
    // Turned by 50 gon a line of 5 m reaches 3.54 m to the west.
    EXPECT_EQ(taken_on_sheet(frame(), 1003.6, 2000, 5, 0, 50).whole, 1);
    EXPECT_EQ(taken_on_sheet(frame(), 1003.5, 2000, 5, 0, 50).windows.size(), 1U);
}

TEST_F(ErrorEllipseTest, NothingOfWhatDoesNotComeIntoTheWindow) {
    const auto nothing = [&](double x, double y, double a, double b) {
        const EllipseTaker taken = taken_on_sheet(frame(), x, y, a, b, 0);
        return taken.whole == 0 && taken.windows.empty();
    };
    EXPECT_TRUE(nothing(994, 2000, 20, 5));
    // The corner (1000, 1900) is 8 * sqrt(2) = 11.3 m from the one centre and 9.9 from the other.
    EXPECT_TRUE(nothing(992, 1892, 10, 10));
    EXPECT_FALSE(nothing(993, 1893, 10, 10));
    // The sheet lies within the curve.
    EXPECT_TRUE(nothing(1050, 2000, 150, 150));
}

TEST_F(ErrorEllipseTest, EllipseBeyondAllNumbersHandsNothingOver) {
    EXPECT_TRUE(trace(1e300, 1e300, 50).empty());
}

}  // namespace
}  // namespace veldra
