#include "batch/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fmt/format.h>

#include "batch/options.h"
#include "os/files.h"
#include "text/fatal_error.h"

namespace veldra::batch {

void write_to_standard_output(const std::string& text) {
    errno = 0;
    const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!whole || std::fflush(stdout) != 0) {
        throw FatalError(std::string("Standardausgabe: kann nicht geschrieben werden: ") +
                         std::strerror(errno));
    }
}

void refuse_input_as_output(const std::string& input, const std::string& output) {
    if (same_file(input, output)) {
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

void remark(const std::string& text) {
    fmt::print(stderr, "veldra-cli: {}\n", text);
}

}  // namespace veldra::batch
