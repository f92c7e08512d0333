#include "reference/datum_shift.h"

namespace veldra {

GeographicPoint DatumShift(const DatumRow& row, const GeographicPoint& point) {
    constexpr double pivot = 50.0;
    constexpr double seconds = 3600.0;
    const double a = 1 + row.sphi / seconds;
    const double b = 1 + row.slam / seconds;
    const double c = row.rot / (1296000.0 / 6.28318530717959);
    const double north = point.latitude - pivot;
    return {north * a + row.dphi0 / seconds + pivot - b * point.longitude * c,
            north * a * c + row.dlam0 / seconds + b * point.longitude};
}

DatumRow negated(const DatumRow& row) {
    return {-row.dphi0, -row.dlam0, -row.sphi, -row.slam, -row.rot};
}

}  // namespace veldra
