#include "graphikdatei/value_pass.h"

#include <string>

#include "session_fixture.h"

namespace veldra {
namespace {

constexpr std::int16_t horizontal_changes = 1;
constexpr std::int16_t height_changes = 2;
constexpr std::int16_t both_changes = 3;
constexpr std::int16_t horizontal_residuals = 4;
constexpr std::int16_t height_residuals = 5;
constexpr std::int16_t both_residuals = 6;
constexpr std::int16_t ellipses = 7;
constexpr std::int16_t height_errors = 8;

using ValuePass = testing_support::SessionOnFile;

TEST_F(ValuePass, NextEpochHoldsTheRunningTotal) {
    read_values(
        "PUNKTSIGNATUR 10 20 0 0 1 P\nLAGEÄNDERUNG 10 20 3 4 1 \" 1998 \" 5 6\n"
        "NÄCHSTEEPOCHE 1 -2 \"1999\"\nNÄCHSTEEPOCHE 1 1 \"2000\" 7 8\n",
        horizontal_changes);
    ASSERT_EQ(session.part.pu.count(), 4);
    EXPECT_EQ(session.part.pu.pu_anzahl_signatur, 1);
    EXPECT_EQ(session.part.pu[2].pu_wert_rechts, 3.0);
    EXPECT_EQ(session.part.pu[2].pu_wert_lage, 1);
    EXPECT_EQ(session.part.pu[2].pu_epoche, 0);
    EXPECT_EQ(session.part.pu[2].pu_bez, " 1998 ");
    EXPECT_EQ(session.part.pu[2].pu_bez_rechts, 5.0);
    EXPECT_EQ(session.part.pu[2].pu_bez_hoch, 6.0);
    EXPECT_EQ(session.part.pu[3].pu_wert_rechts, 4.0);
    EXPECT_EQ(session.part.pu[3].pu_wert_hoch, 2.0);
    EXPECT_EQ(session.part.pu[3].pu_rechts, 10.0);
    EXPECT_EQ(session.part.pu[3].pu_wert_lage, 1);
    EXPECT_EQ(session.part.pu[3].pu_epoche, 1);
    EXPECT_EQ(session.part.pu[4].pu_wert_hoch, 3.0);
    EXPECT_EQ(session.part.pu[4].pu_epoche, 2);
    EXPECT_EQ(session.part.pu[4].pu_bez_hoch, 8.0);
}

TEST_F(ValuePass, NextEpochContinuesTheChangeThatCameLast) {
    // The height change is not shown, but it is the parent all the same.
    read_values("LAGEÄNDERUNG 1 2 3 4 0\nHÖHENÄNDERUNG 1 2 5 0\nNÄCHSTEEPOCHE 1 1\n",
                horizontal_changes);
    EXPECT_EQ(session.part.pu.count(), 1);
    read_values("NÄCHSTEEPOCHE 1 1\nLAGEÄNDERUNG 1 2 3 4 0\nHÖHENFEHLER 1 2 3\nnä 1 1\n",
                horizontal_changes);
    ASSERT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[2].pu_wert_rechts, 4.0);
}

TEST_F(ValuePass, BothChangesGiveAPointTwoExtraRows) {
    read_values("PUNKTSIGNATUR 1 2 0 0 1\nLAGEÄNDERUNG 1 2 3 4 1\nHÖHENÄNDERUNG 1 2 -5 0 \"x\"\n",
                both_changes);
    ASSERT_EQ(session.part.pu.count(), 3);
    EXPECT_EQ(session.part.pu[2].pu_wert_lage, 1);
    EXPECT_EQ(session.part.pu[2].pu_wert_hoehe, 0);
    EXPECT_EQ(session.part.pu[3].pu_wert_hoehe, -4);
    EXPECT_EQ(session.part.pu[3].pu_wert_dh, -5.0);
    EXPECT_EQ(session.part.pu[3].pu_bez, "x");
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, 0);
}

TEST_F(ValuePass, HeightEpochsRunLikewise) {
    read_values("HÖHENÄNDERUNG 1 2 5 1 a\nNÄCHSTEEPOCHE -2 \"b\" 3 4\n", height_changes);
    ASSERT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[2].pu_wert_dh, 3.0);
    EXPECT_EQ(session.part.pu[2].pu_wert_hoehe, 4);
    EXPECT_EQ(session.part.pu[2].pu_bez, "b");
    EXPECT_EQ(session.part.pu[2].pu_bez_rechts, 3.0);
    EXPECT_EQ(session.part.pu[2].pu_epoche, 1);
}

