#include "reference/coordinate_chain.h"

namespace veldra {

namespace {

constexpr std::int32_t document_slot = 1;
constexpr std::int32_t reference_slot = 2;
constexpr std::int32_t passed_number = 0;
constexpr std::int32_t own_digits = -1;
constexpr std::int32_t fixed_number = 3;

}  // namespace

CoordinateChain::CoordinateChain(const ChainSetup& setup)
    : number_(setup.number), row_(setup.row), back_(negated(setup.row)) {
    std::int32_t status = 0;
    library_.DEFSYSTEM(document_slot, setup.document.ellipsoid, setup.document.mapping, status);
    library_.DEFSYSTEM(reference_slot, setup.reference.ellipsoid, setup.reference.mapping, status);
}

std::optional<PlanePoint> CoordinateChain::to_document(const GeographicPoint& point) const {
    const GeographicPoint shifted = DatumShift(row_, point);
    PlanePoint result;
    std::int32_t meridian = number_;
    std::int32_t status = 0;
    library_.GEGGKO(document_slot, shifted.latitude, shifted.longitude, meridian, result.rechts,
                    result.hoch, fixed_number, status);
    return status == 0 ? std::optional(result) : std::nullopt;
}

std::optional<PlanePoint> CoordinateChain::from_plane(const PlanePoint& point,
                                                      std::int32_t meridian,
                                                      std::int32_t mode) const {
    GeographicPoint geographic;
    std::int32_t status = 0;
    library_.GKGGEG(reference_slot, point.rechts, point.hoch, meridian, geographic.latitude,
                    geographic.longitude, mode, status);
    return status == 0 ? to_document(geographic) : std::nullopt;
}

std::optional<PlanePoint> CoordinateChain::to_document(const PlanePoint& point,
                                                       std::int32_t meridian) const {
    return from_plane(point, meridian, passed_number);
}

std::optional<PlanePoint> CoordinateChain::to_document(const PlanePoint& point) const {
    return from_plane(point, 0, own_digits);
}

std::optional<GeographicPoint> CoordinateChain::to_geographic(const PlanePoint& point) const {
    GeographicPoint geographic;
    std::int32_t status = 0;
    library_.GKGGEG(document_slot, point.rechts, point.hoch, number_, geographic.latitude,
                    geographic.longitude, passed_number, status);
    return status == 0 ? std::optional(DatumShift(back_, geographic)) : std::nullopt;
}

std::optional<PlanePoint> CoordinateChain::to_reference(const PlanePoint& point,
                                                        std::int32_t meridian) const {
    const std::optional<GeographicPoint> geographic = to_geographic(point);
    if (!geographic) {
        return std::nullopt;
    }
    PlanePoint result;
    std::int32_t status = 0;
    library_.GEGGKO(reference_slot, geographic->latitude, geographic->longitude, meridian,
                    result.rechts, result.hoch, fixed_number, status);
    return status == 0 ? std::optional(result) : std::nullopt;
}

}  // namespace veldra
