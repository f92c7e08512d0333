#pragma once

#include "model/settings.h"
#include "model/text_measurer.h"

namespace veldra {

/// Font of the point labels with its size on the screen.
[[nodiscard]] inline FontSpec point_label_font(const Settings& settings) {
    return {settings.pubfon, static_cast<double>(settings.pubgrascr), settings.pubbol,
            settings.pubita, settings.pubund};
}

/// Font of the numbering district labels with its size on the screen.
[[nodiscard]] inline FontSpec district_label_font(const Settings& settings) {
    return {settings.nubfon, static_cast<double>(settings.nubgrascr), settings.nubbol,
            settings.nubita, settings.nubund};
}

}  // namespace veldra
