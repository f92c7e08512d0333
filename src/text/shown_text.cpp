#include "text/shown_text.h"

#include <cstdio>

namespace veldra {

namespace {

bool is_control(unsigned char byte) {
    return (byte < 0x20 && byte != '\n') || byte == 0x7F;
}

/// U+0080 to U+009F, which many terminals obey like the seven-bit sequences.
bool is_upper_control(std::string_view text, std::size_t at) {
    constexpr unsigned char lead = 0xC2;
    return static_cast<unsigned char>(text[at]) == lead && at + 1 < text.size() &&
           (static_cast<unsigned char>(text[at + 1]) & 0xE0U) == 0x80U;
}

}  // namespace

std::string for_terminal(std::string_view utf8) {
    std::string shown;
    shown.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        if (is_upper_control(utf8, at)) {
            shown += '?';
            ++at;
        } else {
            shown += is_control(static_cast<unsigned char>(utf8[at])) ? '?' : utf8[at];
        }
    }
    return shown;
}

void tell_on_terminal(std::string_view utf8) {
    const std::string line = for_terminal(utf8) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace veldra
