#pragma once

#include <string>

namespace veldra::netzsim {

/// The bytes of the sample files; the same at every call.

/// DHDN, Gauß-Krüger strip 2: six network parts (Lage, Höhe, GPS, Deformation, Stützpunkte,
/// Übersicht).
[[nodiscard]] std::string dhdn_sample();
/// ETRS 89, UTM zone 32: two network parts (Lage, GPS).
[[nodiscard]] std::string etrs89_sample();
/// Local system of a bridge: two network parts (zero measurement, deformation).
[[nodiscard]] std::string local_sample();
/// A small network without the record NETZTEIL.
[[nodiscard]] std::string sample_without_part();

}  // namespace veldra::netzsim
