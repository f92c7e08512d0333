#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace veldra {

inline constexpr std::int32_t mapping_gauss_krueger = 1;
inline constexpr std::int32_t mapping_utm = 2;

/// Plane and geographic coordinates on an ellipsoid: transverse Mercator mappings in strips.
///
/// Ellipsoids: 1 Bessel, 2 Hayford, 3 WGS 72, 4 GRS 80, 5 Krassowsky. Mappings: 1 Gauß-Krüger in
/// strips of 3° with scale 1 on the central meridian, 2 UTM in zones of 6° with scale 0.9996.
/// Eastings are number times 1 000 000 + 500 000 + offset from the central meridian, northings the
/// distance from the equator, both in metres. Angles are in degrees, east and north positive.
/// A `meridian` is the number of the strip or zone: strip n has its central meridian at 3n degrees,
/// zone n at 6n - 183. Strips are 0 to 119, zones 1 to 60; other numbers lie outside the domain.
///
/// Status 0 is done, 1 is outside the domain of the mapping (or a slot that was not defined);
/// results are 0 then. Within 3.5° of the central meridian a round trip closes to 0.01 mm.
/// Not to be used by two threads at once.
class Koordtrans {
 public:
    Koordtrans();
    ~Koordtrans();
    Koordtrans(const Koordtrans&) = delete;
    Koordtrans& operator=(const Koordtrans&) = delete;

    /// Fixes ellipsoid and mapping of a slot (0 to 3) for later calls.
    void DEFSYSTEM(std::int32_t slot, std::int32_t ellipsoid, std::int32_t mapping,
                   std::int32_t& status);
    /// Plane to geographic. Mode -1 takes strip or zone from the easting's leading digits, any
    /// other mode uses `meridian`.
    void GKGGEG(std::int32_t slot, double rechts, double hoch, std::int32_t meridian,
                double& latitude, double& longitude, std::int32_t mode, std::int32_t& status) const;
    /// Geographic to plane. Mode 2 first sets `meridian` to the 3° strip of the longitude, 0 to
    /// 119; any other mode uses `meridian` as it is.
    void GEGGKO(std::int32_t slot, double latitude, double longitude, std::int32_t& meridian,
                double& rechts, double& hoch, std::int32_t mode, std::int32_t& status) const;

 private:
    class System;
    [[nodiscard]] const System* system_in(std::int32_t slot) const;
    std::array<std::unique_ptr<System>, 4> slots_;
};

}  // namespace veldra
