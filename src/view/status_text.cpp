#include "view/status_text.h"

#include "drawing/length_units.h"
#include "graphikdatei/numbers.h"
#include "view/text_forms.h"

namespace veldra {

std::string place_text(const WorldPoint& place) {
    constexpr std::string_view mask = "0.00";
    return "Rechtswert " + zahl_text(place.rechts, mask, "") + "   Hochwert " +
           zahl_text(place.hoch, mask, "");
}

std::string scale_text(const Viewport& view) {
    constexpr double metres_per_twip = millimetres_per_twip / 1000;
    const double denominator = view.ansicht_masseinheit / metres_per_twip;
    return "1 : " + GroupDigits(zahl_text(denominator, "0", "")).grouped;
}

}  // namespace veldra
