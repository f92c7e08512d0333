#include "drawing/district_grid.h"

#include <cmath>

#include <gtest/gtest.h>

namespace veldra {
namespace {

/// Plane coordinates straight from the library.
PlanePoint direct(const PlaneSystem& system, std::int32_t number, double latitude,
                  double longitude) {
    Koordtrans library;
    std::int32_t status = -1;
    library.DEFSYSTEM(1, system.ellipsoid, system.mapping, status);
    PlanePoint point;
    library.GEGGKO(1, latitude, longitude, number, point.rechts, point.hoch, 3, status);
    EXPECT_EQ(status, 0);
    return point;
}

constexpr PlaneSystem bessel_strips{1, 1};

/// A document in DHDN strip 2 that looks at a rectangle of latitudes and longitudes in degrees.
DistrictInputs looking_at(std::int16_t obj_nube, double south, double west, double north,
                          double east) {
    DistrictInputs inputs;
    inputs.obj_nube = obj_nube;
    inputs.obj_bezu = 1;
    inputs.chain = {bessel_strips, 2, bessel_strips, {}};
    inputs.obj_nube_meridian = 2;
    const PlanePoint low = direct(bessel_strips, 2, south, west);
    const PlanePoint high = direct(bessel_strips, 2, north, east);
    inputs.view = {low.rechts, low.hoch, high.rechts, high.hoch};
    return inputs;
}

/// A view of a few hundred metres around a place, so that only the tiles around it are built.
DistrictInputs around(std::int16_t obj_nube, double latitude, double longitude) {
    constexpr double d = 0.003;
    return looking_at(obj_nube, latitude - d, longitude - d, latitude + d, longitude + d);
}

/// The node nearest to a place of the document.
std::size_t nearest(const DistrictGrid& grid, const PlanePoint& place) {
    std::size_t best = 0;
    double least = 1e300;
    for (std::size_t n = 1; n < grid.grid_rechts.size(); ++n) {
        const double distance =
            std::hypot(grid.grid_rechts[n] - place.rechts, grid.grid_hoch[n] - place.hoch);
        if (distance < least) {
            least = distance;
            best = n;
        }
    }
    return best;
}

/// The node at a latitude and longitude of a small view around it.
struct Node {
    std::string bez;
    std::string ecke;
    double distance;
};
Node node_at(std::int16_t obj_nube, double latitude, double longitude) {
    const DistrictGrid grid = BuildTkGrid(around(obj_nube, latitude, longitude));
    const PlanePoint place = direct(bessel_strips, 2, latitude, longitude);
    const std::size_t n = nearest(grid, place);
    return {grid.grid_bez.at(n), grid.grid_bez_ecke.at(n),
            std::hypot(grid.grid_rechts[n] - place.rechts, grid.grid_hoch[n] - place.hoch)};
}

constexpr double minute = 1.0 / 60;

TEST(TkGrid, Sheet5208HasItsSouthWestCornerAt5042And7) {
    const Node node = node_at(districts::tk25, 50 + 42 * minute, 7);
    EXPECT_EQ(node.bez, "5208");
    EXPECT_LT(node.distance, 0.001);
}

TEST(TkGrid, FourCornersOfSheet5208LieWithinAMillimetre) {
    EXPECT_EQ(node_at(districts::tk25, 50 + 42 * minute, 7 + 10 * minute).bez, "5209");
    EXPECT_EQ(node_at(districts::tk25, 50 + 48 * minute, 7).bez, "5108");
    EXPECT_EQ(node_at(districts::tk25, 50 + 48 * minute, 7 + 10 * minute).bez, "5109");
    for (const double latitude : {50 + 42 * minute, 50 + 48 * minute}) {
        for (const double longitude : {7.0, 7 + 10 * minute}) {
            EXPECT_LT(node_at(districts::tk25, latitude, longitude).distance, 0.001);
        }
    }
}

TEST(TkGrid, NamesOfTheFourSheetsAroundANode) {
    EXPECT_EQ(node_at(districts::tk25, 50 + 42 * minute, 7).ecke,
              " 5207 | 5208 \r\n  5307 | 5308 ");
}

TEST(TkGrid, Tk50AndTk100BearTheirLetterAndTheSouthWesternSheet) {
    // Two by two sheets of the TK 25 from row 53 and column 08 to the north and east.
    const Node sheet50 = node_at(districts::tk50, 50 + 36 * minute, 7);
    EXPECT_EQ(sheet50.bez, "L 5308");
    EXPECT_EQ(sheet50.ecke, " L 5306 | L 5308 \r\n  L 5506 | L 5508 ");
    // Four by four: rows of 24 minutes from the equator, columns of 40 from Greenwich.
    const Node sheet100 = node_at(districts::tk100, 50 + 24 * minute, 6 + 40 * minute);
    EXPECT_EQ(sheet100.bez, "C 5506");
    EXPECT_EQ(sheet100.ecke, " C 5502 | C 5506 \r\n  C 5902 | C 5906 ");
}

TEST(TkGrid, RowDigitsBeginAt46AndEndAt56Degrees) {
    EXPECT_EQ(node_at(districts::tk25, 46, 7).bez, "9908");
    EXPECT_EQ(node_at(districts::tk25, 46 - 6 * minute, 7).bez, "..08") << "incomplete, but kept";
    EXPECT_EQ(node_at(districts::tk25, 56 - 6 * minute, 7).bez, "0008");
    EXPECT_EQ(node_at(districts::tk25, 56, 7).bez, "..08");
}

TEST(TkGrid, ColumnDigitsBeginAt540AndEndAt2220) {
    EXPECT_EQ(node_at(districts::tk25, 50.5, 5 + 40 * minute).bez, "5400");
    EXPECT_EQ(node_at(districts::tk25, 50.5, 5 + 30 * minute).bez, "54..");
    EXPECT_EQ(node_at(districts::tk25, 50.5, 22 + 10 * minute).bez, "5499");
    EXPECT_EQ(node_at(districts::tk25, 50.5, 22 + 20 * minute).bez, "54..");
}

TEST(TkGrid, NodeOutsideInBothAxesHasNoNumber) {
    const Node node = node_at(districts::tk25, 45.5, 5);
    EXPECT_EQ(node.bez, "");
    EXPECT_EQ(node.ecke, "");
}

TEST(TkGrid, SouthernNeighboursLookTenMinutesBeyondTheNorthernEnd) {
    // Row 560 at 56 degrees and, 3366 minutes, row 561: 3356 is still up to 3360.
    EXPECT_EQ(node_at(districts::tk25, 56, 7).ecke, " ..07 | ..08 \r\n  0007 | 0008 ");
    EXPECT_EQ(node_at(districts::tk25, 56 + 6 * minute, 7).ecke, " ..07 | ..08 \r\n  -107 | -108 ");
    EXPECT_EQ(node_at(districts::tk25, 56 + 12 * minute, 7).ecke,
              " ..07 | ..08 \r\n  ..07 | ..08 ");
    // The lower test is that of the node itself.
    EXPECT_EQ(node_at(districts::tk25, 46, 7).ecke, " 9907 | 9908 \r\n  ..07 | ..08 ");
    EXPECT_EQ(node_at(districts::tk25, 46 + 6 * minute, 7).ecke, " 9807 | 9808 \r\n  9907 | 9908 ");
}

TEST(TkGrid, WesternNeighboursSubtractTheStepOfTheOtherAxis) {
    // 340 minutes less 6 is below 340; 350 less 6 is above.
    EXPECT_EQ(node_at(districts::tk25, 50.5, 5 + 40 * minute).ecke,
              " 54.. | 5400 \r\n  55.. | 5500 ");
    EXPECT_EQ(node_at(districts::tk25, 50.5, 5 + 50 * minute).ecke,
              " 5400 | 5401 \r\n  5500 | 5501 ");
    // 1340 less 6 is up to 1340; 1350 less 6 is not.
    EXPECT_EQ(node_at(districts::tk25, 50.5, 22 + 20 * minute).ecke,
              " 5499 | 54.. \r\n  5599 | 55.. ");
    EXPECT_EQ(node_at(districts::tk25, 50.5, 22 + 30 * minute).ecke,
              " 54.. | 54.. \r\n  55.. | 55.. ");
    // Sheets of the TK 100: 1360 less 24 is up to 1340.
    EXPECT_EQ(node_at(districts::tk100, 50.4, 22 + 40 * minute).ecke,
              " C 5598 | C 55.. \r\n  C 5998 | C 59.. ");
}

TEST(TkGrid, RangeIsOneTileLargerOnEachSide) {
    // 50.72 to 50.78 and 7.02 to 7.12 degrees lie within sheet 5208: row 507, column 42.
    const DistrictGrid grid = BuildTkGrid(looking_at(districts::tk25, 50.72, 7.02, 50.78, 7.12));
    EXPECT_EQ(grid.grid_spalten, 3);
    EXPECT_EQ(grid.grid_zeilen, 3);
    ASSERT_EQ(grid.grid_bez.size(), 10U);
    EXPECT_EQ(grid.grid_bez[1], "5307");
    EXPECT_EQ(grid.grid_bez[2], "5207");
    EXPECT_EQ(grid.grid_bez[4], "5308") << "columns first";
    EXPECT_EQ(grid.grid_bez[5], "5208");
    EXPECT_EQ(grid.grid_bez[9], "5109");
}

TEST(TkGrid, NodesGoThroughTheDatumRowAsItStandsAndTheViewThroughItNegated) {
    DistrictInputs inputs = around(districts::tk25, 50 + 42 * minute, 7);
    inputs.chain.row = {.dphi0 = 3.6, .dlam0 = -7.2};
    const DistrictGrid grid = BuildTkGrid(inputs);
    const PlanePoint shifted = direct(bessel_strips, 2, 50 + 42 * minute + 0.001, 7 - 0.002);
    const std::size_t n = nearest(grid, shifted);
    EXPECT_EQ(grid.grid_bez[n], "5208");
    EXPECT_NEAR(grid.grid_rechts[n], shifted.rechts, 1e-6);
    EXPECT_NEAR(grid.grid_hoch[n], shifted.hoch, 1e-6);
    // A degree to the south: the sheets under the view are those a degree to the north of it.
    inputs.chain.row = {.dphi0 = -3600};
    const DistrictGrid far = BuildTkGrid(inputs);
    EXPECT_EQ(far.grid_bez[nearest(far, direct(bessel_strips, 2, 50 + 42 * minute, 7))], "4208");
}

TEST(TkGrid, DocumentMayBeInUtm) {
    DistrictInputs inputs;
    inputs.obj_nube = districts::tk25;
    inputs.obj_bezu = 2;
    const PlaneSystem etrs{4, 2};
    inputs.chain = {etrs, 32, district_system, {}};
    const PlanePoint corner = direct(etrs, 32, 50 + 42 * minute, 7);
    inputs.view = {corner.rechts - 100, corner.hoch - 100, corner.rechts + 100, corner.hoch + 100};
    const DistrictGrid grid = BuildTkGrid(inputs);
    const std::size_t n = nearest(grid, corner);
    EXPECT_EQ(grid.grid_bez[n], "5208");
    EXPECT_NEAR(grid.grid_rechts[n], corner.rechts, 1e-6);
    EXPECT_NEAR(grid.grid_hoch[n], corner.hoch, 1e-6);
}

TEST(TkGrid, LocalAndUnsetSystemsHaveNoGrid) {
    DistrictInputs inputs = around(districts::tk25, 50.7, 7);
    inputs.obj_bezu = 0;
    EXPECT_EQ(BuildTkGrid(inputs).nodes(), 0);
    EXPECT_EQ(BuildKmGrid(inputs).nodes(), 0);
    inputs.obj_bezu = -99;
    EXPECT_EQ(BuildTkGrid(inputs).nodes(), 0);
    EXPECT_EQ(BuildKmGrid(inputs).nodes(), 0);
}

TEST(TkGrid, ViewOutsideTheDomainHasNoGrid) {
    DistrictInputs inputs = around(districts::tk25, 50.7, 7);
    inputs.view[3] = 4e7;
    EXPECT_EQ(BuildTkGrid(inputs).nodes(), 0);
    EXPECT_EQ(BuildKmGrid(inputs).nodes(), 0);
}

TEST(TkGrid, DatumRowThatLeadsAwayFromTheEarthHasNoGrid) {
    for (const double seconds : {200.0 * 3600, -1e30, 1e300}) {
        DistrictInputs inputs = around(districts::tk25, 50.7, 7);
        inputs.chain.row = {.dphi0 = seconds};
        EXPECT_EQ(BuildTkGrid(inputs).nodes(), 0) << seconds;
        EXPECT_EQ(BuildKmGrid(inputs).nodes(), 0) << seconds;
        inputs.chain.row = {.dlam0 = 5 * seconds};
        EXPECT_EQ(BuildTkGrid(inputs).nodes(), 0) << seconds;
    }
}

/// A view in kilometres of strip 2.
DistrictInputs kilometres(std::int16_t obj_nube, double west, double south, double east,
                          double north) {
    DistrictInputs inputs = around(obj_nube, 50.7, 7);
    inputs.view = {west * 1000, south * 1000, east * 1000, north * 1000};
    return inputs;
}

TEST(KmGrid, NodesAreWholeKilometresOfTheStrip) {
    const DistrictGrid grid =
        BuildKmGrid(kilometres(districts::klv, 2570.2, 5618.4, 2571.7, 5620.1));
    EXPECT_EQ(grid.grid_spalten, 3);  // 2570, 2571, 2572
    EXPECT_EQ(grid.grid_zeilen, 4);   // 5618 to 5621
    EXPECT_NEAR(grid.grid_rechts[1], 2570000, 1e-5);
    EXPECT_NEAR(grid.grid_hoch[1], 5618000, 1e-5);
    EXPECT_NEAR(grid.grid_rechts[2], 2570000, 1e-5);
    EXPECT_NEAR(grid.grid_hoch[2], 5619000, 1e-5);
    EXPECT_NEAR(grid.grid_rechts[12], 2572000, 1e-5);
    EXPECT_NEAR(grid.grid_hoch[12], 5621000, 1e-5);
}

TEST(KmGrid, NumbersAndCornersOfKlvAndAlk) {
    const DistrictGrid klv =
        BuildKmGrid(kilometres(districts::klv, 2570.2, 5600.4, 2570.7, 5600.9));
    EXPECT_EQ(klv.grid_bez[1], "25705600");
    EXPECT_EQ(klv.grid_bez_ecke[1], " 25695600 | 25705600 \r\n  25695599 | 25705599 ");
    const DistrictGrid alk =
        BuildKmGrid(kilometres(districts::alk, 2570.2, 5600.4, 2570.7, 5600.9));
    EXPECT_EQ(alk.grid_bez[1], "25705600");
    EXPECT_EQ(alk.grid_bez_ecke[1], " 25566900 | 25567000 \r\n  25556999 | 25557099 ");
}

TEST(KmGrid, NumberBeyondFourDigitsHasNoLabel) {
    DistrictInputs inputs = kilometres(districts::klv, 9999.2, 5600.4, 9999.8, 5600.9);
    inputs.chain.number = 9;
    inputs.obj_nube_meridian = 9;
    const DistrictGrid grid = BuildKmGrid(inputs);
    ASSERT_EQ(grid.grid_spalten, 2);
    ASSERT_EQ(grid.grid_zeilen, 2);
    EXPECT_EQ(grid.grid_bez[1], "99995600");
    EXPECT_EQ(grid.grid_bez[3], "") << "i = 10000";
    EXPECT_EQ(grid.grid_bez_ecke[3], "");
}

TEST(KmGrid, LineZeroHasNoLabel) {
    const DistrictGrid grid = BuildKmGrid(kilometres(districts::klv, 2500.2, 0.2, 2500.7, 0.7));
    EXPECT_EQ(grid.grid_bez[1], "") << "j = 0";
    EXPECT_EQ(grid.grid_bez[2], "25000001");
    EXPECT_EQ(grid.grid_bez_ecke[2], " 24990001 | 25000001 \r\n  24990000 | 25000000 ");
}

TEST(KmGrid, ViewBelowZeroHasNoGrid) {
    EXPECT_EQ(BuildKmGrid(kilometres(districts::klv, 2570, -1, 2571, 1)).nodes(), 0);
    EXPECT_GT(BuildKmGrid(kilometres(districts::klv, 2570, 0.001, 2571, 1)).nodes(), 0);
}

TEST(KmGrid, ChosenStripDecides) {
    DistrictInputs inputs = kilometres(districts::klv, 2590.2, 5618.4, 2590.4, 5618.6);
    inputs.obj_nube_meridian = 3;
    const DistrictGrid grid = BuildKmGrid(inputs);
    EXPECT_EQ(grid.grid_bez[1].substr(0, 2), "33");
}

TEST(KmGrid, UnusableStripHasNoGrid) {
    DistrictInputs inputs = kilometres(districts::klv, 2590.2, 5618.4, 2590.4, 5618.6);
    inputs.obj_nube_meridian = -99;
    EXPECT_EQ(BuildKmGrid(inputs).nodes(), 0);
}

TEST(KmGrid, UpTo32767NodesAreNumbered) {
    // 151 by 217 nodes are 32767.
    const DistrictGrid all =
        BuildKmGrid(kilometres(districts::klv, 2500.0001, 5500.0001, 2649.9999, 5715.9999));
    ASSERT_EQ(all.grid_spalten, 151);
    ASSERT_EQ(all.grid_zeilen, 217);
    EXPECT_FALSE(all.grid_zu_gross);
    EXPECT_EQ(all.grid_bez[1], "25005500");
    const DistrictGrid more =
        BuildKmGrid(kilometres(districts::klv, 2500.0001, 5500.0001, 2650.9999, 5715.9999));
    EXPECT_TRUE(more.grid_zu_gross);
    EXPECT_EQ(more.nodes(), 152 * 217);
    EXPECT_NEAR(more.grid_rechts[1], 2500000, 1e-5) << "the lines are there";
    EXPECT_TRUE(more.grid_bez.empty());
}

TEST(KmGrid, MoreThanTenMillionNodesAreNotBuilt) {
    EXPECT_EQ(BuildKmGrid(kilometres(districts::klv, 1000, 500, 4000, 5600)).nodes(), 0);
}

}  // namespace
}  // namespace veldra
