#pragma once

#include <cstdint>
#include <random>

namespace veldra::netzsim {

/// Random numbers that are the same with every standard library: the generator is specified bit by
/// bit, and the distributions are our own because the standard leaves those to the library.
class NormalSource {
 public:
    explicit NormalSource(std::uint64_t seed) : generator_(seed) {}

    /// Uniform in [0, 1), in steps of 2^-53.
    double uniform();
    /// Uniform in [low, high).
    double uniform(double low, double high) { return low + (high - low) * uniform(); }
    /// Standard normal, rounded to thousandths: a last digit that differs between mathematical
    /// libraries cannot reach the result. Polar method: G. Marsaglia, T. A. Bray, "A convenient
    /// method for generating normal variables", SIAM Review 6 (1964), 260-264.
    double normal();

 private:
    std::mt19937_64 generator_;
};

}  // namespace veldra::netzsim