TEST_F(ValuePass, FlagOfAChangeIsAbsentOneCharacterOrTrue) {
    read_values(
        "LAGEÄNDERUNG 1 1 3 4\nLAGEÄNDERUNG 2 2 3 4 0\nLAGEÄNDERUNG 3 3 3 4 00\n"
        "LAGEÄNDERUNG 4 4 3 4 7\nLAGEÄNDERUNG 5 5 3 4 x\nLAGEÄNDERUNG 6 6 3 4 \"\"\n",
        horizontal_changes);
    ASSERT_EQ(session.part.pu.count(), 6);
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, -1);
    EXPECT_EQ(session.part.pu[2].pu_wert_lage, -1);
    EXPECT_EQ(session.part.pu[3].pu_wert_lage, 1);
    EXPECT_EQ(session.part.pu[4].pu_wert_lage, 1);
    EXPECT_EQ(session.part.pu[5].pu_wert_lage, -1);
    EXPECT_EQ(session.part.pu[6].pu_wert_lage, -1);
}

TEST_F(ValuePass, ResidualsOfBothKindsKeepNoTestValues) {
    read_values(
        "PUNKTSIGNATUR 1 2 0 0 1\nLAGERESTKLAFFUNGEN 1 2 3 4 1 50 1 60 2\n"
        "HÖHENRESTKLAFFUNGEN 1 2 5 1 70 3\n",
        both_residuals);
    ASSERT_EQ(session.part.pu.count(), 1);
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, 2);
    EXPECT_EQ(session.part.pu[1].pu_wert_hoehe, 5);
    EXPECT_EQ(session.part.pu[1].pu_wert_dh, 5.0);
    EXPECT_EQ(session.part.pu[1].pu_ev_lage, 1000.0);
    EXPECT_EQ(session.part.pu[1].pu_nv_lage, -99.0);
}

TEST_F(ValuePass, HorizontalResidualsHaveATestForEachComponent) {
    read_values("LAGERESTKLAFFUNGEN 1 2 3 4 1 50 1 0.4 2\n", horizontal_residuals);
    ASSERT_EQ(session.part.pu.count(), 1);
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, 2);
    EXPECT_EQ(session.part.pu[1].pu_ev_lage, 50.0);
    EXPECT_EQ(session.part.pu[1].pu_nv_lage, 1.0);
    EXPECT_EQ(session.part.pu[1].pu_ev_hoehe, 0.4);
    EXPECT_EQ(session.part.pu[1].pu_nv_hoehe, -99.0);
}

TEST_F(ValuePass, ResidualTestsNeedTheLastTokenAndTheFlag) {
    read_values(
        "LAGERESTKLAFFUNGEN 1 2 3 4 1 50 1 60\nLAGERESTKLAFFUNGEN 3 4 3 4 0 50 1 60 2\n"
        "LAGERESTKLAFFUNGEN 5 6 3 4 2 50 1 60 2\n",
        horizontal_residuals);
    EXPECT_EQ(session.part.pu[1].pu_ev_lage, 1000.0);
    EXPECT_EQ(session.part.pu[2].pu_ev_lage, 1000.0);
    EXPECT_EQ(session.part.pu[2].pu_wert_lage, -2);
    EXPECT_EQ(session.part.pu[3].pu_wert_lage, 0);
    EXPECT_EQ(session.part.pu[3].pu_wert_rechts, 3.0);
}

TEST_F(ValuePass, HeightResidualWithoutNvReadsZero) {
    read_values("HÖHENRESTKLAFFUNGEN 1 2 5 1 70\n", height_residuals);
    EXPECT_EQ(session.part.pu[1].pu_ev_lage, 70.0);
    EXPECT_EQ(session.part.pu[1].pu_nv_lage, 0.0);
    EXPECT_EQ(session.part.pu[1].pu_ev_hoehe, 1000.0);
}

TEST_F(ValuePass, ResidualWithoutSignatureMakesARowWithoutLabel) {
    read_values("PUNKTSIGNATUR 9 9 0 0 1\nLAGERESTKLAFFUNGEN 1 2 3 4 0\n", horizontal_residuals);
    ASSERT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[2].pu_signatur, 0);
    EXPECT_EQ(session.part.pu[2].pu_bez, "");
}

TEST_F(ValuePass, EllipseNeedsItsOrientation) {
    read_values("LAGEFEHLERELLIPSE 1 2 3 4\nLAGEFEHLERELLIPSE 5 6 3 4 150\n", ellipses);
    ASSERT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, 0);
    EXPECT_EQ(session.part.pu[1].pu_wert_rechts, 0.0);
    EXPECT_EQ(session.part.pu[2].pu_wert_lage, -3);
    EXPECT_EQ(session.part.pu[2].pu_wert_dh, 150.0);
}

