#include "view/extents.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "network_builder.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using test::add_line;
using test::add_point;
using test::end_points;
using test::FakeMeasurer;
using test::show_values;

/// A session at the plot scale 1:1000, where a millimetre of paper is a metre of ground.
class ComputeExtentsTest : public testing::Test {
 protected:
    ComputeExtentsTest() {
        test::show_nothing(session);
        session.plot.plot_massstab = 0.001;
        session.settings.punkt_klein_plot = 0;
    }

    const Extents& compute() {
        ComputeExtents(session, measurer);
        return session.extents;
    }

    void expect_box(double rw_min, double hw_min, double rw_max, double hw_max) {
        const Extents& box = compute();
        EXPECT_NEAR(box.gesamt_rw_min, rw_min - 0.01, 1e-9);
        EXPECT_NEAR(box.gesamt_hw_min, hw_min - 0.01, 1e-9);
        EXPECT_NEAR(box.gesamt_rw_max, rw_max + 0.01, 1e-9);
        EXPECT_NEAR(box.gesamt_hw_max, hw_max + 0.01, 1e-9);
    }

    /// Two points that keep the extents above the smallest span.
    void add_frame_points() {
        add_point(session, 0, 0);
        add_point(session, 100, 100);
    }

    Session session;
    FakeMeasurer measurer;
};

TEST_F(ComputeExtentsTest, SinglePointYieldsFiveMetreSquareCentredOnThePoint) {
    add_point(session, 1000, 2000);
    const Extents& box = compute();
    EXPECT_DOUBLE_EQ(box.gesamt_rw_min, 997.5);
    EXPECT_DOUBLE_EQ(box.gesamt_rw_max, 1002.5);
    EXPECT_DOUBLE_EQ(box.gesamt_hw_min, 1997.5);
    EXPECT_DOUBLE_EQ(box.gesamt_hw_max, 2002.5);
    EXPECT_EQ(box.roh_rw_min, 1000);
    EXPECT_EQ(box.roh_hw_min, 2000);
}

TEST_F(ComputeExtentsTest, SinglePointWithALabelCentresOnWhatIsShown) {
    session.obj.obj_pube = 1;
    session.settings.pubsizplo = 0.5F;  // line height 0.84 m of ground
    session.settings.stanplt = 0;
    add_point(session, 1000, 2000).pu_bez = "12";
    const Extents& box = compute();
    // Label from (1000, 2000) to (1000.84, 1999.16): spans of 0.86 m.
    EXPECT_NEAR(box.gesamt_rw_min, 1000.42 - 2.5, 1e-9);
    EXPECT_NEAR(box.gesamt_hw_min, 1999.58 - 2.5, 1e-9);
    EXPECT_DOUBLE_EQ(box.gesamt_rw_max, box.gesamt_rw_min + 5);
}

TEST_F(ComputeExtentsTest, EmptyPartYieldsSquareAroundTheOrigin) {
    const Extents& box = compute();
    EXPECT_EQ(box.gesamt_rw_min, -2.5);
    EXPECT_EQ(box.gesamt_hw_min, -2.5);
    EXPECT_EQ(box.gesamt_rw_max, 2.5);
    EXPECT_EQ(box.gesamt_hw_max, 2.5);
    EXPECT_EQ(box.roh_rw_min, 9.99e20);
}

TEST_F(ComputeExtentsTest, LeavesTheViewportAlone) {
    session.view.ansicht_rw_min = 17;
    session.datei_geladen = 1;
    compute();
    EXPECT_EQ(session.view.ansicht_rw_min, 17);
}

TEST_F(ComputeExtentsTest, PointsWidenByTheDotWithoutSignatures) {
    session.settings.punkt_klein_plot = 0.5;
    add_frame_points();
    expect_box(-0.5, -0.5, 100.5, 100.5);
    EXPECT_EQ(session.extents.roh_rw_min, 0);
}

TEST_F(ComputeExtentsTest, PointsWidenByTheSignatureOfTheirClass) {
    session.obj.obj_pusi = 1;
    session.settings.punsigplo = {4, 3, 2, 1};
    add_point(session, 0, 0).pu_art_lage = 5;  // class 3
    PointRow& second = add_point(session, 100, 100);
    second.pu_art_lage = 1;
    second.pu_art_hoehe = 2;  // class 2
    expect_box(-1, -1, 102, 102);
}

