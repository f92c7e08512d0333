#include "reference/reference_system.h"

#include <limits>

#include <gtest/gtest.h>

#include "network_builder.h"

namespace veldra {
namespace {

constexpr std::int16_t unset = -99;

class ReferenceSystemTest : public testing::Test {
 protected:
    ReferenceSystemTest() {
        session.settings.numbez_datum = {};
        session.settings.verw_datum = {};
        test::add_point(session, 0, 0);
        centre(2576000, 5624000);
    }

    /// The extents around a centre.
    void centre(double rechts, double hoch) {
        session.extents.gesamt_rw_min = rechts - 5000;
        session.extents.gesamt_rw_max = rechts + 5000;
        session.extents.gesamt_hw_min = hoch - 4000;
        session.extents.gesamt_hw_max = hoch + 4000;
    }

    struct Outcome {
        int bezu;
        int elli;
        int abbi;
        bool operator==(const Outcome&) const = default;
    };
    Outcome resolve(int bezu, int elli = 0, int abbi = 0) {
        session.obj.obj_bezu = static_cast<std::int16_t>(bezu);
        session.obj.obj_bezu_elli = elli;
        session.obj.obj_bezu_abbi = abbi;
        ResolveSystem(session);
        return {session.obj.obj_bezu, session.obj.obj_bezu_elli, session.obj.obj_bezu_abbi};
    }

