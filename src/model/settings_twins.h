#pragma once

#include <array>

#include "model/settings.h"

namespace veldra {

/// The state that the display dialog returns to: a twin of each value that the default helpers of
/// settings/defaults.h know. Values that belong to none of their groups are not kept here.
struct SettingsTwins {
    Settings settings;
    std::array<double, 7> vektor_massstab{0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
    std::array<double, 7> vektor_massstab_plot{0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
};

}  // namespace veldra
