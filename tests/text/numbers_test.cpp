#include "text/numbers.h"

#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "text/plain_decimal.h"

namespace veldra {
namespace {

TEST(ZahlWert, TakesTheLongestNumericPrefix) {
    EXPECT_EQ(zahl_wert("12.5"), 12.5);
    EXPECT_EQ(zahl_wert("12.5abc"), 12.5);
    EXPECT_EQ(zahl_wert("  7"), 7.0);
    EXPECT_EQ(zahl_wert("-3."), -3.0);
    EXPECT_EQ(zahl_wert("+.25"), 0.25);
    EXPECT_EQ(zahl_wert("1.5.3"), 1.5);
    EXPECT_EQ(zahl_wert("--5"), 0.0);
    EXPECT_EQ(zahl_wert("- 5"), 0.0);
}

TEST(ZahlWert, ReadsOnlyTheFirstCommaAsPoint) {
    EXPECT_EQ(zahl_wert("2500000,500"), 2500000.5);
    EXPECT_EQ(zahl_wert("1,5,3"), 1.5);
    EXPECT_EQ(zahl_wert("1.5,3"), 1.5);
    EXPECT_EQ(zahl_wert("1,5.3"), 1.5);
}

TEST(ZahlWert, WhatIsNoNumberIsZero) {
    for (const char* text : {"", " ", "abc", ".", "-", "+", "e5", ",", "inf", "nan", "\t5"}) {
        EXPECT_EQ(zahl_wert(text), 0.0) << text;
    }
    EXPECT_EQ(zahl_wert("0x1F"), 0.0);
    EXPECT_EQ(zahl_wert("1D3"), 1.0);
}

TEST(ZahlWert, AcceptsAnExponentOnlyWithDigits) {
    EXPECT_EQ(zahl_wert("1e3"), 1000.0);
    EXPECT_EQ(zahl_wert("2,5E-1x"), 0.25);
    EXPECT_EQ(zahl_wert("1e"), 1.0);
    EXPECT_EQ(zahl_wert("1e+"), 1.0);
    EXPECT_EQ(zahl_wert("1e+2"), 100.0);
}

TEST(ZahlWert, StaysFiniteBeyondTheRange) {
    EXPECT_EQ(zahl_wert("1e999"), std::numeric_limits<double>::max());
    EXPECT_EQ(zahl_wert("-1e999"), -std::numeric_limits<double>::max());
    EXPECT_EQ(zahl_wert("1e-999"), 0.0);
    EXPECT_EQ(zahl_wert("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(zahl_wert("1" + std::string(400, '0')), std::numeric_limits<double>::max());
    EXPECT_EQ(zahl_wert("1" + std::string(400, '0') + "e-900"), 0.0);
    EXPECT_EQ(zahl_wert("0." + std::string(10, '0') + "1e400"), std::numeric_limits<double>::max());
}

TEST(ZahlWert, IsCorrectlyRounded) {
    // Literals are converted by the compiler, which rounds correctly.
    EXPECT_EQ(zahl_wert("5953057.055"), 5953057.055);
    EXPECT_EQ(zahl_wert("0.1"), 0.1);
    EXPECT_EQ(zahl_wert("9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(zahl_wert("123456789012345678901234567890"), 123456789012345678901234567890.0);
    EXPECT_EQ(zahl_wert("0.00000000000000000000000000012345"), 1.2345e-28);
    EXPECT_EQ(zahl_wert("00000000000000000000000012.5"), 12.5);
}

TEST(NumericPrefix, EndsAtAComma) {
    EXPECT_EQ(numeric_prefix("3,7"), 3.0);
}

TEST(ZahlText, FormatsByMask) {
    EXPECT_EQ(zahl_text(2, "#####0.#", " "), "      2.");
    EXPECT_EQ(zahl_text(0.5, "#####0.#", " "), "     0.5");
    EXPECT_EQ(zahl_text(12.3456, "####0.0", ""), "12.3");
    EXPECT_EQ(zahl_text(0, "####0", ""), "0");
    EXPECT_EQ(zahl_text(7, "0000000000", ""), "0000000007");
    EXPECT_EQ(zahl_text(1.5, "########0.0###", ""), "1.5");
    EXPECT_EQ(zahl_text(1.23456, "########0.0###", ""), "1.2346");
    EXPECT_EQ(zahl_text(0.04, "####0.#", ""), "0.");
    EXPECT_EQ(zahl_text(5, "00", "0"), "05");
}

TEST(ZahlText, PadsToTheMaskAndGrowsBeyondIt) {
    EXPECT_EQ(zahl_text(3, "#0", " "), " 3");
    EXPECT_EQ(zahl_text(-99, "#0", " "), "-99");
    EXPECT_EQ(zahl_text(5600000, "#0000000.00", " "), " 5600000.00");
    EXPECT_EQ(zahl_text(32400000.5, "#0000000.00", " "), "32400000.50");
}

TEST(ZahlText, RoundsHalfAwayFromZeroOnTheShortestDecimal) {
    EXPECT_EQ(zahl_text(0.5, "0", ""), "1");
    EXPECT_EQ(zahl_text(1.5, "0", ""), "2");
    EXPECT_EQ(zahl_text(2.5, "0", ""), "3");
    EXPECT_EQ(zahl_text(-2.5, "0", ""), "-3");
    // 1.005 is stored a little below, but reads 1.005.
    EXPECT_EQ(zahl_text(1.005, "0.00", ""), "1.01");
    EXPECT_EQ(zahl_text(9.995, "0.00", ""), "10.00");
    EXPECT_EQ(zahl_text(99999.95, "####0.0", ""), "100000.0");
}

TEST(ZahlText, ZeroHasNoMinusSign) {
    EXPECT_EQ(zahl_text(-0.04, "####0.0", ""), "0.0");
    EXPECT_EQ(zahl_text(-0.0, "####0.0", ""), "0.0");
    EXPECT_EQ(zahl_text(-0.05, "####0.0", ""), "-0.1");
}

TEST(ZahlText, WritesLargeAndTinyValues) {
    EXPECT_EQ(zahl_text(1e21, "0", ""), "1000000000000000000000");
    EXPECT_EQ(zahl_text(1e-30, "0.000", ""), "0.000");
}

TEST(ToInt16, RoundsHalfToEvenAndRefusesTheRest) {
    EXPECT_EQ(to_int16(0.5), 0);
    EXPECT_EQ(to_int16(1.5), 2);
    EXPECT_EQ(to_int16(-2.5), -2);
    EXPECT_EQ(to_int16(32767.4), 32767);
    EXPECT_EQ(to_int16(32767.5), std::nullopt);
    EXPECT_EQ(to_int16(-32768.5), -32768);
    EXPECT_EQ(to_int16(-32769), std::nullopt);
    EXPECT_EQ(to_int32(2147483648.0), std::nullopt);
}

TEST(WholeCentimetres, AgreesWithTheTextRule) {
    EXPECT_EQ(whole_centimetres(5953057.055), 595305706);
    EXPECT_EQ(whole_centimetres(1.005), 101);
    EXPECT_EQ(whole_centimetres(-1.005), -101);
    EXPECT_EQ(whole_centimetres(-0.004), 0);
    EXPECT_EQ(whole_centimetres(2576000.0), 257600000);
    EXPECT_EQ(whole_centimetres(1e16), no_centimetres);
    // The text decides at ties that a product in binary would miss.
    for (int i = 0; i < 2000; ++i) {
        const double value = 5000000.0 + i * 0.0005;
        std::string digits = zahl_text(value, "0.00", "");
        digits.erase(digits.find('.'), 1);
        EXPECT_EQ(std::to_string(whole_centimetres(value)), digits) << value;
    }
}

/// Length and value of the plain decimal that `text` begins with; both 0 if there is none.
std::pair<std::size_t, double> plain_decimal(std::string_view text) {
    double value = 0;
    const char* const end = read_plain_decimal(text.data(), text.data() + text.size(), value);
    return {end != nullptr ? static_cast<std::size_t>(end - text.data()) : 0, value};
}

TEST(PlainDecimal, ReadsUpToFifteenDigitsWhereverThePointStands) {
    const std::string digits = "123456789012345";
    // Whole numbers of one to fifteen digits, with something behind them and with nothing.
    double whole = 0;
    for (std::size_t count = 1; count <= digits.size(); ++count) {
        whole = whole * 10 + static_cast<double>(count % 10);
        const std::string text = digits.substr(0, count);
        EXPECT_EQ(plain_decimal(text), std::pair(count, whole));
        EXPECT_EQ(plain_decimal(text + " 12345678"), std::pair(count, whole));
        EXPECT_EQ(plain_decimal("-" + text + " "), std::pair(count + 1, -whole));
    }
    EXPECT_EQ(plain_decimal("1234567.12345678"), std::pair(std::size_t{16}, 1234567.12345678));
    EXPECT_EQ(plain_decimal("12345678.1234567"), std::pair(std::size_t{16}, 12345678.1234567));
    EXPECT_EQ(plain_decimal("123456789.123456 "), std::pair(std::size_t{16}, 123456789.123456));
    EXPECT_EQ(plain_decimal(".5 12345678"), std::pair(std::size_t{2}, 0.5));
    EXPECT_EQ(plain_decimal("5. 12345678"), std::pair(std::size_t{2}, 5.0));
    EXPECT_EQ(plain_decimal("00000000000.25  "), std::pair(std::size_t{14}, 0.25));
}

TEST(PlainDecimal, LeavesEverythingElseToTheGeneralReader) {
    for (const char* text :
         {"", " ", "-", ".", "- 5", "+5 12345678", "1234567890123456", "12345678.12345678 12345678",
          "1e3 12345678", "12,5 12345678", "12.5.1 12345678", "12a45678 1", "1234567/ 1",
          "1234567: 1", "1234567\xB9 1", "\xB1\xB2\xB3\xB4\xB5\xB6\xB7\xB8", "--512345678"}) {
        EXPECT_EQ(plain_decimal(text), std::pair(std::size_t{0}, 0.0)) << text;
    }
}

}  // namespace
}  // namespace veldra
