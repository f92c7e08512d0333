#include "drawing/observation_layers.h"

#include "drawing/layer_surface.h"
#include "layer_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using test::add_line;
using test::described;
using test::dot_pen;
using test::Lines;
using test::only;
using test::operator+;

class ObservationLayersTest : public test::LayerFixture {
 protected:
    Lines plain(ObservationForm form = ObservationForm::horizontal) {
        DrawObservations(session, frame(), target, form);
        return described(target);
    }
    Lines tested(ObservationForm form = ObservationForm::horizontal) {
        session.obj.obj_test_beob = table_true;
        DrawTestObservations(session, frame(), target, form);
        return described(target);
    }
    Lines orientations() {
        DrawOrientations(session, frame(), target);
        return described(target);
    }
};

Lines pen(int style, int width, int colour) {
    return {fmt::format("DrawStyle {}", style), fmt::format("DrawWidth {}", width),
            fmt::format("ForeColor {}", colour)};
}

TEST_F(ObservationLayersTest, ObservationWithoutTypesDrawsTwoDottedHalves) {
    add_line(session, {1000, 2000, 1100, 2000});
    EXPECT_EQ(plain(), pen(2, 1, 0) + Lines{"Line 0.15 0 50 0"} + pen(2, 1, 0) +
                           Lines{"Line 50 0 99.85 0"} + Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, BackwardDirectionAloneDrawsDottedFirstAndSolidSecondHalf) {
    add_line(session, {1000, 2000, 1000, 2100}).lin_typ_rueck = 11;
    EXPECT_EQ(plain(), pen(2, 1, 0) + Lines{"Line 0 0.15 0 50"} + pen(0, 1, 0) +
                           Lines{"Line 0 50 0 99.85"} + Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, TerrestrialDistanceDrawsAStrokeAcross) {
    LineRow& row = add_line(session, {1000, 2000, 1100, 2000});
    row.lin_typ_hin = 11;
    row.lin_typ_seite = 1;
    // n points north; 2 m long.
    EXPECT_EQ(plain(), pen(0, 1, 0) + Lines{"Line 0.15 0 50 0"} + pen(0, 1, 0) +
                           Lines{"Line 50 1 50 -1"} + pen(2, 1, 0) + Lines{"Line 50 0 99.85 0"} +
                           Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, SatelliteDistanceDrawsACross) {
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 2;
    EXPECT_EQ(only(plain(), "Line"), (Lines{"Line 0.15 0 50 0", "Line 50.5 1 49.5 -1",
                                            "Line 49.5 1 50.5 -1", "Line 50 0 99.85 0"}));
}

TEST_F(ObservationLayersTest, StrokesTurnWithTheLine) {
    // Along (0.6, 0.8), n = (-0.8, 0.6); middle (30, 40).
    add_line(session, {1000, 2000, 1060, 2080}).lin_typ_seite = 1;
    EXPECT_EQ(only(plain(), "Line")[1], "Line 29.2 40.6 30.8 39.4");
}

TEST_F(ObservationLayersTest, SignaturesShortenBothEndsByTheirClass) {
    LineRow& row = add_line(session, {1000, 2000, 1100, 2000});
    row.lin_klasse_von = 0;
    row.lin_klasse_nach = 2;
    EXPECT_EQ(only(plain(), "Line"), (Lines{"Line 0.6 0 50 0", "Line 50 0 99.7 0"}));
}

TEST_F(ObservationLayersTest, ClassOutOfRangeIsARangeError) {
    add_line(session, {1000, 2000, 1100, 2000}).lin_klasse_nach = -1;
    EXPECT_THROW(plain(), FatalError);
}

TEST_F(ObservationLayersTest, EndsGetDotsWithoutSignatures) {
    session.obj.obj_pusi = 0;
    add_line(session, {1000, 2000, 1100, 2000});
    EXPECT_EQ(plain(), pen(2, 1, 0) + Lines{"Line 0 0 50 0"} + pen(2, 1, 0) +
                           Lines{"Line 50 0 100 0"} + dot_pen() +
                           (Lines{"Circle 0 0 0.15", "Circle 100 0 0.15"}) + Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, HorizontalFormLeavesOrientationsOut) {
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 10;
    EXPECT_EQ(plain(), Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, HeightFormSkipsNothing) {
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 10;
    EXPECT_EQ(only(plain(ObservationForm::height_and_gps), "Line").size(), 2U);
}

TEST_F(ObservationLayersTest, SevenDigitCoordinatesSurviveTheNarrowing) {
    session.view.ansicht_rw_min = 32500000;
    session.view.ansicht_hw_min = 5700000;
    session.obj.obj_pusi = 0;
    add_line(session, {32500001.25, 5700002.5, 32500003.25, 5700002.75});
    EXPECT_EQ(only(plain(), "Line"),
              (Lines{"Line 1.25 2.5 2.25 2.625", "Line 2.25 2.625 3.25 2.75"}));
}

TEST_F(ObservationLayersTest, TestedObservationDrawsThirdsInTheirClasses) {
    LineRow& row = add_line(session, {1000, 2000, 1090, 2000});
    row.lin_typ_hin = 11;
    row.lin_ev_hin = 50;  // class 1
    row.lin_typ_seite = 1;
    row.lin_ev_seite = 3;  // class 2
    row.lin_typ_rueck = 11;
    // No value: the undefined class.
    EXPECT_EQ(tested(), pen(0, 2, rgb(0, 255, 0)) + Lines{"Line 0.15 0 30 0"} +
                            pen(0, 5, rgb(255, 0, 0)) + Lines{"Line 30 0 60 0"} +
                            pen(0, 1, rgb(64, 0, 64)) + Lines{"Line 60 0 89.85 0"});
}

TEST_F(ObservationLayersTest, ThirdWithoutTypeIsDottedBlackAndThin) {
    LineRow& row = add_line(session, {1000, 2000, 1090, 2000});
    row.lin_typ_hin = 11;
    row.lin_ev_hin = 50;
    EXPECT_EQ(tested(), pen(0, 2, rgb(0, 255, 0)) + Lines{"Line 0.15 0 30 0"} + pen(2, 1, 0) +
                            Lines{"Line 30 0 60 0"} + pen(2, 1, 0) + Lines{"Line 60 0 89.85 0"});
}

TEST_F(ObservationLayersTest, ThirdWithNegativeTypeKeepsThePenOfThePieceBefore) {
    LineRow& row = add_line(session, {1000, 2000, 1090, 2000});
    row.lin_typ_hin = 11;
    row.lin_ev_hin = 50;
    row.lin_typ_seite = -1;
    row.lin_typ_rueck = -1;
    EXPECT_EQ(tested(), pen(0, 2, rgb(0, 255, 0)) +
                            (Lines{"Line 0.15 0 30 0", "Line 30 0 60 0", "Line 60 0 89.85 0"}));
}

TEST_F(ObservationLayersTest, TestByNvAndEpTakesTheirValues) {
    LineRow& row = add_line(session, {1000, 2000, 1090, 2000});
    row.lin_typ_hin = 12;
    row.lin_nv_hin = 2;
    row.lin_ep_hin = 4;
    session.obj.obj_test = 2;
    EXPECT_EQ(tested()[1], "DrawWidth 3");
    target = {};
    session.obj.obj_test = 3;
    EXPECT_EQ(tested()[1], "DrawWidth 5");
}

TEST_F(ObservationLayersTest, ValuesOnTheLimitsBelongToTheClassBelow) {
    Settings& settings = session.settings;
    settings.stnddrw = 11;
    settings.stevdrw = {0, 21, 22};
    settings.stnvdrw = {0, 31, 32, 33, 34};
    settings.stepdrw = {0, 41, 42, 43};
    LineRow& row = add_line(session, {1000, 2000, 1090, 2000});
    row.lin_typ_hin = 11;
    const auto width = [&](std::int16_t test, double value) {
        session.obj.obj_test = test;
        row.lin_ev_hin = row.lin_nv_hin = row.lin_ep_hin = value;
        target = {};
        return tested()[1];
    };
    // EV: limit 10.0, and none above 100.
    EXPECT_EQ(width(1, 9.9), "DrawWidth 22");
    EXPECT_EQ(width(1, 10.0), "DrawWidth 22");
    EXPECT_EQ(width(1, 10.1), "DrawWidth 21");
    EXPECT_EQ(width(1, 100.0), "DrawWidth 21");
    EXPECT_EQ(width(1, 100.1), "DrawWidth 11");
    // NV: 1.0, 2.0 and 3.3, and none below 0.
    EXPECT_EQ(width(2, -0.1), "DrawWidth 11");
    EXPECT_EQ(width(2, 0.0), "DrawWidth 31");
    EXPECT_EQ(width(2, 1.0), "DrawWidth 31");
    EXPECT_EQ(width(2, 1.1), "DrawWidth 32");
    EXPECT_EQ(width(2, 2.0), "DrawWidth 32");
    EXPECT_EQ(width(2, 2.1), "DrawWidth 33");
    EXPECT_EQ(width(2, 3.3), "DrawWidth 33");
    EXPECT_EQ(width(2, 3.4), "DrawWidth 34");
    // EP: 2.0 and 3.0, and none below 0.
    EXPECT_EQ(width(3, -0.1), "DrawWidth 11");
    EXPECT_EQ(width(3, 0.0), "DrawWidth 41");
    EXPECT_EQ(width(3, 2.0), "DrawWidth 41");
    EXPECT_EQ(width(3, 2.1), "DrawWidth 42");
    EXPECT_EQ(width(3, 3.0), "DrawWidth 42");
    EXPECT_EQ(width(3, 3.1), "DrawWidth 43");
}

TEST_F(ObservationLayersTest, TestedObservationHasNoStrokeAndGetsDots) {
    session.obj.obj_pusi = 0;
    add_line(session, {1000, 2000, 1090, 2000}).lin_typ_seite = 1;
    const Lines lines = tested(ObservationForm::height_and_gps);
    EXPECT_EQ(only(lines, "Line").size(), 3U);
    EXPECT_EQ(only(lines, "Circle"), (Lines{"Circle 0 0 0.15", "Circle 90 0 0.15"}));
}

TEST_F(ObservationLayersTest, OrientationDrawsSolidAndDottedHalfAndItsName) {
    session.settings.punsigscr[3] = 50;
    LineRow& row = add_line(session, {1000, 2000, 1600, 2800});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set(" Turm ");
    // 20 m along (0.6, 0.8); 53.13 degrees.
    EXPECT_EQ(orientations(), pen(0, 1, 0) + Lines{"Line 0.3 0.4 6 8"} + pen(2, 1, 0) +
                                  Lines{"Line 6 8 12 16"} + Lines{"TextRotated 'Turm' 531 11"} +
                                  Lines{"DrawStyle 0"});
    const auto& text = std::get<operation::TextRotated>(target.operations()[8]);
    EXPECT_EQ(text.font, (FontSpec{"Arial", 10, 0, 0, 0}));
}

TEST_F(ObservationLayersTest, WestwardOrientationReadsFromItsTip) {
    LineRow& row = add_line(session, {1000, 2000, 400, 1200});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("Turm");
    const Lines lines = orientations();
    EXPECT_EQ(only(lines, "Line")[1], "Line -6 -8 -12 -16");
    EXPECT_EQ(only(lines, "TextRotated"), Lines{"TextRotated 'Turm' 531 9"});
}

TEST_F(ObservationLayersTest, OrientationExactlyNorthTakesAlignment11AndEscapement900) {
    LineRow& row = add_line(session, {1000, 2000, 1000, 2800});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("Turm");
    EXPECT_EQ(only(orientations(), "TextRotated"), Lines{"TextRotated 'Turm' 900 11"});
}

TEST_F(ObservationLayersTest, OrientationExactlySouthTakesEscapement2700) {
    LineRow& row = add_line(session, {1000, 2000, 1000, 1200});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("Turm");
    EXPECT_EQ(only(orientations(), "TextRotated"), Lines{"TextRotated 'Turm' 2700 11"});
}

TEST_F(ObservationLayersTest, SoutheastwardOrientationTurnsClockwise) {
    LineRow& row = add_line(session, {1000, 2000, 1300, 1700});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("Turm");
    EXPECT_EQ(only(orientations(), "TextRotated"), Lines{"TextRotated 'Turm' 3150 11"});
}

TEST_F(ObservationLayersTest, OrientationGetsADotAtItsFirstPointOnly) {
    session.obj.obj_pusi = 0;
    add_line(session, {1000, 2000, 1600, 2000}).lin_typ_seite = 10;
    add_line(session, {1000, 2000, 1100, 2050});
    EXPECT_EQ(orientations(), dot_pen() + Lines{"Circle 0 0 0.15"} + pen(0, 1, 0) +
                                  Lines{"Line 0 0 10 0"} + pen(2, 1, 0) + Lines{"Line 10 0 20 0"} +
                                  Lines{"TextRotated '' 0 11"} + Lines{"DrawStyle 0"});
}

TEST_F(ObservationLayersTest, WidthFactorMultipliesEveryWidth) {
    session.obj.obj_pusi = 0;
    session.settings.punkt_breite = 2;
    add_line(session, {1000, 2000, 1100, 2000}).lin_typ_seite = 1;
    LayerFrame wide = frame();
    wide.width_factor = 3;
    DrawObservations(session, wide, target, ObservationForm::horizontal);
    EXPECT_EQ(only(described(target), "DrawWidth"),
              (Lines{"DrawWidth 3", "DrawWidth 3", "DrawWidth 3", "DrawWidth 6"}));
    wide.width_factor = 32767;
    EXPECT_THROW(DrawObservations(session, wide, target, ObservationForm::horizontal), FatalError);
}

TEST_F(ObservationLayersTest, WindowClipsLinesAndLeavesDotsOutsideOut) {
    session.obj.obj_pusi = 0;
    add_line(session, {1000, 2000, 1100, 2000});
    LayerFrame sheet = frame();
    sheet.window = TargetBox{1010, 1990, 1040, 2010};
    sheet.origin_rechts = 1010;
    sheet.origin_hoch = 1990;
    DrawObservations(session, sheet, target, ObservationForm::horizontal);
    const Lines lines = described(target);
    EXPECT_EQ(only(lines, "Line"), Lines{"Line 0 10 30 10"});
    EXPECT_EQ(only(lines, "Circle"), Lines{});
}

TEST_F(ObservationLayersTest, WhatWouldBeNoNumberIsNotHandedOver) {
    LayerFrame view = frame();
    LayerSurface surface(view, target);
    surface.line(1000, 2000, std::nan(""), 2000);
    surface.line(1000, 2000, 1e300, 2000);
    surface.circle(std::nan(""), 2000, 1);
    surface.circle(1000, 2000, std::nanf(""));
    EXPECT_TRUE(target.operations().empty());
    surface.line(1000, 2000, 1001, 2000);
    EXPECT_EQ(described(target), Lines{"Line 0 0 1 0"});
}

}  // namespace
}  // namespace veldra
