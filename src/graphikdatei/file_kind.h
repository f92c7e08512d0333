#pragma once

#include <cstdint>
#include <string>

namespace veldra {

/// What a file looks like from its beginning.
enum class FileKind : std::uint8_t {
    graphic,     ///< a text with a record of a graphic file; also an empty or unreadable one
    other_text,  ///< a text without any
    binary       ///< no text at all: writing it anew line by line would destroy it
};

/// Looks at the first 64 KB of a file, or at less if it is shorter. A file that cannot be read
/// counts as a graphic file, since reading it tells why.
[[nodiscard]] FileKind kind_of_file(const std::string& path);

}  // namespace veldra
