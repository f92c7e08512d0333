#include "datum_fit.h"

#include <gtest/gtest.h>

namespace veldra {
namespace {

TEST(DatumFit, SevenParametersAgreeWithAnotherProgram) {
    // cs2cs of PROJ 9.1 for 7° east, 50.7° north.
    const GeographicPoint point = dhdn_to_etrs89({50.7, 7});
    EXPECT_NEAR(point.latitude, 50.6987685611, 2e-10);
    EXPECT_NEAR(point.longitude, 6.9992524180, 2e-10);
}

TEST(DatumFit, FindsARowThatReachesThePointsExactly) {
    const DatumRow row{.dphi0 = -4, .dlam0 = 1.5, .sphi = -0.4, .slam = 0.6, .rot = 2};
    const auto points = germany([&row](const GeographicPoint& p) { return DatumShift(row, p); });
    const DatumRow found = fit(points);
    EXPECT_NEAR(found.dphi0, row.dphi0, 1e-7);
    EXPECT_NEAR(found.dlam0, row.dlam0, 1e-7);
    EXPECT_NEAR(found.sphi, row.sphi, 1e-7);
    EXPECT_NEAR(found.slam, row.slam, 1e-7);
    EXPECT_NEAR(found.rot, row.rot, 1e-7);
    EXPECT_LT(deviation(found, points).largest, 1e-5);
}

TEST(DatumFit, NoNeighbouringRowIsBetter) {
    const auto points = germany(dhdn_to_etrs89);
    const auto squares = [&points](const DatumRow& row) {
        double sum = 0;
        for (const DatumPoint& point : points) {
            const double distance = deviation(row, {point}).largest;
            sum += distance * distance;
        }
        return sum;
    };
    const DatumRow best = fit(points);
    const double least = squares(best);
    for (double DatumRow::*parameter :
         {&DatumRow::dphi0, &DatumRow::dlam0, &DatumRow::sphi, &DatumRow::slam, &DatumRow::rot}) {
        for (const double step : {-0.001, 0.001}) {
            DatumRow other = best;
            other.*parameter += step;
            EXPECT_GT(squares(other), least);
        }
    }
}

TEST(DatumFit, SettingsHoldTheFittedRow) {
    const DatumRow row = rounded(fit(germany(dhdn_to_etrs89)));
    const Settings settings;
    for (const auto& rows : {settings.verw_datum, settings.numbez_datum}) {
        EXPECT_EQ(rows[0], DatumRow{});
        EXPECT_EQ(rows[2], DatumRow{});
        EXPECT_NEAR(rows[1].dphi0, row.dphi0, 1e-9);
        EXPECT_NEAR(rows[1].dlam0, row.dlam0, 1e-9);
        EXPECT_NEAR(rows[1].sphi, row.sphi, 1e-9);
        EXPECT_NEAR(rows[1].slam, row.slam, 1e-9);
        EXPECT_NEAR(rows[1].rot, row.rot, 1e-9);
    }
}

TEST(DatumFit, DeviationsAreThoseOfTheDocumentation) {
    const auto points = germany(dhdn_to_etrs89);
    const Deviation found = deviation(Settings{}.verw_datum[1], points);
    EXPECT_NEAR(found.largest, 6.25, 0.006);
    EXPECT_NEAR(found.mean, 1.55, 0.006);
}

}  // namespace
}  // namespace veldra
