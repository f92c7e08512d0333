#include "plot/sheet_number.h"

#include <gtest/gtest.h>

#include "reference/reference_system.h"

namespace veldra {
namespace {

class SheetNumberTest : public testing::Test {
 protected:
    SheetNumberTest() {
        session.part.obj.obj_bezu = 1;
        session.part.obj.obj_bezu_elli = 1;
        session.part.obj.obj_bezu_abbi = 1;
        // Somewhere in the second strip.
        session.part.extents = {2570000, 5610000, 2580000, 5620000, 0, 0};
    }

    std::string number_at(double rechts, double hoch, std::int16_t obj_nube) {
        session.blatt.blatt_rw_min = rechts;
        session.blatt.blatt_hw_min = hoch;
        session.part.obj.obj_nube = obj_nube;
        return SheetNumberText(session);
    }
    /// At a place in degrees of the document's own datum.
    std::string number_of(double latitude, double longitude, std::int16_t obj_nube) {
        const CoordinateChain chain(
            chain_setup(session, district_system, session.settings.numbez_datum));
        const std::optional<PlanePoint> corner =
            chain.to_document(GeographicPoint{latitude, longitude});
        return number_at(corner->rechts, corner->hoch, obj_nube);
    }

    Session session;
};

TEST_F(SheetNumberTest, MapSheetsOfTheThreeScales) {
    EXPECT_EQ(number_of(50.75, 7.1, 1), "5208");
    // 2 * 253 = 506 tenths of a degree and 2 * 21 = 42 sixths.
    EXPECT_EQ(number_of(50.75, 7.1, 4), "L 5308");
    // 4 * 126 = 504 and 4 * 10 = 40.
    EXPECT_EQ(number_of(50.75, 7.1, 5), "C 5506");
}

TEST_F(SheetNumberTest, MapSheetsEndAtTheirArea) {
    EXPECT_EQ(number_of(46.05, 6.1, 1), "9902");  // 55866 - 46000 + 36
    EXPECT_EQ(number_of(45.95, 6.1, 1), "");
    EXPECT_EQ(number_of(56.05, 6.1, 1), "-98");  // the row that begins at 56 degrees still counts
    EXPECT_EQ(number_of(56.15, 6.1, 1), "");
    EXPECT_EQ(number_of(50.75, 5.7, 1), "5200");
    EXPECT_EQ(number_of(50.75, 5.6, 1), "");
}

TEST_F(SheetNumberTest, KilometreSquares) {
    session.part.obj.obj_nube_meridian = 2;
    EXPECT_EQ(number_at(2571193.36, 5619477.3, 2), "25715619");
    EXPECT_EQ(number_at(2571193.36, 5619477.3, 3), "25567119");
    EXPECT_EQ(number_at(2571999.99, 5619000.01, 2), "25715619");
}

TEST_F(SheetNumberTest, NothingWithoutDistrictsOrSystem) {
    EXPECT_EQ(number_at(2571193, 5619477, 0), "");
    for (const std::int16_t local : {std::int16_t{0}, std::int16_t{-99}}) {
        session.part.obj.obj_bezu = local;
        EXPECT_EQ(number_at(2571193, 5619477, 1), "");
        EXPECT_EQ(number_at(2571193, 5619477, 2), "");
    }
}

TEST_F(SheetNumberTest, NothingOutsideOfTheMapping) {
    EXPECT_EQ(number_at(9e9, 5619477, 1), "");
    EXPECT_EQ(number_at(9e9, 5619477, 2), "");
}

}  // namespace
}  // namespace veldra
