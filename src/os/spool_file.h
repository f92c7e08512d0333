#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldra {

/// A file for intermediate bytes in the system's temporary folder. It has no name, so nothing is
/// left of it even after a crash. Failures throw FatalError.
class SpoolFile {
 public:
    SpoolFile();
    ~SpoolFile();
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;

    /// Appends bytes and gives the place of the first one.
    std::uint64_t append(std::string_view bytes);
    [[nodiscard]] std::string read(std::uint64_t place, std::size_t size) const;
    /// A path that opens the bytes from the first one on, as often as wanted, while this lives.
    [[nodiscard]] std::string path() const;

 private:
    std::string folder_;
    std::uint64_t size_ = 0;
    int handle_ = -1;
};

}  // namespace veldra
