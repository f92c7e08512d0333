#include "plot/legend_place.h"

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "network_builder.h"
#include "plot/printer_adapters.h"
#include "recording_interface.h"

namespace veldra {
namespace {

using test::add_line;
using test::add_point;

/// A part that was never plotted, at 1:1000, so that a millimetre of paper is a metre of ground.
/// Points have dots of 0.5 m. The first two span 100 by 200 m, which an upright sheet of 181.2 by
/// 272.7 m holds and one in landscape of 285.4 by 171.6 m does not. With their dots and 1 cm of
/// room the zero point is (-0.51, -0.51), and the sheet ends at (180.69, 272.19).
///
/// The legend has three lines of 3 mm digits: 4 + 3 * 1.68 * 3 = 19.12 m high. The longest one,
/// "Grundriss 1: 1000", has 17 letters of half the line's 5.04 m, with 6 m of room: 48.84 m.
/// So it takes 131.85 to 180.69 on the right and -0.51 to 48.33 on the left, -0.51 to 18.61 below
/// and 253.07 to 272.19 above. The first point lies under the place left below.
class ChosenLegendPlace : public testing::Test {
 protected:
    ChosenLegendPlace() {
        test::show_nothing(session);
        session.part.plot.plot_massstab = 0.001;
        session.part.titel[0].setTitelText("Netz");
        for (Titelzeile& zeile : session.part.titel) {
            zeile.setTitelSize(3);
        }
        add_point(session, 0, 0);
        add_point(session, 100, 200);
    }

    std::int16_t place_after_division() {
        test::end_points(session);
        ComputeSheetDivision(session, Desk{measurer, ui, [] {}});
        return session.part.plot.plot_legendenlage;
    }