    Session session;
};

TEST_F(ReferenceSystemTest, ReferencePointIsTheCentreOfTheExtents) {
    const ReferencePoint point = reference_point(session);
    EXPECT_EQ(point.rechts, 2576000);
    EXPECT_EQ(point.hoch, 5624000);
    EXPECT_EQ(point.number, 2);
}

TEST_F(ReferenceSystemTest, SevenDigitEastingIsDhdnWithBessel) {
    centre(2576000.00, 5624000);
    EXPECT_EQ(resolve(unset), (Outcome{1, 1, 1}));
}

TEST_F(ReferenceSystemTest, EightDigitEastingOfZone32IsEtrsWithGrs80AndUtm) {
    centre(32400000.00, 5624000);
    EXPECT_EQ(reference_point(session).number, 32);
    EXPECT_EQ(resolve(unset), (Outcome{2, 4, 2}));
}

TEST_F(ReferenceSystemTest, NumberFifteenIsStillAStripAndSixteenAZone) {
    centre(15999000, 5624000);
    EXPECT_EQ(resolve(unset), (Outcome{1, 1, 1}));
    centre(16001000, 5624000);
    EXPECT_EQ(resolve(unset), (Outcome{2, 4, 2}));
}

TEST_F(ReferenceSystemTest, EastingsDecideBetweenDhdnAndEtrs) {
    EXPECT_EQ(resolve(1, 5, 2), (Outcome{1, 1, 1}));
    EXPECT_EQ(resolve(2, 4, 2), (Outcome{1, 1, 1}));
    centre(32400000, 5624000);
    EXPECT_EQ(resolve(1, 1, 1), (Outcome{2, 4, 2}));
    EXPECT_EQ(resolve(2, 2, 1), (Outcome{2, 4, 2}));
}

TEST_F(ReferenceSystemTest, OtherSystemKeepsAMappingThatFitsTheEastings) {
    EXPECT_EQ(resolve(3, 5, 1), (Outcome{3, 5, 1}));
    EXPECT_EQ(resolve(3, 2, 2), (Outcome{3, 1, 1}));
    centre(32400000, 5624000);
    EXPECT_EQ(resolve(3, 5, 1), (Outcome{3, 4, 2}));
    EXPECT_EQ(resolve(3, 2, 2), (Outcome{3, 2, 2}));
}

TEST_F(ReferenceSystemTest, LocalSystemHasNoStrip) {
    session.obj.obj_nube_meridian = 2;
    EXPECT_EQ(resolve(0, 3, 2), (Outcome{0, 3, 2}));
    EXPECT_EQ(session.obj.obj_nube_meridian, unset);
    centre(32400000, 5624000);
    session.obj.obj_nube_meridian = 2;
    EXPECT_EQ(resolve(0, 3, 2), (Outcome{0, 3, 2}));
    EXPECT_EQ(session.obj.obj_nube_meridian, unset);
}

TEST_F(ReferenceSystemTest, NothingReadLeavesTheSystemUnset) {
    session.pu.clear();
    EXPECT_EQ(resolve(1, 1, 1).bezu, unset);
}

TEST_F(ReferenceSystemTest, LinesAloneAreEnoughForASystem) {
    session.pu.clear();
    test::add_line(session, {2570000, 5600000, 2571000, 5600000});
    EXPECT_EQ(resolve(unset), (Outcome{1, 1, 1}));
}

TEST_F(ReferenceSystemTest, DistrictStripIsThatOfTheReferencePoint) {
    resolve(unset);
    EXPECT_EQ(session.obj.obj_nube_meridian, 2);
    session.obj.obj_nube_meridian = unset;
    // Strip 2 far to the east, beyond 7.5 degrees, belongs to strip 3.
    centre(2640000, 5624000);
    resolve(unset);
    EXPECT_EQ(session.obj.obj_nube_meridian, 3);
    session.obj.obj_nube_meridian = unset;
    centre(32400000, 5624000);
    resolve(unset);
    EXPECT_EQ(session.obj.obj_nube_meridian, 3) << "longitude 7.6 of zone 32";
}

TEST_F(ReferenceSystemTest, ChosenStripStaysWhileItDiffersByUpToFive) {
    for (const std::int32_t chosen : {2, 3, 0, 7}) {
        session.obj.obj_nube_meridian = chosen;
        resolve(1);
        EXPECT_EQ(session.obj.obj_nube_meridian, chosen);
    }
    for (const std::int32_t far : {8, -4, std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()}) {
        session.obj.obj_nube_meridian = far;
        resolve(1);
        EXPECT_EQ(session.obj.obj_nube_meridian, 2) << far;
    }
}

TEST_F(ReferenceSystemTest, DistrictRowIsTakenNegated) {
    // At 7.6 degrees the strip is 3; a row of 600" in longitude, negated, leads to 7.43.
    centre(32400000, 5624000);
    session.settings.numbez_datum[1].dlam0 = 600;
    resolve(unset);
    EXPECT_EQ(session.obj.obj_nube_meridian, 2);
}

TEST_F(ReferenceSystemTest, EachSystemTakesItsOwnDatumRow) {
    for (std::size_t row = 0; row < 3; ++row) {
        session.settings.numbez_datum[row].dlam0 = static_cast<double>(row + 1);
        session.settings.verw_datum[row].dlam0 = static_cast<double>(row + 10);
    }
    for (const int system : {1, 2, 3}) {
        session.obj.obj_bezu = static_cast<std::int16_t>(system);
        const PlaneSystem reference{1, 1};
        EXPECT_EQ(chain_setup(session, reference, session.settings.numbez_datum).row.dlam0, system);
        EXPECT_EQ(chain_setup(session, reference, session.settings.verw_datum).row.dlam0,
                  system + 9);
    }
    for (const int none : {-99, 0, 4}) {
        session.obj.obj_bezu = static_cast<std::int16_t>(none);
        EXPECT_EQ(chain_setup(session, {1, 1}, session.settings.numbez_datum).row.dlam0, 0) << none;
    }
}

TEST_F(ReferenceSystemTest, OtherSystemFindsItsDistrictsByItsOwnRow) {
    // At 7.6 degrees the strip is 3; a row of 600" in longitude, negated, leads to 7.43.
    centre(32400000, 5624000);
    session.settings.numbez_datum[0].dlam0 = 600;
    session.settings.numbez_datum[1].dlam0 = 600;
    EXPECT_EQ(resolve(3, 4, 2), (Outcome{3, 4, 2}));
    EXPECT_EQ(session.obj.obj_nube_meridian, 3);
    session.settings.numbez_datum = {};
    session.settings.numbez_datum[2].dlam0 = 600;
    session.obj.obj_nube_meridian = unset;
    resolve(3, 4, 2);
    EXPECT_EQ(session.obj.obj_nube_meridian, 2);
}

TEST(DatumShift, AllZeroRowLeavesEveryLatitudeUnchanged) {
    for (const double latitude : {-89.0, 0.0, 46.5, 50.0, 54.123456789, 90.0}) {
        const GeographicPoint shifted = DatumShift({}, {latitude, 7.25});
        EXPECT_DOUBLE_EQ(shifted.latitude, latitude);
        EXPECT_DOUBLE_EQ(shifted.longitude, 7.25);
    }
}

TEST(DatumShift, EachParameterHasItsRole) {
    const GeographicPoint point{52, 10};
    const auto shift = [&](const DatumRow& row) { return DatumShift(row, point); };
    const GeographicPoint north = shift({.dphi0 = 3.6});
    EXPECT_NEAR(north.latitude, 52.001, 1e-12);
    EXPECT_NEAR(north.longitude, 10, 1e-12);
    const GeographicPoint east = shift({.dlam0 = -7.2});
    EXPECT_NEAR(east.latitude, 52, 1e-12);
    EXPECT_NEAR(east.longitude, 9.998, 1e-12);
    // 3.6" per degree over two degrees from 50; over all ten degrees of longitude.
    EXPECT_NEAR(shift({.sphi = 3.6}).latitude, 52.002, 1e-12);
    EXPECT_NEAR(shift({.sphi = 3.6}).longitude, 10, 1e-12);
    EXPECT_NEAR(shift({.slam = 3.6}).longitude, 10.01, 1e-12);
    EXPECT_NEAR(shift({.slam = 3.6}).latitude, 52, 1e-12);
    // 206.264806..." are a thousandth of a radian.
    const GeographicPoint turned = shift({.rot = 206.26480624709637});
    EXPECT_NEAR(turned.latitude, 52 - 0.01, 1e-12);
    EXPECT_NEAR(turned.longitude, 10 + 0.002, 1e-12);
}

TEST(DatumShift, RotationTakesTheScales) {
    const DatumRow row{.sphi = 360, .slam = 720, .rot = 206.26480624709637};
    const GeographicPoint shifted = DatumShift(row, {51, 10});
    // a = 1.1, b = 1.2, c = 0.001
    EXPECT_NEAR(shifted.latitude, 1.1 + 50 - 1.2 * 10 * 0.001, 1e-12);
    EXPECT_NEAR(shifted.longitude, 1.1 * 0.001 + 12, 1e-12);
}

TEST(DatumShift, NegatedRowInvertsToTheFirstOrderOnly) {
    const DatumRow row{.dphi0 = 4, .dlam0 = -3, .sphi = 0.5, .slam = -0.4, .rot = 2};
    const GeographicPoint back = DatumShift(negated(row), DatumShift(row, {51, 7}));
    EXPECT_NEAR(back.latitude, 51, 1e-6);
    EXPECT_NEAR(back.longitude, 7, 1e-6);
    EXPECT_NE(back.latitude, 51);
}

}  // namespace
}  // namespace veldra