TEST_F(ComputeExtentsTest, LineEndsWidenByTheSignatureOfTheirClasses) {
    session.obj.obj_pusi = 1;
    session.obj.obj_beob = 2;
    session.settings.punsigplo = {4, 3, 2, 1};
    LineRow& row = add_line(session, {0, 0, 100, 100});
    row.lin_klasse_von = 0;
    row.lin_klasse_nach = 1;
    expect_box(-4, -4, 103, 103);
    EXPECT_EQ(session.extents.roh_hw_min, 0);
}

TEST_F(ComputeExtentsTest, LineClassOutOfRangeIsARangeError) {
    session.obj.obj_pusi = 1;
    session.obj.obj_beob = 1;
    add_line(session, {0, 0, 100, 100}).lin_klasse_von = 4;
    EXPECT_THROW(compute(), FatalError);
}

TEST_F(ComputeExtentsTest, LinesCountOnlyWhenObservationsAreShown) {
    add_line(session, {0, 0, 100, 100});
    EXPECT_EQ(compute().gesamt_rw_max, 2.5);
    session.obj.obj_beob = 3;
    EXPECT_NEAR(compute().gesamt_rw_max, 100.01, 1e-9);
}

TEST_F(ComputeExtentsTest, OrientationWidensByItsRayAndNotByItsTarget) {
    session.obj.obj_beob = 1;
    session.settings.lenoriplo = 35;
    add_frame_points();
    add_line(session, {100, 0, 900, 600}).lin_typ_seite = 10;
    // 35 m along (0.8, 0.6).
    expect_box(0, 0, 128, 100);
    add_line(session, {0, 0, -600, -800}).lin_typ_seite = 10;
    expect_box(-21, -28, 128, 100);
    // The ends of rays are no bare coordinates.
    EXPECT_EQ(session.extents.roh_rw_min, 0);
    EXPECT_EQ(session.extents.roh_hw_min, 0);
}

TEST_F(ComputeExtentsTest, OrientationInOtherFormsIsALine) {
    session.obj.obj_beob = 2;
    add_frame_points();
    add_line(session, {100, 0, 900, 600}).lin_typ_seite = 10;
    expect_box(0, 0, 900, 600);
}

TEST_F(ComputeExtentsTest, NameOfARemoteTargetLiesLeftOfAnEastwardRay) {
    session.obj.obj_beob = 1;
    session.settings.lenoriplo = 35;
    session.settings.pubsizplo = 2.5F;  // line height 4.2 m, letter 2.1 m of ground
    LineRow& row = add_line(session, {0, 0, 1000, 0});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("Kirchturm Nordwest !");  // 20 letters: 42 m
    // Tip (35, 0); the box reaches 4.2 m north and back to 35 - 42.
    const Extents& box = compute();
    EXPECT_NEAR(box.gesamt_rw_min, -7.01, 1e-9);
    EXPECT_NEAR(box.gesamt_rw_max, 35.01, 1e-9);
    EXPECT_NEAR(box.gesamt_hw_max, 4.21 + (5 - 4.22) / 2, 1e-9);
}

TEST_F(ComputeExtentsTest, NameOfARemoteTargetLiesRightOfAWestwardRay) {
    session.obj.obj_beob = 1;
    session.settings.lenoriplo = 35;
    add_point(session, 0, -50);
    add_point(session, 0, 50);
    LineRow& row = add_line(session, {0, 0, -300, 400});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("0123456789012345678901234567890123456789");  // 40 letters: 84 m
    // Unit vector (-0.6, 0.8), tip (-21, 28). A = tip + 4.2 (0.8, 0.6) = (-17.64, 30.52);
    // B = A - 84 (-0.6, 0.8) = (32.76, -36.68).
    expect_box(-21, -50, 32.76, 50);
}

TEST_F(ComputeExtentsTest, BlankNameOfARemoteTargetTakesNoRoom) {
    session.obj.obj_beob = 1;
    add_frame_points();
    LineRow& row = add_line(session, {0, 0, 0, 1000});
    row.lin_typ_seite = 10;
    row.lin_fernziel.set("   ");
    expect_box(0, 0, 100, 100);
}

TEST_F(ComputeExtentsTest, PositionChangesWidenByTheirTips) {
    show_values(session, 1);
    session.vektor_massstab[1] = 0.5;  // 1 cm is 0.5 / 0.001 / 100 = 5 m
    add_frame_points();
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_lage = 1;
    row.pu_wert_rechts = 2;
    row.pu_wert_hoch = -30;
    expect_box(0, -50, 110, 100);
    session.settings.vektAdrw[1] = 0;
    expect_box(0, 0, 100, 100);
    row.pu_wert_lage = -1;
    expect_box(0, -50, 110, 100);
    session.settings.vektNdrw[1] = 0;
    expect_box(0, 0, 100, 100);
}

