#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace veldra {

[[nodiscard]] constexpr bool is_decimal_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Digits that stand eight in a word, as their differences from '0', the first in the lowest byte.
namespace digit_word {

constexpr std::size_t size = 8;

/// How many of the bytes from the first on are digits.
[[nodiscard]] inline std::size_t leading_digits(std::uint64_t word) {
    // A byte above 9 gets its highest bit; what that does to the bytes behind it does not count.
    const std::uint64_t others = (word | (word + 0x7676767676767676ULL)) & 0x8080808080808080ULL;
    return static_cast<std::size_t>(std::countr_zero(others)) / 8;
}

/// The number that eight digits make: neighbours are joined to pairs, pairs to fours, fours to the
/// whole.
[[nodiscard]] inline std::uint64_t joined(std::uint64_t word) {
    constexpr std::uint64_t every_fourth = 0x000000FF000000FFULL;
    word = word * 10 + (word >> 8U);
    return ((word & every_fourth) * 0x000F424000000064ULL +
            ((word >> 16U) & every_fourth) * 0x0000271000000001ULL) >>
           32U;
}

}  // namespace digit_word

/// Appends the digits from `at` on to `mantissa` and gives their end. Takes eight characters at
/// once as long as so many are left: no processor guesses how many digits the next number has.
[[nodiscard]] inline const char* take_digits(const char* at, const char* end,
                                             std::uint64_t& mantissa) {
    static constexpr std::array<std::uint64_t, 9> power_of_ten{
        1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    if constexpr (std::endian::native == std::endian::little) {
        while (end - at >= static_cast<std::ptrdiff_t>(digit_word::size)) {
            std::uint64_t word = 0;
            std::memcpy(&word, at, digit_word::size);
            word ^= 0x3030303030303030ULL;
            const std::size_t count = digit_word::leading_digits(word);
            if (count == 0) {
                return at;
            }
            // What lies behind the digits is shifted out; zeros come in front of them.
            word <<= 8 * (digit_word::size - count);
            mantissa = mantissa * power_of_ten[count] + digit_word::joined(word);
            at += count;
            if (count < digit_word::size) {
                return at;
            }
        }
    }
    while (at < end && is_decimal_digit(*at)) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at++ - '0');
    }
    return at;
}

/// A plain decimal (a sign "-", digits, one point, 15 digits at most) from `at` on up to `end` or a
/// blank, which is what most tokens are: gives the value as zahl_wert would, and the end of the
/// token; null if the text begins otherwise. Stands in a header because most of the time of reading
/// a file is spent here.
[[nodiscard]] inline const char* read_plain_decimal(const char* at, const char* end,
                                                    double& value) {
    constexpr std::ptrdiff_t most_digits = 15;
    static constexpr std::array<double, most_digits + 1> power_of_ten{
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = at < end && *at == '-';
    const char* const digits = at + (negative ? 1 : 0);
    std::uint64_t mantissa = 0;
    const char* stop = take_digits(digits, end, mantissa);
    std::ptrdiff_t count = stop - digits;
    std::ptrdiff_t decimals = 0;
    if (stop < end && *stop == '.') {
        const char* const fraction = stop + 1;
        stop = take_digits(fraction, end, mantissa);
        decimals = stop - fraction;
        count += decimals;
    }
    if ((stop != end && *stop != ' ') || count == 0 || count > most_digits) {
        return nullptr;
    }
    // Both operands are exact, so the quotient is correctly rounded.
    const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa)) /
                             power_of_ten[static_cast<std::size_t>(decimals)];
    value = negative ? -magnitude : magnitude;
    return stop;
}

}  // namespace veldra
