#include "graphikdatei/observation_pass.h"

#include <string>

#include <gmock/gmock.h>

#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

constexpr std::int16_t horizontal = 1;
constexpr std::int16_t heights = 2;
constexpr std::int16_t vectors = 3;

using ObservationPass = testing_support::SessionOnFile;

TEST_F(ObservationPass, DirectionsBothWaysMakeOneRow) {
    read_observations("RICHTUNG 1 2 3 4 50 1 2\nRICHTUNG 3 4 1 2 60 3 4\n", horizontal);
    ASSERT_EQ(session.lin.count(), 1);
    const LineRow& row = session.lin[1];
    EXPECT_EQ(row.lin_typ_hin, 11);
    EXPECT_EQ(row.lin_typ_rueck, 11);
    EXPECT_EQ(row.lin_typ_seite, 0);
    EXPECT_EQ(row.lin_ev_hin, 50.0);
    EXPECT_EQ(row.lin_ep_rueck, 4.0);
    EXPECT_EQ(row.lin_schluessel.text(), " 0000001.00 0000002.00 0000003.00 0000004.00");
}

TEST_F(ObservationPass, DistanceThenOrientationDropsTheOrientation) {
    read_observations("DISTANZ 1 2 3 4\nORIENTIERUNGSRICHTUNG 1 2 3 4 \"Turm\"\n", horizontal);
    ASSERT_EQ(session.lin.count(), 1);
    EXPECT_EQ(session.lin[1].lin_typ_seite, 1);
    EXPECT_EQ(session.lin[1].lin_fernziel.view(), "");
    EXPECT_EQ(session.lin.fernziel_anzahl, 0);
}

TEST_F(ObservationPass, OrientationThenDistanceDropsTheDistance) {
    read_observations("ORIENTIERUNGSRICHTUNG 1 2 3 4 \" Turm \"\nDISTANZ 3 4 1 2 50\n", horizontal);
    ASSERT_EQ(session.lin.count(), 1);
    EXPECT_EQ(session.lin[1].lin_typ_seite, 10);
    EXPECT_EQ(session.lin[1].lin_ev_seite, 1000.0);
    EXPECT_EQ(session.lin[1].lin_fernziel.view(), " Turm ");
    EXPECT_EQ(session.lin.fernziel_anzahl, 1);
}

TEST_F(ObservationPass, OrientationWithoutTargetKeepsItsRow) {
    read_observations("ORIENTIERUNGSRICHTUNG 1 2 3 4\n", horizontal);
    ASSERT_EQ(session.lin.count(), 1);
    EXPECT_EQ(session.lin[1].lin_typ_seite, 10);
    EXPECT_EQ(session.lin[1].lin_fernziel.view(), "");
    EXPECT_EQ(session.lin.fernziel_anzahl, 0);
}

TEST_F(ObservationPass, EachRemoteTargetHasALabel) {
    read_observations("O 1 2 3 4 A\nO 1 2 5 6 B\nO 1 2 7 8\n", horizontal);
    EXPECT_EQ(session.lin.fernziel_anzahl, 2);
    EXPECT_EQ(session.lbl_fzbez.size(), 3U);  // element 0 is the sample
    beob_lesen(session);
    EXPECT_EQ(session.lbl_fzbez.size(), 3U);
    session.obj.obj_beob = heights;
    beob_lesen(session);
    EXPECT_LE(session.lbl_fzbez.size(), 1U);
}

TEST_F(ObservationPass, SmallestEvAndLargestNvAndEpStay) {
    read_observations("DISTANZ 1 2 3 4 60 1 9\nDISTANZ 1 2 3 4 50 2 8\n", horizontal);
    EXPECT_EQ(session.lin[1].lin_ev_seite, 50.0);
    EXPECT_EQ(session.lin[1].lin_nv_seite, 2.0);
    EXPECT_EQ(session.lin[1].lin_ep_seite, 9.0);
}

