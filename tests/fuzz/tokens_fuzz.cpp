// Tokens, numbers and texts of one line.

#include <cmath>
#include <cstdlib>
#include <limits>

#include "fuzz_support.h"
#include "text/codepage.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace {

using veldra::fuzz::require;

/// Length of the number at the beginning of a text, told character by character.
std::size_t number_length(const std::string& text) {
    std::size_t at = text.find_first_not_of(' ');
    if (at == std::string::npos) {
        return 0;
    }
    at += text[at] == '-' || text[at] == '+' ? 1 : 0;
    bool point = false;
    bool digit = false;
    for (; at < text.size(); ++at) {
        const bool is_digit = text[at] >= '0' && text[at] <= '9';
        if (!is_digit && (point || text[at] != '.')) {
            break;
        }
        digit = digit || is_digit;
        point = point || !is_digit;
    }
    if (!digit) {
        return 0;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        std::size_t exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) {
            ++exponent;
        }
        const std::size_t end =
            std::min(text.find_first_not_of("0123456789", exponent), text.size());
        at = end > exponent ? end : at;
    }
    return at;
}

/// The value by the C library, which reads what number_length cuts out in the same way.
double reference_value(const std::string& text) {
    const std::string number = text.substr(0, number_length(text));
    const double value = number.empty() ? 0.0 : std::strtod(number.c_str(), nullptr);
    constexpr double largest = std::numeric_limits<double>::max();
    return std::isinf(value) ? std::copysign(largest, value) : value;
}

void check_number(std::string text) {
    const double value = veldra::numeric_prefix(text);
    const double expected = reference_value(text);
    const bool tiny = std::abs(expected) < std::numeric_limits<double>::min();
    require(value == expected || (tiny && value == 0.0), "a number reads as its digits say");

    const std::size_t comma = text.find(',');
    const double with_comma = veldra::zahl_wert(text);
    if (comma != std::string::npos) {
        text[comma] = '.';
    }
    require(with_comma == veldra::numeric_prefix(text), "the first comma reads as a point");
}

void check_number_text(double value) {
    const std::string text = veldra::zahl_text(value, "#######0.000", " ");
    require(text.size() >= 12, "a number fills its mask");
    const double back = veldra::numeric_prefix(text);
    require(std::abs(back - value) <= 0.0005000001 + std::abs(value) * 1e-15,
            "a number is rounded to its mask");
    require(veldra::zahl_text(back, "#######0.000", " ") == text, "a rounded number stays");
}

void check_words(std::string_view line) {
    veldra::Record record(line);
    for (int n = 1; n <= 16; ++n) {
        const veldra::Word word = veldra::suche_wort(line, n);
        require(word.found() == !word.text.empty(), "a word that is found is not empty");
        if (word.found()) {
            require(word.text.data() >= line.data() &&
                        word.text.data() + word.text.size() <= line.data() + line.size(),
                    "a word is part of its line");
        }
        if (n == 1) {
            require(record.has_keyword() == word.found(), "the keyword is the first word");
        } else if (record.has_keyword()) {
            const veldra::Word kept = record.word(n);
            require(kept.status == word.status && kept.text == word.text,
                    "a record has the words of its line");
            require(record.number(n) == veldra::zahl_wert(word.text), "a word is read as a number");
        }
    }
    if (record.has_keyword() && record.has_rest()) {
        const std::string_view rest = record.rest();
        require(rest == veldra::trim(rest), "the rest of a line is trimmed");
    }
}

void check_numbers_before_words(std::string_view line) {
    veldra::Record record(line);
    for (int n = 2; n <= 16 && record.has_keyword(); ++n) {
        const double value = record.number(n);
        require(value == veldra::zahl_wert(veldra::suche_wort(line, n).text),
                "a number is that of its word");
    }
}

void check_texts(std::string_view bytes) {
    require(veldra::from_utf8(veldra::to_utf8(bytes)) == bytes, "bytes outlast being shown");
    const std::string upper = veldra::upper_case(bytes);
    require(veldra::upper_case(upper) == upper, "upper case stays");
    // Any bytes can be taken for UTF-8.
    require(veldra::from_utf8(bytes).size() <= bytes.size(), "a code page text is never longer");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    check_words(line);
    check_numbers_before_words(line);
    check_texts(line);
    check_number(std::string(line));
    const double value = veldra::zahl_wert(line);
    if (std::abs(value) < 1e15) {
        check_number_text(value);
    }
    require(!veldra::zahl_text(value, "#0000000.00", " ").empty(), "every number has a text");
    return 0;
}
