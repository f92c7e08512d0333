#include "os/files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/posix/temporaries.h"
#include "os/system_error.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

constexpr std::size_t read_buffer_size = std::size_t{1} << 18U;

}  // namespace

InputFile::InputFile(const std::string& path)
    : path_(path), handle_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (handle_ < 0) {
        throw file_error("Datei kann nicht gelesen werden", path, errno);
    }
}

InputFile::~InputFile() {
    ::close(handle_);
}

std::size_t InputFile::read(char* buffer, std::size_t size) {
    while (true) {
        const ssize_t count = ::read(handle_, buffer, size);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw file_error("Datei kann nicht gelesen werden", path_, errno);
        }
    }
}

std::uint64_t InputFile::size() const {
    struct stat status {};
    return ::fstat(handle_, &status) == 0 && status.st_size > 0
               ? static_cast<std::uint64_t>(status.st_size)
               : 0;
}

TemporaryFolder::TemporaryFolder() {
    const TemporariesHold hold;
    path_ = temporary_directory() + "/veldra-XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr) {
        throw file_error("Ordner kann nicht angelegt werden", path_, errno);
    }
    hold.add(path_);
}

TemporaryFolder::~TemporaryFolder() {
    const TemporariesHold hold;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    hold.forget(path_);
}

bool datei_vorhanden(const std::string& path) {
    // Opening would wait at a pipe until somebody writes to it.
    if (sonderdatei_vorhanden(path)) {
        return ::access(path.c_str(), R_OK) == 0;
    }
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) {
        return false;
    }
    struct stat status {};
    const bool is_file = ::fstat(handle, &status) == 0 && !S_ISDIR(status.st_mode);
    ::close(handle);
    return is_file;
}

bool is_missing(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

bool sonderdatei_vorhanden(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

bool ordner_vorhanden(const std::string& path) {
    std::string folder = path;
    if (folder.size() > 1 && folder.back() == '/') {
        folder.pop_back();
    }
    struct stat status {};
    return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void remove_file(const std::string& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
        throw file_error("Datei kann nicht gelöscht werden", path, errno);
    }
}

std::string temporary_directory() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return error ? "/tmp" : folder.string();
}

void create_folder(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        throw file_error("Ordner kann nicht angelegt werden", path, error.value());
    }
}

std::string read_whole_file(const std::string& path) {
    InputFile file(path);
    std::string content;
    while (true) {
        const std::size_t have = content.size();
        content.resize(have + read_buffer_size);
        const std::size_t count = file.read(content.data() + have, read_buffer_size);
        content.resize(have + count);
        if (count == 0) {
            return content;
        }
    }
}

std::optional<std::string> read_file_if_any(const std::string& path) {
    return is_missing(path) ? std::nullopt : std::optional(read_whole_file(path));
}

bool same_file(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

std::string absolute_path(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

bool file_writable(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool folder_writable(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.empty() ? "." : path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::string folder_of_file(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

bool file_replaceable(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return !error && file_writable(target.string()) &&
           folder_writable(target.parent_path().string());
}

FileStamp file_stamp(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return {};
    }
    constexpr std::int64_t ns_per_second = 1000000000;
    return {static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * ns_per_second + status.st_mtim.tv_nsec};
}

}  // namespace veldra
