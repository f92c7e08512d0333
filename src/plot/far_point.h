#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/session.h"

namespace veldra {

/// A point of a network part, or an end of an observation line without one.
struct FarPoint {
    std::string netzteil;  ///< Windows-1252
    bool in_netzteil = false;
    std::string bez;  ///< label, "" if it has none
    double rechts = 0;
    double hoch = 0;
};

/// What lies farthest from the middle of the current part, which is the medians of its coordinates:
/// a wild one moves these hardly. Of points equally far from it, as two alone are, the one with the
/// larger coordinates. None if there is nothing.
[[nodiscard]] std::optional<FarPoint> point_farthest_out(const Session& session);

/// The point with its part and the first record of the file that has its coordinates, as far as
/// they can be told: one line in UTF-8. Reads the file once.
[[nodiscard]] std::string describe(const Session& session, const FarPoint& point);

}  // namespace veldra
