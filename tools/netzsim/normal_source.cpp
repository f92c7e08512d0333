#include "normal_source.h"

#include <cmath>

namespace veldra::netzsim {

double NormalSource::uniform() {
    constexpr double kStep = 0x1p-53;
    return static_cast<double>(generator_() >> 11U) * kStep;
}

double NormalSource::normal() {
    double u = 0.0;
    double square = 0.0;
    do {
        u = uniform(-1.0, 1.0);
        const double v = uniform(-1.0, 1.0);
        square = u * u + v * v;
    } while (square >= 1.0 || square == 0.0);
    return std::round(1000.0 * u * std::sqrt(-2.0 * std::log(square) / square)) / 1000.0;
}

}  // namespace veldra::netzsim
