#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace veldra::batch {

/// What is wrong with the arguments, in German.
[[nodiscard]] std::string usage_fault(const CLI::App& app, const CLI::ParseError& error);

/// The command whose name is most like the word; "" if none is alike. Letters that are wrong,
/// missing, too many, or exchanged with their neighbour count one each; a name may differ in a
/// third of its letters, but in one at least, or be cut off.
[[nodiscard]] std::string nearest_command(const CLI::App& app, const std::string& word);

}  // namespace veldra::batch
