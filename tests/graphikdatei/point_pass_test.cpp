#include "graphikdatei/point_pass.h"

#include <gmock/gmock.h>

#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using PointPass = testing_support::SessionOnFile;

TEST_F(PointPass, ReadsASignature) {
    read_points("Punktsignatur 2500000,500 5650000.250 1 0 1 \"A 17\"\n");
    ASSERT_EQ(session.pu.count(), 1);
    const PointRow& point = session.pu[1];
    EXPECT_EQ(point.pu_rechts, 2500000.5);
    EXPECT_EQ(point.pu_hoch, 5650000.25);
    EXPECT_EQ(point.pu_art_lage, 1);
    EXPECT_EQ(point.pu_art_hoehe, 0);
    EXPECT_EQ(point.pu_signatur, 1);
    EXPECT_EQ(point.pu_bez, "A 17");
    EXPECT_EQ(session.pu.pu_anzahl_signatur, 1);
}

TEST_F(PointPass, EqualCoordinatesAreOneRowWithTheLaterValues) {
    read_points("PUNKTSIGNATUR 1 2 1 2 1 \"a\" 5 6\nPUNKTSIGNATUR 1.000 2,0 3 4 0 \"b\" 7 8\n");
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_art_lage, 3);
    EXPECT_EQ(session.pu[1].pu_signatur, -1);
    EXPECT_EQ(session.pu[1].pu_bez, "b");
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 7.0);
}

TEST_F(PointPass, ASecondRecordChangesOnlyWhatItHoldsAndWhatIsAccepted) {
    read_points("PUNKTSIGNATUR 1 2 1 2 1 \"a\" 5 6\nPUNKTSIGNATUR 1 2 12 -1 7 \"\" 3\n");
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_art_lage, 1);
    EXPECT_EQ(session.pu[1].pu_art_hoehe, 2);
    EXPECT_EQ(session.pu[1].pu_signatur, 1);
    EXPECT_EQ(session.pu[1].pu_bez, "a");
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 5.0);
}

TEST_F(PointPass, OffsetsAreReadTogetherOrNotAtAll) {
    read_points("PUNKTSIGNATUR 1 2 0 0 1 \" x \" 5\nPUNKTSIGNATUR 3 4 0 0 2 y 5 6\n");
    EXPECT_EQ(session.pu[1].pu_bez, "x");
    EXPECT_EQ(session.pu[1].pu_bez_rechts, 0.0);
    EXPECT_EQ(session.pu[2].pu_bez_rechts, 5.0);
    EXPECT_EQ(session.pu[2].pu_bez_hoch, 6.0);
    EXPECT_EQ(session.pu[2].pu_signatur, 0);
}

TEST_F(PointPass, RecordWithoutFlagIsSkipped) {
    read_points("PUNKTSIGNATUR 1 2 0 0\n");
    EXPECT_EQ(session.pu.count(), 0);
}

TEST_F(PointPass, KindBeyond16BitsIsFatal) {
    try {
        read_points("\nPUNKTSIGNATUR 1 2 40000 0 1\n");
        FAIL() << "no error";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("Laufzeitfehler '6': Überlauf"));
        EXPECT_THAT(error.what(), ::testing::HasSubstr("Zeile: 2"));
        EXPECT_THAT(error.what(), ::testing::HasSubstr("pu_art_lage"));
    }
}

TEST_F(PointPass, TakesOnlyTheCurrentPart) {
    const char* text =
        "PUNKTSIGNATUR 9 9 0 0 1\nNETZTEIL A\nPUNKTSIGNATUR 1 1 0 0 1\nTITEL2 zwei\n"
        "NETZTEIL B\nPUNKTSIGNATUR 2 2 0 0 1\nNETZTEIL A\nPUNKTSIGNATUR 3 3 0 0 1\n";
    read_points(text);
    ASSERT_EQ(session.pu.count(), 2);
    EXPECT_EQ(session.pu[1].pu_rechts, 1.0);
    EXPECT_EQ(session.pu[2].pu_rechts, 3.0);
    session.netz_aktuell = 2;
    punkt_lesen(session);
    ASSERT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu[1].pu_rechts, 2.0);
}

TEST_F(PointPass, FileWithoutPartIsOneNamelessPart) {
    read_points("PUNKTSIGNATUR 1 1 0 0 1\n");
    EXPECT_EQ(session.netz_aktuell, 0);
    EXPECT_EQ(session.pu.count(), 1);
}

TEST_F(PointPass, PartWithoutSelectionKeepsTheDefaults) {
    read_points("NETZTEIL A\n");
    EXPECT_EQ(session.obj.obj_pube, 1);
    EXPECT_EQ(session.obj.obj_verw, 3);
    EXPECT_EQ(session.obj.obj_bezu, -99);
}

TEST_F(PointPass, SelectionWith13TokensIsDroppedWhole) {
    read_points("OBJEKTE 0 0 3 1 2 2 5 2 1 3 3 2\n");
    EXPECT_EQ(session.obj.obj_pube, 1);
    EXPECT_EQ(session.obj.obj_puwe, 0);
}

