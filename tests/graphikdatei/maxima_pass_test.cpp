#include "graphikdatei/maxima_pass.h"

#include "session_fixture.h"

namespace veldra {
namespace {

class MaximaPass : public testing_support::SessionOnFile {
 protected:
    void read(std::string_view utf8) {
        use_file(utf8);
        maxima_lesen(session);
    }
};

TEST_F(MaximaPass, TakesTheLargestOfEachKindFromAllParts) {
    read(
        "NETZTEIL A\n"
        "LAGEÄNDERUNG 1 2 3 4 1 \"1998\"\n"
        "LAGEÄNDERUNG 3 4 6 8 0 \"1999\"\n"
        "NETZTEIL B\n"
        "LAGERESTKLAFFUNGEN 5 6 -3 4 1\n"
        "LAGEFEHLERELLIPSE 7 8 -2.5 1 100\n"
        "HÖHENÄNDERUNG 9 10 -7 1 \"2001\"\n"
        "HÖHENRESTKLAFFUNGEN 11 12 -1.5 0\n"
        "HÖHENFEHLER 13 14 -0.5\n");
    EXPECT_EQ(session.max_ap[1].wert, 5.0);
    EXPECT_EQ(session.max_ap[1].rechts, 1.0);
    EXPECT_EQ(session.max_ap[1].epoche, "1998");
    EXPECT_EQ(session.max_np[1].wert, 10.0);
    EXPECT_EQ(session.max_ap[2].wert, 5.0);
    EXPECT_EQ(session.max_np[3].wert, 2.5);
    EXPECT_EQ(session.max_ap[4].wert, -7.0);
    EXPECT_EQ(session.max_ap[4].epoche, "2001");
    EXPECT_EQ(session.max_np[5].wert, 1.5);
    EXPECT_EQ(session.max_np[5].hoch, 12.0);
    EXPECT_EQ(session.max_np[6].wert, 0.5);
    EXPECT_EQ(session.max_ap[6].wert, 0.0);
    EXPECT_EQ(session.max_ap[6].rechts, -99.0);
}

TEST_F(MaximaPass, TiesKeepTheFirstRecordAcrossParts) {
    read(
        "NETZTEIL A\nHÖHENFEHLER 1 1 2\nNETZTEIL B\nHÖHENFEHLER 2 2 2\n"
        "HÖHENÄNDERUNG 1 1 3 0\nHÖHENÄNDERUNG 2 2 -3 0\n");
    EXPECT_EQ(session.max_np[6].rechts, 1.0);
    EXPECT_EQ(session.max_np[4].wert, 3.0);
}

TEST_F(MaximaPass, EpochsContinueTheirParentByRunningTotals) {
    read(
        "LAGEÄNDERUNG 1 2 3 4 0 \"a\"\nNÄCHSTEEPOCHE 3 4 \"b\"\nNÄCHSTEEPOCHE -6 -8 \"c\"\n"
        "HÖHENÄNDERUNG 5 6 1 1\nN -4 \"d\"\n");
    EXPECT_EQ(session.max_np[1].wert, 10.0);
    EXPECT_EQ(session.max_np[1].epoche, "b");
    EXPECT_EQ(session.max_ap[4].wert, -3.0);
    EXPECT_EQ(session.max_ap[4].epoche, "d");
    EXPECT_EQ(session.max_ap[4].rechts, 5.0);
}

TEST_F(MaximaPass, AnotherValueRecordForgetsTheParentUnlessItsRequiredTokenIsMissing) {
    read("LAGEÄNDERUNG 1 2 3 4 0\nHÖHENFEHLER 1 2 1\nNÄCHSTEEPOCHE 30 40\n");
    EXPECT_EQ(session.max_np[1].wert, 5.0);
    read("LAGEÄNDERUNG 1 2 3 4 0\nHÖHENFEHLER 1 2\nNÄCHSTEEPOCHE 3 4\n");
    EXPECT_EQ(session.max_np[1].wert, 10.0);
    read("LAGEÄNDERUNG 1 2 3 4 0\nPUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL X\nNÄCHSTEEPOCHE 3 4\n");
    EXPECT_EQ(session.max_np[1].wert, 10.0);
}

TEST_F(MaximaPass, FlagDecidesTheSet) {
    read("LAGERESTKLAFFUNGEN 1 1 3 4 2\n");
    EXPECT_EQ(session.max_ap[2].wert, 5.0);
    read("LAGERESTKLAFFUNGEN 1 1 3 4\nHÖHENRESTKLAFFUNGEN 1 1 2 ja\n");
    EXPECT_EQ(session.max_np[2].wert, 5.0);
    EXPECT_EQ(session.max_ap[5].wert, 2.0);
    EXPECT_EQ(session.max_ap[2].wert, 0.0);
}

TEST_F(MaximaPass, NameComesFromASignatureWithLabel) {
    read("PUNKTSIGNATUR 1 2 0 0 1 \" P 1 \"\nHÖHENFEHLER 1 2 3\nLAGEFEHLERELLIPSE 1 2 3 2 1\n");
    EXPECT_EQ(session.max_np[6].bez, " P 1 ");
    EXPECT_EQ(session.max_np[3].bez, " P 1 ");
}

TEST_F(MaximaPass, MaximumOnAPointWithoutLabelShowsNoName) {
    read("PUNKTSIGNATUR 1 2 0 0 1\nPUNKT 1 2 0 0 1 \"kurz\"\nHÖHENFEHLER 1 2 3\n");
    EXPECT_EQ(session.max_np[6].bez, "");
}

TEST_F(MaximaPass, EmptyFileLeavesEverythingAtDefault) {
    session.max_ap[1].wert = 5;
    read("");
    EXPECT_EQ(session.max_ap[1].wert, 0.0);
    EXPECT_EQ(session.max_ap[1].rechts, -99.0);
}

TEST_F(MaximaPass, AbbreviationsFollowThisPassOrder) {
    // "L" is the change, "H" the height change, and "N" the next epoch here.
    read("L 1 2 3 4 0\nN 3 4\nH 1 2 9 0\n");
    EXPECT_EQ(session.max_np[1].wert, 10.0);
    EXPECT_EQ(session.max_np[4].wert, 9.0);
}

}  // namespace
}  // namespace veldra
