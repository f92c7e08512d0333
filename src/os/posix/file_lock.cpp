#include "os/file_lock.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldra {

namespace {

constexpr std::size_t longest_signature = 255;

std::string signature() {
    const passwd* const user = ::getpwuid(::geteuid());
    std::array<char, longest_signature> host{};
    const bool known = ::gethostname(host.data(), host.size() - 1) == 0;
    std::string text = user != nullptr ? user->pw_name : "unbekannt";
    if (known && host[0] != '\0') {
        text += " auf ";
        text += host.data();
    }
    return text;
}

std::string read_signature(int handle) {
    std::array<char, longest_signature> text{};
    const ssize_t length = ::pread(handle, text.data(), text.size(), 0);
    return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
}

/// False once the mark has been deleted by its last owner, between our opening and our locking.
bool still_there(int handle, const std::string& mark) {
    struct stat open_file {};
    struct stat named_file {};
    return ::fstat(handle, &open_file) == 0 && ::stat(mark.c_str(), &named_file) == 0 &&
           open_file.st_dev == named_file.st_dev && open_file.st_ino == named_file.st_ino;
}

}  // namespace

std::string FileLock::mark_of(const std::string& path) {
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(path, error);
    if (error) {
        target = std::filesystem::absolute(path, error);
    }
    return target.parent_path() / ("." + target.filename().string() + ".veldra");
}

FileLock::FileLock(const std::string& path) : mark_(mark_of(path)) {
    constexpr int attempts = 10;
    for (int i = 0; i < attempts && !take(); ++i) {
    }
}

/// True when there is nothing left to try.
bool FileLock::take() {
    // Everyone who may write to the folder may open the mark, so that the lock works among them.
    constexpr mode_t mode = 0666;
    const int handle = ::open(mark_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, mode);
    if (handle < 0) {
        return true;
    }
    if (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
        held_elsewhere_ = errno == EWOULDBLOCK;
        holder_ = held_elsewhere_ ? read_signature(handle) : std::string();
        ::close(handle);
        return true;
    }
    if (!still_there(handle, mark_)) {
        ::close(handle);
        return false;
    }
    handle_ = handle;
    sign();
    return true;
}

/// Without a signature the lock holds as well.
void FileLock::sign() const {
    const std::string text = signature();
    if (::ftruncate(handle_, 0) != 0 || ::pwrite(handle_, text.data(), text.size(), 0) < 0) {
        return;
    }
}

FileLock::~FileLock() {
    if (handle_ >= 0) {
        ::unlink(mark_.c_str());
        ::close(handle_);
    }
}

}  // namespace veldra