TEST_F(ComputeExtentsTest, HeightBarsWidenTheNorthingOnly) {
    show_values(session, 5);
    session.vektor_massstab[5] = 0.5;
    add_frame_points();
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_hoehe = -5;
    row.pu_wert_dh = 3;
    row.pu_epoche = 7;
    expect_box(0, 0, 100, 115);
    session.settings.vektNdrw[5] = 0;
    expect_box(0, 0, 100, 100);
}

TEST_F(ComputeExtentsTest, EpochsOfHeightChangesWidenTheRightEdgeUnderTheWidthRule) {
    show_values(session, 2);
    add_frame_points();
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_hoehe = 4;
    row.pu_epoche = 7;  // 7 mm of paper
    expect_box(0, 0, 107, 100);
    session.settings.vektAdrw[4] = 0;
    expect_box(0, 0, 100, 100);
}

TEST_F(ComputeExtentsTest, EllipseWidensAlongItsAzimuth) {
    show_values(session, 7);
    session.vektor_massstab[3] = 0.5;
    add_frame_points();
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_lage = -3;
    row.pu_wert_rechts = 4;  // a: 20 m
    row.pu_wert_hoch = 1;    // b: 5 m
    row.pu_wert_dh = 0;      // a points north
    expect_box(0, 0, 105, 120);
    row.pu_wert_dh = 100;  // a points east
    expect_box(0, 0, 120, 105);
    row.pu_wert_lage = 3;
    expect_box(0, 0, 100, 100);
}

/// The 204 samples of an ellipse as told by their formula.
void widen_by_all_samples(const PointRow& row, double s, Extents& box) {
    const double pi = std::acos(-1.0);
    const double a = row.pu_wert_rechts * s;
    const double b = row.pu_wert_hoch * s;
    const double t = row.pu_wert_dh * pi / 200;
    for (int k = 0; k <= 50; ++k) {
        const double p = a * std::cos(k * pi / 50);
        const double q = b * std::sin(k * pi / 50);
        for (const int sign_p : {1, -1}) {
            for (const int sign_q : {1, -1}) {
                const double r =
                    row.pu_rechts + sign_p * p * std::sin(t) - sign_q * q * std::cos(t);
                const double h = row.pu_hoch + sign_p * p * std::cos(t) + sign_q * q * std::sin(t);
                box.gesamt_rw_min = std::min(box.gesamt_rw_min, r);
                box.gesamt_rw_max = std::max(box.gesamt_rw_max, r);
                box.gesamt_hw_min = std::min(box.gesamt_hw_min, h);
                box.gesamt_hw_max = std::max(box.gesamt_hw_max, h);
            }
        }
    }
}

TEST_F(ComputeExtentsTest, SkippedEllipsesChangeNothing) {
    show_values(session, 7);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(3400000, 3400500);
    std::uniform_real_distribution<double> size(0, 12);
    std::uniform_real_distribution<double> gon(0, 400);
    Extents expected{9.99e20, 9.99e20, -9.99e20, -9.99e20, 0, 0};
    for (int i = 0; i < 400; ++i) {
        PointRow& row = add_point(session, place(random), place(random));
        row.pu_wert_lage = -3;
        row.pu_wert_rechts = size(random);
        row.pu_wert_hoch = size(random);
        row.pu_wert_dh = gon(random);
        widen_by_all_samples(row, 5, expected);
    }
    const Extents& box = compute();
    EXPECT_DOUBLE_EQ(box.gesamt_rw_min, expected.gesamt_rw_min - 0.01);
    EXPECT_DOUBLE_EQ(box.gesamt_hw_min, expected.gesamt_hw_min - 0.01);
    EXPECT_DOUBLE_EQ(box.gesamt_rw_max, expected.gesamt_rw_max + 0.01);
    EXPECT_DOUBLE_EQ(box.gesamt_hw_max, expected.gesamt_hw_max + 0.01);
}

TEST_F(ComputeExtentsTest, LabelTakesItsShortFormAndStandardOffset) {
    session.obj.obj_pube = 1;
    session.settings.stanplt = 60;
    session.settings.stanptp = 50;
    add_frame_points();
    session.pu[2].pu_bez = "3251001250";  // "12.50": 5 letters of 2.1 m
    session.pu[2].pu_bez_hoch = 9999;     // counts only with an offset east
    // Left 100 + 0.6 * 4.2, right 10.5 further; top 100 + 2.1.
    expect_box(0, 0, 113.02, 102.1);
}

