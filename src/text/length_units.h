#pragma once

namespace veldra {

/// The lengths in which pictures and paper are measured; a twip is a twentieth of a point.
inline constexpr double millimetres_per_inch = 25.4;
inline constexpr double twips_per_inch = 1440;
inline constexpr double twips_per_point = 20;
inline constexpr double twips_per_millimetre = twips_per_inch / millimetres_per_inch;
inline constexpr double millimetres_per_twip = millimetres_per_inch / twips_per_inch;
/// A logical pixel of the picture: 96 of them make an inch.
inline constexpr double twips_per_pixel = 15;

}  // namespace veldra
