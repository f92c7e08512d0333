#include "text/codepage.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace veldra {

namespace {

/// Bytes 0x80 to 0x9F; the undefined ones stay control characters.
constexpr std::array<char16_t, 32> upper_control{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool is_control(char byte) {
    constexpr unsigned char first_letter = 0x20;
    constexpr unsigned char del = 0x7F;
    const auto code = static_cast<unsigned char>(byte);
    return code < first_letter || code == del;
}

char byte_of(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
        return static_cast<char>(code);
    }
    for (std::size_t i = 0; i < upper_control.size(); ++i) {
        if (upper_control[i] == code) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

/// Decodes the sequence at `at` and moves behind it; malformed bytes give U+FFFD one by one.
char32_t next_code_point(std::string_view text, std::size_t& at) {
    constexpr char32_t malformed = 0xFFFD;
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    const int more = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
    if (more == 0 || lead >= 0xF5 || at + static_cast<std::size_t>(more) > text.size()) {
        return malformed;
    }
    char32_t code = lead & (0x3FU >> static_cast<unsigned>(more));
    for (int i = 0; i < more; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
        if ((byte & 0xC0U) != 0x80U) {
            return malformed;
        }
        code = (code << 6U) | (byte & 0x3FU);
    }
    at += static_cast<std::size_t>(more);
    return code;
}

}  // namespace

char32_t code_point(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? upper_control[byte - 0x80U] : byte;
}

std::string to_utf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const char32_t code = code_point(static_cast<unsigned char>(c));
        if (code < 0x80) {
            text += c;
        } else if (code < 0x800) {
            text += static_cast<char>(0xC0U | (code >> 6U));
            text += static_cast<char>(0x80U | (code & 0x3FU));
        } else {
            text += static_cast<char>(0xE0U | (code >> 12U));
            text += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
            text += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return text;
}

std::string from_utf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        bytes += byte_of(next_code_point(text, at));
    }
    return bytes;
}

std::string upper_case(std::string_view bytes) {
    std::string upper(bytes);
    for (char& c : upper) {
        c = upper_case(c);
    }
    return upper;
}

std::string one_line(std::string_view bytes) {
    std::string text(bytes);
    std::replace_if(text.begin(), text.end(), is_control, ' ');
    return text;
}

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace veldra
