#include "view/status_text.h"

#include <cmath>

#include "text/length_units.h"
#include "text/numbers.h"
#include "text/text_forms.h"

namespace veldra {

std::string place_text(const WorldPoint& place) {
    constexpr std::string_view mask = "0.00";
    constexpr double beyond_all_ground = 1e10;
    if (!(std::fabs(place.rechts) < beyond_all_ground &&
          std::fabs(place.hoch) < beyond_all_ground)) {
        return {};
    }
    return "Rechtswert " + zahl_text(place.rechts, mask, "") + "   Hochwert " +
           zahl_text(place.hoch, mask, "");
}

std::string scale_text(const Viewport& view) {
    constexpr double metres_per_twip = millimetres_per_twip / 1000;
    constexpr double smallest_scale = 1e9;  // denominator
    const double denominator = view.ansicht_masseinheit / metres_per_twip;
    if (std::isnan(denominator)) {
        return {};
    }
    const bool told = denominator <= smallest_scale;
    return (told ? "1 : " : "unter 1 : ") +
           GroupDigits(zahl_text(told ? denominator : smallest_scale, "0", "")).grouped;
}

}  // namespace veldra
