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
constexpr std::int32_t last_strip_number = 15;

void set_system(ObjectSelection& obj, bool strips) {
    obj.obj_bezu_elli = strips ? bessel : grs80;
    obj.obj_bezu_abbi = strips ? mapping_gauss_krueger : mapping_utm;
}

/// Brings the selection and the size of the eastings together; the eastings decide.
void settle_selection(ObjectSelection& obj, bool strips) {
    if (obj.obj_bezu == unset || obj.obj_bezu == dhdn || obj.obj_bezu == etrs89) {
        obj.obj_bezu = strips ? dhdn : etrs89;
        set_system(obj, strips);
        return;
    }
    const bool mapping_fits = obj.obj_bezu_abbi == (strips ? mapping_gauss_krueger : mapping_utm);
    if (!mapping_fits || obj.obj_bezu_elli == 0) {
        set_system(obj, strips);
    }
}

/// The strip of the numbering districts at a point, whose own system is the selected one.
std::int32_t district_strip(const Session& session, const ReferencePoint& point) {
    const ChainSetup setup = chain_setup(session, district_system, session.settings.numbez_datum);
    const CoordinateChain chain(setup);
    Koordtrans library;
    std::int32_t status = 0;
    library.DEFSYSTEM(2, district_system.ellipsoid, district_system.mapping, status);
    const GeographicPoint geographic =
        chain.to_geographic({point.rechts, point.hoch}).value_or(GeographicPoint{});
    std::int32_t meridian = 0;
    double rechts = 0;
    double hoch = 0;
    library.GEGGKO(2, geographic.latitude, geographic.longitude, meridian, rechts, hoch, 2, status);
    return meridian;
}

}  // namespace

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

ChainSetup chain_setup(const Session& session, const PlaneSystem& reference,
                       const std::array<DatumRow, 3>& rows) {
    const ObjectSelection& obj = session.obj;
    ChainSetup setup;
    setup.document = {obj.obj_bezu_elli, obj.obj_bezu_abbi};
    setup.number = reference_point(session).number;
    setup.reference = reference;
    if (obj.obj_bezu >= dhdn && obj.obj_bezu <= static_cast<std::int16_t>(rows.size())) {
        setup.row = rows[static_cast<std::size_t>(obj.obj_bezu - 1)];
    }
    return setup;
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
    constexpr std::int64_t near = 5;
    // Whatever number was asked for: the difference may need more than 32 bits.
    const std::int64_t away = std::int64_t{obj.obj_nube_meridian} - strip;
    if (obj.obj_nube_meridian == unset || std::abs(away) > near) {
        obj.obj_nube_meridian = strip;
    }
}

}  // namespace veldra