TEST_F(ComputeExtentsTest, MovedLabelTakesItsOwnOffset) {
    session.obj.obj_pube = 1;
    add_frame_points();
    PointRow& row = session.pu[1];
    row.pu_bez = "AB";
    row.pu_bez_rechts = -200;
    row.pu_bez_hoch = -100;
    // Left -8.4, right -4.2, top -4.2, bottom -8.4.
    expect_box(-8.4, -8.4, 100, 100);
}

TEST_F(ComputeExtentsTest, LabelsOffTakeNoRoom) {
    add_frame_points();
    session.pu[2].pu_bez = "ABC";
    expect_box(0, 0, 100, 100);
}

TEST_F(ComputeExtentsTest, EpochLabelStandsAtTheVectorTipAsItIs) {
    show_values(session, 1);
    session.settings.stanplt = 0;
    add_frame_points();
    end_points(session);
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_lage = -1;
    row.pu_wert_rechts = 2;  // tip 10 m east
    row.pu_bez = "100020";   // six letters: 12.6 m
    session.obj.obj_pube = 1;
    expect_box(0, 0, 110, 100);
    session.obj.obj_epbe = table_true;
    expect_box(0, 0, 122.6, 100);
}

TEST_F(ComputeExtentsTest, EpochLabelStandsAtTheBarTop) {
    show_values(session, 2);
    session.obj.obj_epbe = table_true;
    session.settings.stanplt = 0;
    session.settings.vektNdrw[4] = 0;  // hides the bar, not its label
    add_frame_points();
    end_points(session);
    PointRow& row = add_point(session, 100, 100);
    row.pu_wert_hoehe = -4;
    row.pu_wert_dh = 2;  // 10 m up
    row.pu_epoche = 3;   // 3 m east
    row.pu_bez = "90";   // 4.2 m
    expect_box(0, 0, 107.2, 110);
}

TEST_F(ComputeExtentsTest, BorderLabelsOfDistrictsTakeRoomOnAllSides) {
    session.obj.obj_nbez = 2;
    session.settings.nubsizplo = 5;  // line height 8.4 m, letter 4.2 m
    add_frame_points();
    expect_box(0, 0, 100, 100);
    for (const auto kind : std::initializer_list<std::int16_t>{1, 4, 5}) {
        session.obj.obj_nube = kind;
        expect_box(-8.4, -8.4, 108.4, 108.4);
    }
    for (const auto kind : std::initializer_list<std::int16_t>{2, 3}) {
        session.obj.obj_nube = kind;
        expect_box(-16.8, -8.4, 116.8, 108.4);
    }
    session.obj.obj_nbez = 1;
    expect_box(0, 0, 100, 100);
}

/// A printer's measuring that tells its calls.
class RecordingPaperText final : public PaperTextSize {
 public:
    void set_font(const FontSpec& font, float digit_height) override {
        fonts.push_back(font);
        digit_heights.push_back(digit_height);
    }
    PaperExtent text_size(std::string_view /*text*/) override { return {0.010, 0.002}; }

    std::vector<FontSpec> fonts;
    std::vector<float> digit_heights;
};

TEST_F(ComputeExtentsTest, TakesTextSizesFromThePrinter) {
    session.obj.obj_pube = 1;
    session.obj.obj_nube = 1;
    session.obj.obj_nbez = 2;
    session.settings.pubund = table_true;
    session.settings.stanplt = 0;
    add_frame_points();
    session.pu[2].pu_bez = "ABC";
    RecordingPaperText printer;
    ComputeExtents(session, printer);
    // Label 10 m wide, border labels 10 m by 2 m.
    EXPECT_NEAR(session.extents.gesamt_rw_max, 120.01, 1e-9);
    EXPECT_NEAR(session.extents.gesamt_hw_max, 102.01, 1e-9);
    ASSERT_EQ(printer.fonts.size(), 3U);
    EXPECT_EQ(printer.fonts[0].underline, table_false);
    EXPECT_EQ(printer.fonts[1].underline, table_true);
    EXPECT_EQ(printer.fonts[0].points, 10);
    EXPECT_EQ(printer.digit_heights, (std::vector<float>{2.5F, 2.5F, 2.5F}));
}

TEST_F(ComputeExtentsTest, BareSpanCoversPointsAndShownLineEnds) {
    add_frame_points();
    add_line(session, {-50, 0, 100, 300}).lin_typ_seite = 10;
    EXPECT_EQ(bare_span(session).rechts, 100);
    session.obj.obj_beob = 1;
    EXPECT_EQ(bare_span(session).rechts, 150);
    EXPECT_EQ(bare_span(session).hoch, 100);
    session.obj.obj_beob = 3;
    EXPECT_EQ(bare_span(session).hoch, 300);
}

}  // namespace
}  // namespace veldra
