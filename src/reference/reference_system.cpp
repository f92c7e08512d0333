#include "reference/reference_system.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

#include "reference/koordtrans.h"

namespace veldra {

namespace {

constexpr std::int16_t unset = -99;
constexpr std::int16_t local = 0;
constexpr std::int16_t dhdn = 1;
constexpr std::int16_t etrs89 = 2;
constexpr std::int32_t bessel = 1;
constexpr std::int32_t grs80 = 4;
constexpr std::int32_t gauss_krueger = 1;
constexpr std::int32_t utm = 2;
constexpr std::int32_t last_strip_number = 15;

void set_system(ObjectSelection& obj, bool strips) {
    obj.obj_bezu_elli = strips ? bessel : grs80;
    obj.obj_bezu_abbi = strips ? gauss_krueger : utm;
}

/// Brings the selection and the size of the eastings together; the eastings decide.
void settle_selection(ObjectSelection& obj, bool strips) {
    if (obj.obj_bezu == unset || obj.obj_bezu == dhdn || obj.obj_bezu == etrs89) {
        obj.obj_bezu = strips ? dhdn : etrs89;
        set_system(obj, strips);
        return;
    }
    const bool mapping_fits = obj.obj_bezu_abbi == (strips ? gauss_krueger : utm);
    if (!mapping_fits || obj.obj_bezu_elli == 0) {
        set_system(obj, strips);
    }
}

/// The strip of the numbering districts at a point, whose own system is the selected one.
std::int32_t district_strip(const Session& session, const ReferencePoint& point) {
    const ObjectSelection& obj = session.obj;
    Koordtrans library;
    std::int32_t status = 0;
    library.DEFSYSTEM(1, obj.obj_bezu_elli, obj.obj_bezu_abbi, status);
    library.DEFSYSTEM(2, bessel, gauss_krueger, status);
    GeographicPoint geographic;
    library.GKGGEG(1, point.rechts, point.hoch, point.number, geographic.latitude,
                   geographic.longitude, 0, status);
    const auto& rows = session.settings.numbez_datum;
    const DatumRow& row = rows[static_cast<std::size_t>(obj.obj_bezu - 1)];
    const GeographicPoint shifted = DatumShift(negated(row), geographic);
    std::int32_t meridian = 0;
    double rechts = 0;
    double hoch = 0;
    library.GEGGKO(2, shifted.latitude, shifted.longitude, meridian, rechts, hoch, 2, status);
    return meridian;
}

}  // namespace

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

ReferencePoint reference_point(const Session& session) {
    constexpr double metres_per_number = 1000000.0;
    const Extents& extents = session.extents;
    ReferencePoint point;
    point.rechts = (extents.gesamt_rw_min + extents.gesamt_rw_max) / 2;
    point.hoch = (extents.gesamt_hw_min + extents.gesamt_hw_max) / 2;
    const double number = std::trunc(point.rechts / metres_per_number);
    constexpr double most_numbers = 1e9;
    point.number = std::fabs(number) < most_numbers ? static_cast<std::int32_t>(number) : 0;
    return point;
}

void ResolveSystem(Session& session) {
    ObjectSelection& obj = session.obj;
    if (session.pu.count() == 0 && session.lin.count() == 0) {
        obj.obj_bezu = unset;
        return;
    }
    if (obj.obj_bezu == local) {
        obj.obj_nube_meridian = unset;
        return;
    }
    const ReferencePoint point = reference_point(session);
    settle_selection(obj, point.number <= last_strip_number);
    const std::int32_t strip = district_strip(session, point);
    constexpr std::int32_t near = 5;
    if (obj.obj_nube_meridian == unset || std::abs(obj.obj_nube_meridian - strip) > near) {
        obj.obj_nube_meridian = strip;
    }
}

}  // namespace veldra