TEST_F(PointPass, SelectionFieldsOutOfRangeLeaveTheValueInForce) {
    read_points("OBJEKTE 0 2 9 1 6 -1 8 3 0 4 3 5 2 7 1\n");
    const ObjectSelection& obj = session.obj;
    EXPECT_EQ(obj.obj_pube, 0);
    EXPECT_EQ(obj.obj_pusi, 1);
    EXPECT_EQ(obj.obj_puwe, 0);
    EXPECT_EQ(obj.obj_test_restkl, table_true);
    EXPECT_EQ(obj.obj_nube, 1);
    EXPECT_EQ(obj.obj_nbez, 1);
    EXPECT_EQ(obj.obj_verw, 3);
    EXPECT_EQ(obj.obj_beob, 3);
    EXPECT_EQ(obj.obj_test_beob, table_false);
    EXPECT_EQ(obj.obj_test, 1);
    EXPECT_EQ(obj.obj_bezu, 3);
    EXPECT_EQ(obj.obj_bezu_elli, 5);
    EXPECT_EQ(obj.obj_bezu_abbi, 2);
    EXPECT_EQ(obj.obj_nube_meridian, 7);
    EXPECT_EQ(obj.obj_epbe, table_true);
}

TEST_F(PointPass, SelectionForcesTheFixedSystemsAndDerivesTheModes) {
    read_points("OBJEKTE 1 1 6 0 1 1 3 1 0 1 2 1 1\n");
    EXPECT_EQ(session.obj.obj_wert_lage, 2);
    EXPECT_EQ(session.obj.obj_wert_hoehe, 2);
    EXPECT_EQ(session.obj.obj_bezu_elli, 4);
    EXPECT_EQ(session.obj.obj_bezu_abbi, 2);
    EXPECT_EQ(session.obj.obj_nube_meridian, -99);
    read_points("OBJEKTE 1 1 6 0 1 1 3 1 0 1 1 4 2\n");
    EXPECT_EQ(session.obj.obj_bezu_elli, 1);
    EXPECT_EQ(session.obj.obj_bezu_abbi, 1);
}

TEST_F(PointPass, CommaEndsASelectionFieldAndHugeOnesAreNotFatal) {
    read_points("OBJEKTE 0,9 0.5 1e9 0 2,7 1 3 1 0 1 3 1 1 1e99\n");
    EXPECT_EQ(session.obj.obj_pube, 0);
    EXPECT_EQ(session.obj.obj_pusi, 0);
    EXPECT_EQ(session.obj.obj_puwe, 0);
    EXPECT_EQ(session.obj.obj_nube, 2);
    EXPECT_EQ(session.obj.obj_nube_meridian, -99);
}

TEST_F(PointPass, MovedDistrictLabelsHaveTwoForms) {
    read_points(
        "NUMBEZOFFSET 5208 10 20\nNUMBEZOFFSET L 5308 30 40\nNUMBEZOFFSET C 1 2\n"
        "NUMBEZOFFSET l 7 8\nNUMBEZOFFSET 5208 11 21\n");
    ASSERT_EQ(session.nuoff.count(), 3);
    EXPECT_EQ(session.nuoff[1].nuoff_bez, "5208");
    EXPECT_EQ(session.nuoff[1].nuoff_rechts, 11.0);
    EXPECT_EQ(session.nuoff[1].nuoff_hoch, 21.0);
    EXPECT_EQ(session.nuoff[2].nuoff_bez, "L 5308");
    EXPECT_EQ(session.nuoff[2].nuoff_hoch, 40.0);
    EXPECT_EQ(session.nuoff[3].nuoff_bez, "l");
}

TEST_F(PointPass, TitleLinesOfThePart) {
    session.titel[2].setTitelText("bleibt");
    read_points("TITEL2  zwei \nTITEL3\nTITEL4  \nT2 x\n");
    // "T2" is no prefix of a title keyword.
    EXPECT_EQ(session.titel[1].getTitelText(), "zwei");
    EXPECT_EQ(session.titel[2].getTitelText(), "bleibt");
    EXPECT_EQ(session.titel[3].getTitelText(), "");
    read_points("T kurz\n");
    EXPECT_EQ(session.titel[1].getTitelText(), "kurz");
}

TEST_F(PointPass, UnclosedQuoteLosesItsLastCharacter) {
    read_points("PUNKTSIGNATUR 1 2 0 0 1 \"abc\nPUNKTSIGNATUR 3 4 0 0 1 \"\"\n");
    EXPECT_EQ(session.pu[1].pu_bez, "ab");
    EXPECT_EQ(session.pu[2].pu_bez, "");
}

TEST_F(PointPass, ManyPointsAreFoundAgain) {
    std::string text;
    for (int i = 0; i < 5000; ++i) {
        text += "PUNKTSIGNATUR " + std::to_string(i) + ".5 " + std::to_string(i * 3) + " 0 0 1\n";
    }
    read_points(text);
    ASSERT_EQ(session.pu.count(), 5000);
    EXPECT_EQ(session.pu.punkt_finden(4321.5, 12963), 4322);
    EXPECT_EQ(session.pu.punkt_finden(4321.5, 12964), 0);
}

}  // namespace
}  // namespace veldra
