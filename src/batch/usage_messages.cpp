#include "batch/usage_messages.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "text/codepage.h"

namespace veldra::batch {

namespace {

/// Letters to be changed, added, dropped or exchanged with their neighbour to get from a to b.
std::size_t letters_apart(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> apart(a.size() + 1,
                                                std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                apart[i][j] = i + j;
                continue;
            }
            const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            apart[i][j] =
                std::min({apart[i - 1][j] + 1, apart[i][j - 1] + 1, apart[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                apart[i][j] = std::min(apart[i][j], apart[i - 2][j - 2] + 1);
            }
        }
    }
    return apart[a.size()][b.size()];
}

/// The option or argument that a message of the parser speaks of, "" if none is found.
std::string subject_of(const CLI::App& app, const std::string& message) {
    std::string subject;
    for (const CLI::Option* option : app.get_options()) {
        const std::string name = option->get_name();
        if (message.find(name) != std::string::npos && name.size() > subject.size()) {
            subject = name;
        }
    }
    for (const CLI::App* command : app.get_subcommands()) {
        const std::string deeper = subject_of(*command, message);
        subject = deeper.empty() ? subject : deeper;
    }
    return subject;
}

/// Of a call without a command that is known.
std::string missing_command(const std::vector<std::string>& words) {
    return words.empty()               ? "es fehlt ein Befehl"
           : words[0].starts_with('-') ? "unbekannte Angabe " + words[0]
                                       : "unbekannter Befehl " + words[0];
}

}  // namespace

std::string nearest_command(const CLI::App& app, const std::string& word) {
    constexpr std::size_t share = 3;
    constexpr std::size_t shortest_beginning = 2;
    std::string nearest;
    std::size_t least = 0;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        const std::string& name = command->get_name();
        const bool cut_off = word.size() >= shortest_beginning && name.starts_with(word);
        const std::size_t apart = letters_apart(word, name);
        const std::size_t allowed = std::max<std::size_t>(name.size() / share, 1);
        if ((cut_off || apart <= allowed) && (nearest.empty() || apart < least)) {
            nearest = name;
            least = apart;
        }
    }
    return nearest;
}

std::string usage_fault(const CLI::App& app, const CLI::ParseError& error) {
    const std::string message = error.what();
    const std::vector<std::string> untaken = app.remaining();
    std::string text = "falscher Aufruf";
    std::string subject = subject_of(app, message);
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
        case CLI::ExitCodes::RequiredError:
            text = subject.empty() ? missing_command(untaken) : "es fehlt";
            break;
        case CLI::ExitCodes::ExtrasError:
            text = "unbekannte Angabe";
            subject = message.substr(message.rfind(": ") + 1);
            break;
        case CLI::ExitCodes::ConversionError:
        case CLI::ExitCodes::ValidationError:
            text = "unzulässiger Wert für";
            break;
        case CLI::ExitCodes::ArgumentMismatch:
            text = "fehlender oder überzähliger Wert für";
            break;
        default:
            break;
    }
    text += subject.empty() ? "" : " " + std::string(trim(subject));
    const bool no_command = app.get_subcommands().empty() && !untaken.empty();
    const std::string nearest = no_command ? nearest_command(app, untaken[0]) : "";
    text += nearest.empty() ? "" : fmt::format("; gemeint ist wohl {}", nearest);
    return text + "; Hilfe mit --help";
}

}  // namespace veldra::batch