TEST_F(ValuePass, ManyEllipsesFindTheirPointsInTheirOrder) {
    // Point i at (i, 2 i) gets an ellipse of i by 1; of the points 50 and 90 the later one counts,
    // whether it comes at once or much later. What has no point gets a row behind them.
    constexpr int count = 100;
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += "PUNKTSIGNATUR " + std::to_string(i) + " " + std::to_string(2 * i) + " 1 0 1\n";
    }
    text += "LAGEFEHLERELLIPSE -1 -1 7 8 9\n";
    for (int i = count; i >= 1; --i) {
        const std::string place = std::to_string(i) + " " + std::to_string(2 * i) + " ";
        text += "LAGEFEHLERELLIPSE " + place + std::to_string(i) + " 1 100\n";
        if (i == 50) {
            text += "LAGEFEHLERELLIPSE " + place + "500 5 50\nLAGEFEHLERELLIPSE -2 -2 7 8\n";
        }
    }
    text += "LAGEFEHLERELLIPSE 90 180 900 9 90\n";
    read_values(text, ellipses);
    ASSERT_EQ(session.part.pu.count(), count + 2);
    for (int i = 1; i <= count; ++i) {
        const PointRow& point = session.part.pu[i];
        ASSERT_EQ(point.pu_wert_lage, -3) << i;
        ASSERT_EQ(point.pu_wert_rechts, i == 50 || i == 90 ? 10.0 * i : i) << i;
        ASSERT_EQ(point.pu_wert_hoch, i == 50 ? 5 : i == 90 ? 9 : 1) << i;
        ASSERT_EQ(point.pu_wert_dh, i == 50 || i == 90 ? i : 100) << i;
    }
    EXPECT_EQ(session.part.pu[count + 1].pu_rechts, -1.0);
    EXPECT_EQ(session.part.pu[count + 1].pu_wert_dh, 9.0);
    EXPECT_EQ(session.part.pu[count + 2].pu_rechts, -2.0);
    EXPECT_EQ(session.part.pu[count + 2].pu_wert_lage, 0);
}

TEST_F(ValuePass, HeightErrorNeedsItsValue) {
    read_values("HÖHENFEHLER 1 2\nHÖHENFEHLER 3 4 1.5\n", height_errors);
    ASSERT_EQ(session.part.pu.count(), 2);
    EXPECT_EQ(session.part.pu[1].pu_wert_hoehe, 0);
    EXPECT_EQ(session.part.pu[2].pu_wert_hoehe, -6);
    EXPECT_EQ(session.part.pu[2].pu_wert_dh, 1.5);
}

TEST_F(ValuePass, OtherModesStoreNothing) {
    read_values("LAGEFEHLERELLIPSE 5 6 3 4 150\nLAGEÄNDERUNG 1 2 3 4 1\n", height_errors);
    EXPECT_EQ(session.part.pu.count(), 0);
}

TEST_F(ValuePass, ReadingTwiceGivesTheSameTable) {
    read_values("PUNKTSIGNATUR 1 2 0 0 1\nLAGEÄNDERUNG 1 2 3 4 1\nNÄCHSTEEPOCHE 1 1\n",
                horizontal_changes);
    wert_lesen(session);
    ASSERT_EQ(session.part.pu.count(), 3);
    EXPECT_EQ(session.part.pu[3].pu_wert_rechts, 4.0);
    EXPECT_EQ(session.part.pu.punkt_finden(1, 2), 3);
    session.part.obj.obj_puwe = 0;
    derive_value_modes(session.part.obj);
    wert_lesen(session);
    EXPECT_EQ(session.part.pu.count(), 1);
    EXPECT_EQ(session.part.pu.punkt_finden(1, 2), 1);
}

TEST_F(ValuePass, ValuesOfAnEarlierChoiceAreReset) {
    read_values("PUNKTSIGNATUR 1 2 0 0 1\nLAGEFEHLERELLIPSE 1 2 3 4 150\nHÖHENFEHLER 1 2 7\n",
                ellipses);
    session.part.obj.obj_puwe = height_errors;
    derive_value_modes(session.part.obj);
    wert_lesen(session);
    EXPECT_EQ(session.part.pu[1].pu_wert_lage, 0);
    EXPECT_EQ(session.part.pu[1].pu_wert_rechts, 0.0);
    EXPECT_EQ(session.part.pu[1].pu_wert_hoehe, -6);
}

}  // namespace
}  // namespace veldra