TEST_F(ObservationPass, EvUnderTheLimitContributesOnlyItself) {
    read_observations("DISTANZ 1 2 3 4 60 1 2\nDISTANZ 1 2 3 4 0.4 7 8\n", horizontal);
    EXPECT_EQ(session.lin[1].lin_ev_seite, 0.4);
    EXPECT_EQ(session.lin[1].lin_nv_seite, 1.0);
    EXPECT_EQ(session.lin[1].lin_ep_seite, 2.0);
}

TEST_F(ObservationPass, KindsOfHorizontalObservations) {
    read_observations(
        "GPS-STRECKE 1 2 3 4\nGPS-RICHTUNG 1 2 5 6\nG 7 7 8 8\nD 9 9 8 8\nHÖHENUNTERSCHIED 0 0 1 "
        "1\n",
        horizontal);
    ASSERT_EQ(session.lin.count(), 4);
    EXPECT_EQ(session.lin[1].lin_typ_seite, 2);
    EXPECT_EQ(session.lin[2].lin_typ_hin, 12);
    EXPECT_EQ(session.lin[3].lin_typ_seite, 2);
    EXPECT_EQ(session.lin[4].lin_typ_seite, 1);
}

TEST_F(ObservationPass, KindsOfHeightObservations) {
    read_observations(
        "HÖHENUNTERSCHIED 1 2 3 4 50 1 2\nGPS-HÖHENUNTERSCHIED 1 2 5 6\nZENITWINKEL 3 4 1 2 7\n"
        "DISTANZ 1 2 9 9\n",
        heights);
    ASSERT_EQ(session.lin.count(), 2);
    EXPECT_EQ(session.lin[1].lin_typ_seite, 1);
    EXPECT_EQ(session.lin[1].lin_typ_rueck, 11);
    EXPECT_EQ(session.lin[1].lin_ev_rueck, 7.0);
    EXPECT_EQ(session.lin[2].lin_typ_seite, 2);
}

TEST_F(ObservationPass, VectorAndItsOppositeFallOnOneRow) {
    read_observations(
        "GPS-RAUMVEKTOR 5 6 1 2 10 1 1 20 2 2 30 3 3\nGPS-RAUMVEKTOR 1 2 5 6 11 1 1 19 4 2 30 3 "
        "5\n",
        vectors);
    ASSERT_EQ(session.lin.count(), 1);
    const LineRow& row = session.lin[1];
    EXPECT_EQ(row.lin_schluessel.coordinates().x1, 1.0);
    EXPECT_EQ(row.lin_typ_hin, 11);
    EXPECT_EQ(row.lin_typ_seite, 2);
    EXPECT_EQ(row.lin_typ_rueck, 11);
    EXPECT_EQ(row.lin_ev_hin, 10.0);
    EXPECT_EQ(row.lin_ev_seite, 19.0);
    EXPECT_EQ(row.lin_nv_seite, 4.0);
    EXPECT_EQ(row.lin_ep_rueck, 5.0);
}

TEST_F(ObservationPass, VectorTriplesNeedTheLastToken) {
    read_observations("GPS-RAUMVEKTOR 1 2 5 6 10 1 1 20 2 2 30 3\n", vectors);
    EXPECT_EQ(session.lin[1].lin_ev_hin, 1000.0);
}

TEST_F(ObservationPass, OppositeVectorsOfEqualEastingAreFatal) {
    try {
        read_observations("GPS-RAUMVEKTOR 1 2 1 6\nGPS-RAUMVEKTOR 1 6 1 2\n", vectors);
        FAIL() << "no error";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("Laufzeitfehler '9'"));
        EXPECT_THAT(error.what(), ::testing::HasSubstr("Zeile: 2"));
    }
}

TEST_F(ObservationPass, ObservationToItselfIsDropped) {
    read_observations("DISTANZ 1.001 2 1.004 2\nDISTANZ\n", horizontal);
    EXPECT_EQ(session.lin.count(), 0);
}

