#pragma once

#include <string>
#include <string_view>

namespace veldra {

/// Windows-1252 bytes as UTF-8. The five undefined bytes become the control characters of the same
/// number, so that nothing is lost.
[[nodiscard]] std::string to_utf8(std::string_view bytes);

/// UTF-8 as Windows-1252 bytes; what the code page lacks, and malformed UTF-8, becomes "?".
[[nodiscard]] std::string from_utf8(std::string_view text);

/// Code point of a Windows-1252 byte.
[[nodiscard]] char32_t code_point(unsigned char byte);

/// Upper case of a Windows-1252 text: letters a to z, ä, ö, ü; every other byte stays, ß too.
[[nodiscard]] std::string upper_case(std::string_view bytes);
[[nodiscard]] constexpr char upper_case(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    const bool umlaut = code == 0xE4 || code == 0xF6 || code == 0xFC;
    return (code >= 'a' && code <= 'z') || umlaut ? static_cast<char>(code - 0x20U) : byte;
}

/// The text with a blank for each control character (0 to 31 and 127), so that it can stand in a
/// line of a file.
[[nodiscard]] std::string one_line(std::string_view bytes);

/// The text without blanks at both ends. Tabs and NULs are no blanks.
[[nodiscard]] std::string_view trim(std::string_view text);

}  // namespace veldra
