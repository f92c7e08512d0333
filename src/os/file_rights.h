#pragma once

#include <string>

#include <sys/stat.h>

namespace veldra {

/// Gives a file that the caller has just made, private to its owner, the access rights of `model`
/// (whose path is `model_path`) and its owner and group as far as the caller may. A group that
/// cannot be kept leaves to the other one no more than everybody has. Gives the system's error, 0
/// for none; a file system that keeps no rights is none.
[[nodiscard]] int take_rights(int handle, const struct stat& model, const std::string& model_path,
                              mode_t at_least = 0);

}  // namespace veldra