TEST_F(ObservationPass, CoordinatesRoundedToCentimetresIdentifyALine) {
    read_observations("DISTANZ 1.001 2 3 4\nDISTANZ 3.002 4 1.004 2\n", horizontal);
    EXPECT_EQ(session.lin.count(), 1);
}

TEST_F(ObservationPass, ClassesComeFromThePointsOfTheRowsEnds) {
    read_observations(
        "PUNKTSIGNATUR 1 2 0 0 1\nPUNKTSIGNATUR 3 4 1 2 1\nDISTANZ 3 4 1 2\nDISTANZ 1 2 3 4\n"
        "DISTANZ 1 2 8 9\n",
        horizontal);
    EXPECT_EQ(session.lin[1].lin_klasse_von, 2);
    EXPECT_EQ(session.lin[1].lin_klasse_nach, 0);
    EXPECT_EQ(session.lin[2].lin_klasse_von, 0);
    EXPECT_EQ(session.lin[2].lin_klasse_nach, 3);
}

TEST_F(ObservationPass, ClassesOfManyPointsAreToldApart) {
    // Point i at (i, 7) has the class of its kind of height, and every tenth is no point of the
    // file. Each is the first end of one line and the second of another.
    constexpr int count = 20000;
    const auto class_of = [](int i) { return i % 10 == 0 ? 3 : i % 4 < 2 ? 1 : i % 4; };
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i % 10 != 0) {
            text += "PUNKTSIGNATUR " + std::to_string(i) + " 7 1 " + std::to_string(i % 4) + " 1\n";
        }
    }
    const auto partner = [](int i) { return (i + 6001) % count; };
    for (int i = 0; i < count; ++i) {
        text += "DISTANZ " + std::to_string(i) + " 7 " + std::to_string(partner(i)) + " 7\n";
    }
    read_observations(text, horizontal);
    ASSERT_EQ(session.lin.count(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(session.lin[i + 1].lin_klasse_von, class_of(i)) << i;
        ASSERT_EQ(session.lin[i + 1].lin_klasse_nach, class_of(partner(i))) << i;
    }
}

TEST_F(ObservationPass, OrientationTakesTheClassOfItsFirstEndOnly) {
    read_observations("PUNKTSIGNATUR 1 2 0 0 1\nPUNKTSIGNATUR 3 4 0 0 1\nO 1 2 3 4 T\n",
                      horizontal);
    EXPECT_EQ(session.lin[1].lin_klasse_von, 0);
    EXPECT_EQ(session.lin[1].lin_klasse_nach, 3);
}

TEST_F(ObservationPass, OtherChoicesReadNothing) {
    read_observations("DISTANZ 1 2 3 4\n", 0);
    EXPECT_EQ(session.lin.count(), 0);
}

TEST_F(ObservationPass, KeysBeyondTheirFieldsStayDistinct) {
    read_observations(
        "DISTANZ 120500000.5 1 120500001.5 2\nDISTANZ 120500001.5 2 120500000.5 1\n"
        "DISTANZ 120500000.5 1 120500002.5 2\nDISTANZ -12345678.25 1 2 3\n",
        horizontal);
    ASSERT_EQ(session.lin.count(), 3);
    EXPECT_EQ(session.lin[1].lin_schluessel.text(),
              "120500000.50 0000001.00120500001.50 0000002.00");
    // Read back by position: characters 1 to 11, 12 to 22, 23 to 33, 34 to 44.
    EXPECT_EQ(session.lin[1].lin_schluessel.coordinates().x1, 120500000.5);
    EXPECT_EQ(session.lin[1].lin_schluessel.coordinates().y1, 0.0);
    EXPECT_EQ(session.lin[1].lin_schluessel.coordinates().x2, 120500001.0);
    EXPECT_EQ(session.lin[1].lin_schluessel.coordinates().y2, 50.0);
}

}  // namespace
}  // namespace veldra
