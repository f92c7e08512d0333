#include "drawing/point_layers.h"

#include "layer_fixture.h"

namespace veldra {
namespace {

using test::add_point;
using test::described;
using test::dot_pen;
using test::end_points;
using test::Lines;
using test::only;
using test::operator+;
using test::show_values;

class PointLayersTest : public test::LayerFixture {
 protected:
    Lines signatures() {
        DrawPointSignatures(session, frame(), target);
        return described(target);
    }
    Lines labels() {
        DrawPointLabels(session, frame(), target);
        return described(target);
    }
};

TEST_F(PointLayersTest, SignaturesAreFilledByFlagAndSizedByClass) {
    PointRow& control = add_point(session, 1010, 2020);
    control.pu_signatur = 1;
    PointRow& second = add_point(session, 1030, 2040);
    second.pu_signatur = -1;
    second.pu_art_lage = 1;
    second.pu_art_hoehe = 2;
    EXPECT_EQ(
        signatures(),
        (Lines{"DrawWidth 1", "ForeColor 0", "FillStyle 0",
               fmt::format("FillColor {}", rgb(0, 127, 255)), "Circle 10 20 0.6", "FillStyle 0",
               fmt::format("FillColor {}", rgb(255, 0, 63)), "Circle 30 40 0.3"}));
}

TEST_F(PointLayersTest, PenIsSetEvenWithoutPoints) {
    EXPECT_EQ(signatures(), (Lines{"DrawWidth 1", "ForeColor 0"}));
}

TEST_F(PointLayersTest, PointWithoutFlagHasALabelAndNoCircle) {
    session.part.obj.obj_pube = 1;
    add_point(session, 1010, 2020).pu_bez = "A1";
    end_points(session);
    EXPECT_EQ(only(signatures(), "Circle"), Lines{});
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 'A1' 11.2 20 2 2"});
}

TEST_F(PointLayersTest, ClassThreePointTakesItsOwnRadius) {
    session.settings.punsigscr = {10, 20, 30, 40};
    PointRow& row = add_point(session, 1010, 2020);
    row.pu_signatur = 1;
    row.pu_art_lage = 5;
    EXPECT_EQ(only(signatures(), "Circle"), Lines{"Circle 10 20 0.4"});
}

TEST_F(PointLayersTest, GreyFrameDrawsSignaturesInGrey) {
    add_point(session, 1010, 2020).pu_signatur = -1;
    LayerFrame grey = frame();
    grey.grey = true;
    DrawPointSignatures(session, grey, target);
    EXPECT_EQ(only(described(target), "FillColor"),
              Lines{fmt::format("FillColor {}", rgb(106, 106, 106))});
}

TEST_F(PointLayersTest, StandardOffsetIsAPercentageOfTheLabelHeight) {
    session.part.obj.obj_pube = 1;
    session.settings.stanptp = -25;
    add_point(session, 1010, 2020).pu_bez = "3251001250";
    end_points(session);
    // 60 % and -25 % of 2 m; five letters.
    EXPECT_EQ(labels(), dot_pen() + Lines{"Label lbl_pubez 1 '12.50' 11.2 19.5 5 2"});
}

TEST_F(PointLayersTest, MovedLabelKeepsItsOffset) {
    session.part.obj.obj_pube = 1;
    PointRow& row = add_point(session, 1010, 2020);
    row.pu_bez = "A";
    row.pu_bez_rechts = -150;
    row.pu_bez_hoch = 50;
    end_points(session);
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 'A' 7 21 1 2"});
}

TEST_F(PointLayersTest, OffsetEastOfZeroMeansStandardPlaceWhateverTheOffsetNorth) {
    session.part.obj.obj_pube = 1;
    PointRow& row = add_point(session, 1010, 2020);
    row.pu_bez = "A";
    row.pu_bez_hoch = 50;
    end_points(session);
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 'A' 11.2 20 1 2"});
}

TEST_F(PointLayersTest, FourBlanksAreACaptionWithAHeight) {
    session.part.obj.obj_pube = 1;
    add_point(session, 1010, 2020);
    end_points(session);
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 '    ' 11.2 20 4 2"});
    const Label& label = session.part.lbl_pubez[1];
    EXPECT_TRUE(label.visible);
    EXPECT_TRUE(label.enabled);
    EXPECT_EQ(label.height, 2);
}

TEST_F(PointLayersTest, OnlyDotsAndBlankLabelsRemainWithLabelsAndSignaturesOff) {
    session.part.obj.obj_pusi = 0;
    add_point(session, 1010, 2020).pu_bez = "A";
    add_point(session, 1030, 2020).pu_bez = "B";
    end_points(session);
    EXPECT_EQ(labels(),
              dot_pen() + (Lines{"Label lbl_pubez 1 '    ' 11.2 20 4 2", "Circle 10 20 0.15",
                                 "Label lbl_pubez 2 '    ' 31.2 20 4 2", "Circle 30 20 0.15"}));
}

TEST_F(PointLayersTest, LabelIsAnnouncedWithFontAndColour) {
    session.part.obj.obj_pube = 1;
    session.settings.pubfon = "Courier New";
    session.settings.pubgrascr = 12;
    session.settings.pubbol = table_true;
    session.settings.pubund = table_true;
    session.settings.pubcolor = rgb(1, 2, 3);
    add_point(session, 1010, 2020).pu_bez = "A";
    end_points(session);
    labels();
    const auto& label = std::get<operation::LabelPlaced>(target.operations().back());
    EXPECT_EQ(label.font, (FontSpec{"Courier New", 12, table_true, 0, table_true}));
    EXPECT_EQ(label.colour, rgb(1, 2, 3));
    EXPECT_EQ(label.height, 2.4F);
}

TEST_F(PointLayersTest, EpochLabelStandsAtTheVectorEndWithItsTextAsItIs) {
    show_values(session, 1);
    session.part.obj.obj_epbe = table_true;
    add_point(session, 1010, 2020).pu_bez = "7";
    end_points(session);
    PointRow& epoch = add_point(session, 1010, 2020);
    epoch.pu_wert_lage = -1;
    epoch.pu_wert_rechts = 2;  // 10 m east
    epoch.pu_wert_hoch = -1;   // 5 m south
    epoch.pu_bez = "100020";
    EXPECT_EQ(only(labels(), "Label"), (Lines{"Label lbl_pubez 1 '    ' 11.2 20 4 2",
                                              "Label lbl_pubez 2 '100020' 21.2 15 6 2"}));
}

TEST_F(PointLayersTest, EpochLabelOfAHeightStandsAtTheBarTop) {
    show_values(session, 2);
    session.part.obj.obj_epbe = table_true;
    end_points(session);
    PointRow& epoch = add_point(session, 1010, 2020);
    epoch.pu_wert_hoehe = 4;
    epoch.pu_epoche = 3;   // 3 m east
    epoch.pu_wert_dh = 2;  // 10 m up
    epoch.pu_bez = "90";
    epoch.pu_bez_rechts = 100;
    epoch.pu_bez_hoch = 200;
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 '90' 15 34 2 2"});
}

TEST_F(PointLayersTest, EpochLabelsAreBlankWhenSwitchedOffOrEmpty) {
    show_values(session, 1);
    end_points(session);
    PointRow& epoch = add_point(session, 1010, 2020);
    epoch.pu_wert_lage = 1;
    epoch.pu_bez = "90";
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 '    ' 11.2 20 4 2"});
    target = {};
    session.part.obj.obj_epbe = table_true;
    epoch.pu_bez = "";
    EXPECT_EQ(only(labels(), "Label"), Lines{"Label lbl_pubez 1 '    ' 11.2 20 4 2"});
}

TEST_F(PointLayersTest, ValueRowsWithoutChangeHaveNoLabel) {
    show_values(session, 4);
    session.part.obj.obj_pube = 1;
    end_points(session);
    add_point(session, 1010, 2020).pu_wert_lage = 2;
    EXPECT_EQ(only(labels(), "Label"), Lines{});
    show_values(session, 1);
    EXPECT_EQ(only(labels(), "Label"), Lines{});
}

TEST_F(PointLayersTest, EachRunHidesTheLabelsOfTheRunBefore) {
    show_values(session, 1);
    end_points(session);
    add_point(session, 1010, 2020).pu_wert_lage = 1;
    labels();
    ASSERT_TRUE(session.part.lbl_pubez[1].visible);
    EXPECT_EQ(session.part.lbl_pubez_placed, std::vector<std::int32_t>{1});
    show_values(session, 0);
    labels();
    EXPECT_FALSE(session.part.lbl_pubez[1].visible);
    EXPECT_TRUE(session.part.lbl_pubez_placed.empty());
}

TEST_F(PointLayersTest, LabelTableFollowsThePointTable) {
    session.part.obj.obj_pube = 1;
    add_point(session, 1010, 2020).pu_bez = "A";
    add_point(session, 1020, 2020).pu_bez = "B";
    end_points(session);
    labels();
    ASSERT_EQ(session.part.lbl_pubez.size(), 3U);
    EXPECT_FALSE(session.part.lbl_pubez[0].visible);
    session.part.pu.clear();
    ++session.part.tables_revision;
    labels();
    EXPECT_EQ(session.part.lbl_pubez.size(), 1U);
}

}  // namespace
}  // namespace veldra
