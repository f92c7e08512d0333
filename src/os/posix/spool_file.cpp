#include "os/spool_file.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "os/files.h"
#include "os/system_error.h"

namespace veldra {

SpoolFile::SpoolFile() {
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    folder_ = error ? "/tmp" : base.string();
    std::string path = folder_ + "/veldra-XXXXXX";
    handle_ = ::mkostemp(path.data(), O_CLOEXEC);
    if (handle_ < 0) {
        throw file_error("Zwischendatei kann nicht angelegt werden", folder_, errno);
    }
    ::unlink(path.c_str());
}

SpoolFile::~SpoolFile() {
    ::close(handle_);
}

std::uint64_t SpoolFile::append(std::string_view bytes) {
    const std::uint64_t place = size_;
    while (!bytes.empty()) {
        const ssize_t written =
            ::pwrite(handle_, bytes.data(), bytes.size(), static_cast<off_t>(size_));
        if (written > 0) {
            size_ += static_cast<std::uint64_t>(written);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            throw file_error("Zwischendatei kann nicht geschrieben werden", folder_,
                             written == 0 ? EIO : errno);
        }
    }
    return place;
}

std::string SpoolFile::read(std::uint64_t place, std::size_t size) const {
    std::string bytes(size, '\0');
    std::size_t have = 0;
    while (have < size) {
        const ssize_t count =
            ::pread(handle_, bytes.data() + have, size - have, static_cast<off_t>(place + have));
        if (count > 0) {
            have += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            throw file_error("Zwischendatei kann nicht gelesen werden", folder_,
                             count == 0 ? EIO : errno);
        }
    }
    return bytes;
}

std::string SpoolFile::path() const {
    return "/proc/self/fd/" + std::to_string(handle_);
}

}  // namespace veldra
