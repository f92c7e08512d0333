#include "view/pointing.h"

#include <gtest/gtest.h>

#include "drawing/districts.h"
#include "network_builder.h"

namespace veldra {
namespace {

using test::add_point;
using test::end_points;

/// A view of 150 m x 90 m at (1000, 2000), 1 cm a twip. At 1:1000 with vectors at 1:2 a centimetre
/// of a value is 5 m of ground, and an epoch stands 1 m to the east.
class Pointing : public testing::Test {
 protected:
    Pointing() {
        session.plot.plot_massstab = 0.001;
        session.view = {1000, 2000, 1150, 2090, 0.01};
    }

    PointRow& value_row(double rechts, double hoch, std::int16_t lage, std::int16_t hoehe) {
        PointRow& row = add_point(session, rechts, hoch);
        row.pu_wert_lage = lage;
        row.pu_wert_hoehe = hoehe;
        return row;
    }

    Session session;
};

TEST_F(Pointing, PointWithoutValuesTellsItsNumberOnly) {
    add_point(session, 1010, 2020).pu_bez = "3251001250";
    EXPECT_EQ(point_info(session, 1), "PBZ: 3251001250");
}

TEST_F(Pointing, PointWithoutValuesAndNumberTellsNothing) {
    add_point(session, 1010, 2020);
    EXPECT_EQ(point_info(session, 1), "");
}

TEST_F(Pointing, FirstEpochShowsTheStoredChange) {
    PointRow& row = value_row(1010, 2020, -1, 0);
    row.pu_bez = "M\xE4rz";
    row.pu_wert_rechts = 3;
    row.pu_wert_hoch = -4;
    EXPECT_EQ(point_info(session, 1),
              "Epoche: März\r\nNeupunkt\r\nDy =          3.0 cm\r\nDx =         -4.0 cm\r\n"
              "Ds =          5.0 cm");
}

TEST_F(Pointing, LaterEpochShowsTheChangeSinceTheOneBefore) {
    PointRow& first = value_row(1010, 2020, 1, 0);
    first.pu_wert_rechts = 3;
    first.pu_wert_hoch = 4;
    PointRow& second = value_row(1010, 2020, 1, 0);
    second.pu_epoche = 1;
    second.pu_wert_rechts = 9;
    second.pu_wert_hoch = 12;
    EXPECT_EQ(point_info(session, 2),
              "Anschlusspunkt\r\nDy =          6.0 cm\r\nDx =          8.0 cm\r\n"
              "Ds =         10.0 cm");
}

TEST_F(Pointing, HeightChangesAreTakenFromTheEpochBeforeToo) {
    PointRow& first = value_row(1010, 2020, 0, 4);
    first.pu_wert_dh = -1.5;
    PointRow& second = value_row(1010, 2020, 0, -4);
    second.pu_bez = "2020";
    second.pu_epoche = 2;
    second.pu_wert_dh = 2.25;
    EXPECT_EQ(point_info(session, 1), "Anschlusspunkt\r\nDHöhe =      -1.5 cm");
    EXPECT_EQ(point_info(session, 2), "Epoche: 2020\r\nNeupunkt\r\nDHöhe =       3.8 cm");
}

TEST_F(Pointing, PositionChangeGoesBeforeHeightChange) {
    PointRow& row = value_row(1010, 2020, 1, 4);
    row.pu_wert_dh = 7;
    EXPECT_EQ(point_info(session, 1),
              "Anschlusspunkt\r\nDy =          0.0 cm\r\nDx =          0.0 cm\r\n"
              "Ds =          0.0 cm");
}

TEST_F(Pointing, ResidualsOfPositionAndHeight) {
    PointRow& row = value_row(1010, 2020, 2, 5);
    row.pu_bez = "7";
    row.pu_wert_rechts = 0.6;
    row.pu_wert_hoch = 0.8;
    row.pu_wert_dh = 123456.7;
    EXPECT_EQ(point_info(session, 1),
              "PBZ: 7\r\nStützpunkt\r\nRy =          0.6 cm\r\nRx =          0.8 cm\r\n"
              "Rs =          1.0 cm\r\nRHöhe =  123456.7 cm");
}

TEST_F(Pointing, ResidualOfPositionAlone) {
    PointRow& row = value_row(1010, 2020, -2, 6);
    row.pu_wert_rechts = 3;
    row.pu_wert_hoch = 4;
    EXPECT_EQ(point_info(session, 1),
              "Umformungspunkt\r\nRy =          3.0 cm\r\nRx =          4.0 cm\r\n"
              "Rs =          5.0 cm");
}

TEST_F(Pointing, ResidualAndErrorOfHeight) {
    PointRow& residual = value_row(1010, 2020, 0, -5);
    residual.pu_bez = "8";
    residual.pu_wert_dh = -0.3;
    PointRow& error = value_row(1020, 2020, 0, -6);
    error.pu_wert_dh = 1.2;
    EXPECT_EQ(point_info(session, 1), "PBZ: 8\r\nUmformungspunkt\r\nRHöhe =      -0.3 cm");
    EXPECT_EQ(point_info(session, 2), "mHöhe =       1.2 cm");
}

TEST_F(Pointing, EllipseHasItsAzimuthInGon) {
    PointRow& row = value_row(1010, 2020, -3, 0);
    row.pu_bez = "9";
    row.pu_wert_rechts = 2.5;
    row.pu_wert_hoch = 1.5;
    row.pu_wert_dh = 123.4;
    EXPECT_EQ(point_info(session, 1),
              "PBZ: 9\r\na =       2.5 cm\r\nb =       1.5 cm\r\nt =     123.4 gon");
}

TEST_F(Pointing, AnchorsAreTipTopAndPoint) {
    PointRow& tip = value_row(1010, 2020, 1, 0);
    tip.pu_wert_rechts = 2;
    tip.pu_wert_hoch = -1;
    PointRow& top = value_row(1010, 2020, 0, -4);
    top.pu_epoche = 3;
    top.pu_wert_dh = 2;
    PointRow& residual = value_row(1010, 2020, 2, 0);
    residual.pu_wert_rechts = 2;
    EXPECT_DOUBLE_EQ(label_anchor(session, 1).rechts, 1020);
    EXPECT_DOUBLE_EQ(label_anchor(session, 1).hoch, 2015);
    EXPECT_DOUBLE_EQ(label_anchor(session, 2).rechts, 1013);
    EXPECT_DOUBLE_EQ(label_anchor(session, 2).hoch, 2030);
    EXPECT_DOUBLE_EQ(label_anchor(session, 3).rechts, 1010);
    EXPECT_DOUBLE_EQ(label_anchor(session, 3).hoch, 2020);
}

TEST_F(Pointing, InfoStandsAtTheAnchor) {
    add_point(session, 1010, 2050);
    const PicturePoint corner = place_point_info(session, 1, 20, 10);
    EXPECT_EQ(corner.x, 10.0F);
    EXPECT_EQ(corner.y, 50.0F);
}

TEST_F(Pointing, InfoFlipsToTheLeftAtTheRightEdge) {
    add_point(session, 1130, 2050);
    // It would just touch the edge: that is outside already.
    EXPECT_EQ(place_point_info(session, 1, 20, 10).x, 110.0F);
    EXPECT_EQ(place_point_info(session, 1, 19, 10).x, 130.0F);
}

TEST_F(Pointing, InfoFlipsUpwardAtTheBottom) {
    add_point(session, 1010, 2008);
    EXPECT_EQ(place_point_info(session, 1, 20, 10).y, 18.0F);
    // Down to the edge it fits.
    EXPECT_EQ(place_point_info(session, 1, 20, 8).y, 8.0F);
}

TEST_F(Pointing, DistrictInfoIsCentredOnItsNodeAndNeverFlips) {
    DistrictGrid& grid = district_cache(session).grid;
    grid.grid_rechts = {0, 1001};
    grid.grid_hoch = {0, 2001};
    grid.grid_bez = {"", "5208"};
    grid.grid_bez_ecke = {"", " 5207 | 5208 \r\n  5307 | 5308 "};
    EXPECT_EQ(district_info(session, 1), " 5207 | 5208 \r\n  5307 | 5308 ");
    const PicturePoint corner = place_district_info(session, 1, 20, 10);
    EXPECT_EQ(corner.x, -9.0F);
    EXPECT_EQ(corner.y, 6.0F);
}

TEST_F(Pointing, LabelsThatAreNoNodesTellNothing) {
    DistrictGrid& grid = district_cache(session).grid;
    grid.grid_bez = {"", "", "5208"};
    grid.grid_bez_ecke = {"", "", "x"};
    EXPECT_FALSE(is_node_label(session, 0));
    EXPECT_FALSE(is_node_label(session, 1));
    EXPECT_TRUE(is_node_label(session, 2));
    EXPECT_FALSE(is_node_label(session, 3));
    EXPECT_EQ(district_info(session, 1), "");
    // In plot mode with the numbers on the edges of the sheets.
    session.plotmodus = 1;
    session.obj.obj_nbez = 2;
    EXPECT_FALSE(is_node_label(session, 2));
}

}  // namespace
}  // namespace veldra
