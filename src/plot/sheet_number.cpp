#include "plot/sheet_number.h"

#include <cmath>

#include "drawing/district_grid.h"
#include "reference/coordinate_chain.h"
#include "reference/reference_system.h"
#include "text/numbers.h"

namespace veldra {

namespace {

/// Digits of rows run down from 56° N and those of columns up from 5°40' E, so that the sheets of
/// the TK 25 have row * -100 + column + this for a number, counted from the equator and Greenwich.
constexpr std::int64_t number_at_origin = 55866;

/// Of map sheets: rows are tenths of a degree of latitude, columns sixths of a degree of longitude,
/// both times the factor of the kind.
std::string map_sheet_number(std::int16_t obj_nube, const GeographicPoint& corner) {
    const std::int64_t f = sheet_factor(obj_nube);
    const auto factor = static_cast<double>(f);
    const auto column = static_cast<std::int64_t>(corner.longitude * 6 / factor);
    const auto row = static_cast<std::int64_t>(corner.latitude * 10 / factor);
    const std::int64_t latitude_minutes = row * f * 6;
    const std::int64_t longitude_minutes = column * f * 10;
    if (latitude_minutes < 2760 || latitude_minutes > 3360 || longitude_minutes < 340 ||
        longitude_minutes > 1340) {
        return {};
    }
    const std::int64_t number = number_at_origin - row * f * 100 + column * f;
    return sheet_prefix(obj_nube) + zahl_text(static_cast<double>(number), "###0", "");
}

std::string kilometre_square_number(std::int16_t obj_nube, const PlanePoint& corner) {
    constexpr double metres = 1000;
    const double column = std::trunc(corner.rechts / metres);
    const double row = std::trunc(corner.hoch / metres);
    if (!(column >= 1 && column <= 9999 && row >= 1 && row <= 9999)) {
        return {};
    }
    return square_number(obj_nube, static_cast<std::int64_t>(column),
                         static_cast<std::int64_t>(row));
}

}  // namespace

std::string SheetNumberText(const Session& session) {
    const ObjectSelection& obj = session.obj;
    const bool map_sheets = obj.obj_nube == districts::tk25 || obj.obj_nube == districts::tk50 ||
                            obj.obj_nube == districts::tk100;
    const bool squares = obj.obj_nube == districts::klv || obj.obj_nube == districts::alk;
    if (obj.obj_bezu <= 0 || !(map_sheets || squares)) {
        return {};
    }
    const CoordinateChain chain(
        chain_setup(session, district_system, session.settings.numbez_datum));
    const PlanePoint corner{session.blatt.blatt_rw_min, session.blatt.blatt_hw_min};
    if (map_sheets) {
        const std::optional<GeographicPoint> place = chain.to_geographic(corner);
        return place ? map_sheet_number(obj.obj_nube, *place) : std::string();
    }
    const std::optional<PlanePoint> place = chain.to_reference(corner, obj.obj_nube_meridian);
    return place ? kilometre_square_number(obj.obj_nube, *place) : std::string();
}

}  // namespace veldra
