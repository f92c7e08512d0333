#pragma once

#include <cstdint>
#include <optional>

#include "model/settings.h"
#include "reference/datum_shift.h"
#include "reference/koordtrans.h"

namespace veldra {

/// Easting and northing, metres.
struct PlanePoint {
    double rechts = 0;
    double hoch = 0;
};

/// Ellipsoid and mapping by the numbers of the coordinate library.
struct PlaneSystem {
    std::int32_t ellipsoid = 0;
    std::int32_t mapping = 0;

    bool operator==(const PlaneSystem&) const = default;
};

/// The system that numbering districts are defined in: Bessel, Gauß-Krüger.
constexpr PlaneSystem district_system{1, 1};

/// What the way between reference data and a document depends on.
struct ChainSetup {
    PlaneSystem document;
    std::int32_t number = 0;  ///< strip or zone of the document's coordinates
    PlaneSystem reference;    ///< of the reference data
    DatumRow row;             ///< from the reference data's datum to the document's

    bool operator==(const ChainSetup&) const = default;
};

/// The way of coordinates from the system of reference data into that of a document, and back:
/// plane to geographic, datum transition, geographic to plane. The way back negates the datum row,
/// so it is the inverse to the first order only. A point outside the domain of a mapping gives
/// none.
class CoordinateChain {
 public:
    explicit CoordinateChain(const ChainSetup& setup);

    /// Reference data in degrees to the document.
    [[nodiscard]] std::optional<PlanePoint> to_document(const GeographicPoint& point) const;
    /// Reference data of a strip or zone to the document.
    [[nodiscard]] std::optional<PlanePoint> to_document(const PlanePoint& point,
                                                        std::int32_t meridian) const;
    /// Reference data whose eastings tell their own strip or zone to the document.
    [[nodiscard]] std::optional<PlanePoint> to_document(const PlanePoint& point) const;

    /// A point of the document to degrees in the datum of the reference data.
    [[nodiscard]] std::optional<GeographicPoint> to_geographic(const PlanePoint& point) const;
    /// A point of the document to a strip or zone of the reference data.
    [[nodiscard]] std::optional<PlanePoint> to_reference(const PlanePoint& point,
                                                         std::int32_t meridian) const;

 private:
    [[nodiscard]] std::optional<PlanePoint> from_plane(const PlanePoint& point,
                                                       std::int32_t meridian,
                                                       std::int32_t mode) const;

    Koordtrans library_;
    std::int32_t number_;
    DatumRow row_;
    DatumRow back_;
};

}  // namespace veldra
