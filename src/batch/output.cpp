#include "batch/output.h"

#include <cerrno>
#include <cstdio>

#include <fmt/format.h>

#include "batch/command_input.h"
#include "batch/options.h"
#include "os/files.h"
#include "os/system_error.h"
#include "text/fatal_error.h"
#include "text/shown_text.h"

namespace veldra::batch {

void write_to_standard_output(const std::string& text) {
    errno = 0;
    const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!whole || std::fflush(stdout) != 0) {
        throw file_error("kann nicht geschrieben werden", "Standardausgabe", errno);
    }
}

void refuse_input_as_output(const std::string& input, const std::string& output) {
    if (same_file(is_standard_input(input) ? "/dev/stdin" : input, output)) {
        throw UsageError(output + ": Ausgabe und Eingabe sind dieselbe Datei");
    }
}

void tell_ownership_loss(const std::string& output) {
    const OwnershipLoss loss = ownership_loss(output);
    if (!loss.any()) {
        return;
    }
    std::string lost;
    if (!loss.owner.empty()) {
        lost = "den Besitzer " + loss.owner;
    }
    if (!loss.group.empty()) {
        lost += (lost.empty() ? "die Gruppe " : " und die Gruppe ") + loss.group;
    }
    remark(output + ": behält " + lost + " nicht und gehört danach dem, der sie schreibt");
}

std::string one_line(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at)) {
        text.replace(at, 1, ", ");
    }
    return text;
}

std::string json_for_terminal(const std::string& json) {
    constexpr unsigned char lead = 0xC2;
    constexpr unsigned char delete_character = 0x7F;
    std::string text;
    text.reserve(json.size());
    for (std::size_t at = 0; at < json.size(); ++at) {
        const auto byte = static_cast<unsigned char>(json[at]);
        const auto next = static_cast<unsigned char>(at + 1 < json.size() ? json[at + 1] : '\0');
        if (byte == lead && (next & 0xE0U) == 0x80U) {
            text += fmt::format("\\u{:04x}", next);
            ++at;
        } else if (byte == delete_character) {
            text += "\\u007f";
        } else {
            text += json[at];
        }
    }
    return text;
}

void remark(const std::string& text) {
    tell_on_terminal("veldra-cli: " + one_line(text));
}

}  // namespace veldra::batch
