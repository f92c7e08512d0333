#include "reference/koordtrans.h"

#include <cmath>
#include <numbers>

#include <fmt/format.h>
#include <proj.h>

namespace veldra {

namespace {

struct Ellipsoid {
    double semi_major_axis;
    double inverse_flattening;
};

constexpr std::array<Ellipsoid, 5> ellipsoids{{{6377397.155, 299.1528128},
                                               {6378388.0, 297.0},
                                               {6378135.0, 298.26},
                                               {6378137.0, 298.257222101},
                                               {6378245.0, 298.3}}};

constexpr double utm_scale = 0.9996;
constexpr double metres_per_number = 1000000.0;
constexpr double false_easting = 500000.0;
constexpr double radians = std::numbers::pi / 180.0;
/// Farther from the central meridian the mapping is of no use, and near 90° it breaks down.
constexpr double widest_longitude = 80.0;

double central_meridian(std::int32_t mapping, std::int32_t number) {
    return mapping == mapping_utm ? 6.0 * number - 183.0 : 3.0 * number;
}

/// Strips go round the earth from 0, zones from 1.
bool is_number_of(std::int32_t mapping, double number) {
    return mapping == mapping_utm ? number >= 1 && number <= 60 : number >= 0 && number <= 119;
}

/// The difference of two longitudes, within half a turn.
double longitude_difference(double longitude, double from) {
    return std::remainder(longitude - from, 360.0);
}

}  // namespace

/// A mapping on an ellipsoid, with its central meridian at 0°.
class Koordtrans::System {
 public:
    System(const Ellipsoid& ellipsoid, std::int32_t mapping)
        : mapping_(mapping), context_(proj_context_create()) {
        const std::string definition = fmt::format(
            "+proj=tmerc +algo=poder_engsager +lat_0=0 +lon_0=0 +x_0=0 +y_0=0 +k={} +a={} +rf={}",
            mapping == mapping_utm ? utm_scale : 1.0, ellipsoid.semi_major_axis,
            ellipsoid.inverse_flattening);
        proj_log_level(context_, PJ_LOG_NONE);
        projection_ = proj_create(context_, definition.c_str());
        double x = 0;
        double y = 90;
        transform(true, x, y);
        pole_ = y;
    }
    ~System() {
        proj_destroy(projection_);
        proj_context_destroy(context_);
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    [[nodiscard]] std::int32_t mapping() const { return mapping_; }

    /// False outside the domain. `x` and `y` are metres on input, degrees on output, or the other
    /// way round; x is the longitude or the distance from the central meridian.
    bool transform(bool to_plane, double& x, double& y) const {
        if (projection_ == nullptr || !std::isfinite(x) || !std::isfinite(y) ||
            std::fabs(y) > (to_plane ? 90.0 : pole_) ||
            (to_plane && std::fabs(x) > widest_longitude)) {
            return false;
        }
        const double unit = to_plane ? radians : 1.0;
        const PJ_COORD result = proj_trans(projection_, to_plane ? PJ_FWD : PJ_INV,
                                           proj_coord(x * unit, y * unit, 0, 0));
        if (!std::isfinite(result.xy.x) || !std::isfinite(result.xy.y)) {
            proj_errno_reset(projection_);
            return false;
        }
        x = to_plane ? result.xy.x : result.lp.lam / radians;
        y = to_plane ? result.xy.y : result.lp.phi / radians;
        return to_plane || std::fabs(x) <= widest_longitude;
    }

 private:
    std::int32_t mapping_;
    PJ_CONTEXT* context_;
    PJ* projection_ = nullptr;
    double pole_ = 0;  ///< northing of the pole, the largest within a quarter turn
};

Koordtrans::Koordtrans() = default;
Koordtrans::~Koordtrans() = default;

const Koordtrans::System* Koordtrans::system_in(std::int32_t slot) const {
    const bool exists = slot >= 0 && slot < static_cast<std::int32_t>(slots_.size());
    return exists ? slots_[static_cast<std::size_t>(slot)].get() : nullptr;
}

void Koordtrans::DEFSYSTEM(std::int32_t slot, std::int32_t ellipsoid, std::int32_t mapping,
                           std::int32_t& status) {
    status = 1;
    if (slot < 0 || slot >= static_cast<std::int32_t>(slots_.size())) {
        return;
    }
    auto& system = slots_[static_cast<std::size_t>(slot)];
    system.reset();
    if (ellipsoid >= 1 && ellipsoid <= static_cast<std::int32_t>(ellipsoids.size()) &&
        (mapping == mapping_gauss_krueger || mapping == mapping_utm)) {
        system =
            std::make_unique<System>(ellipsoids[static_cast<std::size_t>(ellipsoid - 1)], mapping);
        status = 0;
    }
}

void Koordtrans::GKGGEG(std::int32_t slot, double rechts, double hoch, std::int32_t meridian,
                        double& latitude, double& longitude, std::int32_t mode,
                        std::int32_t& status) const {
    constexpr std::int32_t own_digits = -1;
    const System* system = system_in(slot);
    status = 1;
    latitude = 0;
    longitude = 0;
    double number = meridian;
    if (mode == own_digits) {
        number = std::trunc(rechts / metres_per_number);
    }
    if (system == nullptr || !is_number_of(system->mapping(), number)) {
        return;
    }
    double x = rechts - number * metres_per_number - false_easting;
    double y = hoch;
    if (system->transform(false, x, y)) {
        latitude = y;
        longitude = x + central_meridian(system->mapping(), static_cast<std::int32_t>(number));
        status = 0;
    }
}

void Koordtrans::GEGGKO(std::int32_t slot, double latitude, double longitude,
                        std::int32_t& meridian, double& rechts, double& hoch, std::int32_t mode,
                        std::int32_t& status) const {
    constexpr std::int32_t find_strip = 2;
    constexpr int strips = 120;
    const System* system = system_in(slot);
    status = 1;
    rechts = 0;
    hoch = 0;
    if (mode == find_strip) {
        if (!(std::fabs(longitude) <= 360.0)) {
            return;
        }
        const int strip = static_cast<int>(std::floor((longitude + 1.5) / 3.0)) % strips;
        meridian = strip < 0 ? strip + strips : strip;
    }
    if (system == nullptr || !is_number_of(system->mapping(), meridian)) {
        return;
    }
    double x = longitude_difference(longitude, central_meridian(system->mapping(), meridian));
    double y = latitude;
    if (system->transform(true, x, y)) {
        rechts = meridian * metres_per_number + false_easting + x;
        hoch = y;
        status = 0;
    }
}

}  // namespace veldra
