#pragma once

#include <cstddef>
#include <string>

namespace veldra {

/// The path with room for `bytes` more behind its file name: a name that would become longer than
/// its folder takes is cut at a character and ends in a mark of the whole name, so that different
/// names stay different. A shorter name stays as it is.
[[nodiscard]] std::string with_room_for(const std::string& path, std::size_t bytes);

}  // namespace veldra
