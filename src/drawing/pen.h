#pragma once

#include <cstdint>

/// Values of the drawing target's pen and brush.
namespace veldra::pen {

inline constexpr std::int32_t black = 0;
inline constexpr std::int16_t solid = 0;
inline constexpr std::int16_t dotted = 2;

}  // namespace veldra::pen