    test::FakeMeasurer measurer;
    test::RecordingInterface ui;
    Session session;
};

TEST_F(ChosenLegendPlace, DefaultStaysWhereItCoversNothing) {
    EXPECT_EQ(place_after_division(), 4);
    EXPECT_EQ(session.part.plot.plot_ausrichtung, 1);
    EXPECT_DOUBLE_EQ(session.part.plot.plot_null_rechts, -0.51);
}

TEST_F(ChosenLegendPlace, PointBelowTheDefaultSendsItUp) {
    add_point(session, 150, 10);
    EXPECT_EQ(place_after_division(), 3);
}

TEST_F(ChosenLegendPlace, DotCountsWithItsRadius) {
    add_point(session, 131.36, 10);
    EXPECT_EQ(place_after_division(), 3);
}

TEST_F(ChosenLegendPlace, DotBesideTheLegendDoesNotCount) {
    add_point(session, 131.34, 10);
    EXPECT_EQ(place_after_division(), 4);
}

TEST_F(ChosenLegendPlace, LineThroughTheLegendCounts) {
    // At 131.85 it is 8.49 high; it leaves the legend's top at 169.79.
    session.part.obj.obj_beob = 1;
    add_line(session, {100, 0, 175, 20}).lin_typ_seite = 1;
    EXPECT_EQ(place_after_division(), 3);
}

TEST_F(ChosenLegendPlace, LineThatIsNotShownDoesNotCount) {
    add_line(session, {100, 0, 175, 20}).lin_typ_seite = 1;
    EXPECT_EQ(place_after_division(), 4);
}

TEST_F(ChosenLegendPlace, LabelThatReachesUnderTheLegendCounts) {
    // Letters are 2.1 m wide and 4.2 m high; the label begins 60 % of that, 2.52 m, to the right of
    // its point and ends, with seven letters, 14.7 m further on at 137.22.
    add_point(session, 120, 10).pu_bez = "1234567";
    session.part.obj.obj_pube = 1;
    EXPECT_EQ(place_after_division(), 3);
}

TEST_F(ChosenLegendPlace, LabelOfTwoLettersEndsBesideTheLegend) {
    add_point(session, 120, 10).pu_bez = "12";
    session.part.obj.obj_pube = 1;
    EXPECT_EQ(place_after_division(), 4);
}

TEST_F(ChosenLegendPlace, LeftBelowComesBeforeLeftAbove) {
    session.part.pu[1].pu_hoch = 100;  // no longer under the place left below
    add_point(session, 100, 0);
    add_point(session, 150, 10);
    add_point(session, 150, 260);
    EXPECT_EQ(place_after_division(), 2);
}

TEST_F(ChosenLegendPlace, LastComesLeftAbove) {
    add_point(session, 150, 10);
    add_point(session, 150, 260);
    EXPECT_EQ(place_after_division(), 1);
}

TEST_F(ChosenLegendPlace, WhereAllCoverSomethingTheLeastCovered) {
    add_point(session, 150, 10);
    add_point(session, 155, 10);
    add_point(session, 150, 260);
    add_point(session, 155, 260);
    add_point(session, 10, 260);
    add_point(session, 15, 260);
    EXPECT_EQ(place_after_division(), 2);
}

TEST_F(ChosenLegendPlace, LineAndPointAreTwoThoughBothAreTheFirstOfTheirKind) {
    session.part.obj.obj_beob = 1;
    add_line(session, {5, 5, 20, 5}).lin_typ_seite = 1;  // left below, as the first point
    for (const double rechts : {150, 155}) {
        add_point(session, rechts, 10);
        add_point(session, rechts, 260);
        add_point(session, rechts - 140, 260);
    }
    EXPECT_EQ(place_after_division(), 4);
}

TEST_F(ChosenLegendPlace, OfPlacesThatCoverAsMuchTheFirst) {
    add_point(session, 150, 10);
    add_point(session, 150, 260);
    add_point(session, 10, 260);
    EXPECT_EQ(place_after_division(), 4);
}

TEST_F(ChosenLegendPlace, StoredPlaceStays) {
    session.part.plot.plot_ausrichtung = 1;
    session.part.plot.plot_heftrand = 2;
    session.part.plot.plot_legendenlage = 2;
    session.part.plot.plot_null_rechts = -0.51;
    session.part.plot.plot_null_hoch = -0.51;
    EXPECT_EQ(place_after_division(), 2);
}

TEST_F(ChosenLegendPlace, PlaceIsThatOfThePaperThatIsTaken) {
    // 250.5 by 100 m lie on one sheet in landscape, which ends at 284.89: the legend begins at
    // 236.05. The division itself goes on with the width of the upright sheet, two of which would
    // end at 361.89.
    session.part.pu[2].pu_hoch = 100;
    add_point(session, 250, 10);
    EXPECT_EQ(place_after_division(), 3);
    EXPECT_EQ(session.part.plot.plot_ausrichtung, 2);
    EXPECT_DOUBLE_EQ(session.part.sheet.papier_breite, 0.1967 - 0.0005 - 0.015);
    EXPECT_EQ(session.part.plot.plot_blatt_rechts, 2);
}

TEST_F(ChosenLegendPlace, NothingElseOfTheSessionChanges) {
    session.legende = {1, 2, 3, 4};
    session.blatt = {5, 6, 7, 8};
    session.part.lbl_pubez.resize(2);
    session.part.lbl_pubez[1].caption = "bleibt";
    session.part.lbl_pubez_placed = {1};
    add_point(session, 150, 10);
    ASSERT_EQ(place_after_division(), 3);
    EXPECT_EQ(session.legende.legende_rw_min, 1);
    EXPECT_EQ(session.blatt.blatt_rw_min, 5);
    ASSERT_EQ(session.part.lbl_pubez.size(), 2U);
    EXPECT_EQ(session.part.lbl_pubez[1].caption, "bleibt");
    EXPECT_EQ(session.part.lbl_pubez_placed.size(), 1U);
}

}  // namespace
}  // namespace veldra
