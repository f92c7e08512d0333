#include "batch/command_input.h"

#include <algorithm>
#include <utility>

#include "batch/options.h"
#include "os/files.h"
#include "os/process.h"
#include "text/fatal_error.h"

namespace veldra::batch {

namespace {

constexpr const char* standard_input_path = "/dev/stdin";

template <typename Read>
void copy_all(SpoolFile& copy, const Read& read) {
    constexpr std::size_t piece = std::size_t{1} << 18U;
    std::vector<char> bytes(piece);
    while (const std::size_t count = read(bytes.data(), bytes.size())) {
        copy.append({bytes.data(), count});
    }
}

void copy_input(const std::string& path, SpoolFile& copy) {
    if (path == standard_input_path) {
        copy_all(copy, read_standard_input);
        return;
    }
    InputFile source(path);
    copy_all(copy, [&source](char* bytes, std::size_t size) { return source.read(bytes, size); });
}

/// The message with `to` in the place of each `from`.
std::string replaced(std::string message, const std::string& from, const std::string& to) {
    for (std::size_t at = message.find(from); at != std::string::npos;
         at = message.find(from, at + to.size())) {
        message.replace(at, from.size(), to);
    }
    return message;
}

}  // namespace

bool is_standard_input(const std::string& argument) {
    return argument == "-";
}

void refuse_standard_input_twice(const std::vector<std::string>& arguments) {
    if (std::count_if(arguments.begin(), arguments.end(), is_standard_input) > 1) {
        throw UsageError("die Standardeingabe lässt sich nur einmal lesen");
    }
}

CommandInput::CommandInput(const std::string& argument)
    : path_(argument),
      name_(is_standard_input(argument) ? "Standardeingabe" : absolute_path(argument)) {
    const std::string source = is_standard_input(argument) ? standard_input_path : argument;
    if (!is_standard_input(argument) && !sonderdatei_vorhanden(argument)) {
        return;
    }
    copy_.emplace();
    try {
        copy_input(source, *copy_);
    } catch (const FatalError& error) {
        throw FatalError(replaced(error.what(), source, name_));
    }
    path_ = copy_->path();
}

std::string CommandInput::named(std::string message) const {
    return is_copy() ? replaced(std::move(message), path_, name_) : message;
}

}  // namespace veldra::batch
