#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/os/files.h"
#include "platform/os/system_error.h"
#include "platform/os/temporaries.h"
#include "shell/fatal_error.h"

namespace veldra {

namespace {

constexpr std::size_t write_buffer_size = std::size_t{1} << 18U;

void write_all(int handle, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(handle, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw file_error("Datei kann nicht geschrieben werden", path, errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Sets the permissions of a file that the caller has just made, and gives the error, 0 for none. A
/// file system that keeps no permissions refuses even its owner, which is no reason to fail: the
/// file is as private as it was made.
int set_permissions(int handle, mode_t mode) {
    if (::fchmod(handle, mode) == 0 || errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS) {
        return 0;
    }
    return errno;
}

/// The permissions of a file that is new.
mode_t usual_permissions() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

/// Makes a rename durable; a file system that cannot do so is no reason to fail.
void sync_folder_of(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle >= 0) {
        ::fsync(handle);
        ::close(handle);
    }
}

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

ReplacedFile::ReplacedFile(const std::string& path) : path_(path) {
    std::error_code ignored;
    const std::filesystem::path target = std::filesystem::canonical(path, ignored);
    if (!ignored) {
        path_ = target.string();
    }
    struct stat status {};
    const bool exists = ::stat(path_.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        throw file_error("Datei kann nicht geschrieben werden", path, EISDIR);
    }
    // A device or a pipe would be gone when a file takes its place.
    if (exists && !S_ISREG(status.st_mode)) {
        throw file_error("Datei kann nicht geschrieben werden", path, ENOTSUP);
    }
    if (exists && ::access(path_.c_str(), W_OK) != 0) {
        throw file_error("Datei kann nicht geschrieben werden", path, errno);
    }
    buffer_.reserve(write_buffer_size);
    temporary_ = path_ + ".neu-XXXXXX";
    handle_ = ::mkstemp(temporary_.data());
    if (handle_ < 0) {
        const int error = errno;
        temporary_.clear();
        throw file_error("Datei kann nicht geschrieben werden", path, error);
    }
    ::fcntl(handle_, F_SETFD, FD_CLOEXEC);
    const mode_t mode = exists ? status.st_mode & 07777U : usual_permissions();
    const int error = set_permissions(handle_, mode);
    if (error != 0) {
        discard();
        throw file_error("Datei kann nicht geschrieben werden", path, error);
    }
}

ReplacedFile::~ReplacedFile() {
    discard();
}

void ReplacedFile::discard() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

void ReplacedFile::write(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > write_buffer_size) {
        flush();
    }
    if (bytes.size() >= write_buffer_size) {
        write_all(handle_, bytes, path_);
    } else {
        buffer_ += bytes;
    }
}

void ReplacedFile::flush() {
    write_all(handle_, buffer_, path_);
    buffer_.clear();
}

void ReplacedFile::commit() {
    flush();
    if (::fsync(handle_) != 0) {
        throw file_error("Datei kann nicht geschrieben werden", path_, errno);
    }
    const int closed = ::close(handle_);
    handle_ = -1;
    if (closed != 0) {
        throw file_error("Datei kann nicht geschrieben werden", path_, errno);
    }
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) {
        throw file_error("Datei kann nicht ersetzt werden", path_, errno);
    }
    temporary_.clear();
    sync_folder_of(path_);
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
        content.resize(have + write_buffer_size);
        const std::size_t count = file.read(content.data() + have, write_buffer_size);
        content.resize(have + count);
        if (count == 0) {
            return content;
        }
    }
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
