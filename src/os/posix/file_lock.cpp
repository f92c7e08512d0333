#include "os/file_lock.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/file_names.h"
#include "os/file_rights.h"
#include "os/user_names.h"

namespace veldra {

namespace {

constexpr std::size_t longest_signature = 255;

std::string signature() {
    std::array<char, longest_signature> host{};
    const bool known = ::gethostname(host.data(), host.size() - 1) == 0;
    std::string text = user_name(::geteuid());
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

/// Locks for this handle alone. A network share may give a handle that cannot write no more than a
/// shared lock, which shows as well whether another one has locked.
bool lock(int handle) {
    return ::flock(handle, LOCK_EX | LOCK_NB) == 0 ||
           (errno == EBADF && ::flock(handle, LOCK_SH | LOCK_NB) == 0);
}

/// A mark is a short file of its own; nothing else that has its name is touched.
bool may_be_mark(int handle) {
    struct stat status {};
    return ::fstat(handle, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink <= 1 &&
           status.st_size <= static_cast<off_t>(longest_signature);
}

/// The owner of a mark that we may not even read; "" if it is none.
std::string owner_of_closed_mark(const std::string& mark) {
    struct stat status {};
    const bool is_mark = ::lstat(mark.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
                         status.st_size <= static_cast<off_t>(longest_signature);
    return is_mark ? user_name(status.st_uid) : std::string();
}

}  // namespace

std::string FileLock::mark_of(const std::string& path) {
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(path, error);
    if (error) {
        target = std::filesystem::absolute(path, error);
    }
    constexpr std::string_view begin = ".";
    constexpr std::string_view end = ".veldra";
    const std::filesystem::path name = with_room_for(target.string(), begin.size() + end.size());
    return target.parent_path() / std::string(begin).append(name.filename().string()).append(end);
}

FileLock::FileLock(const std::string& path) : path_(path), mark_(mark_of(path)) {
    constexpr int attempts = 10;
    for (int i = 0; i < attempts && !take(); ++i) {
    }
}

/// True when there is nothing left to try.
bool FileLock::take() {
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    int handle = ::open(mark_.c_str(), O_RDWR | flags);
    if (handle >= 0) {
        return take_present(handle, true);
    }
    if (errno == ENOENT) {
        return take_new();
    }
    if (errno != EACCES && errno != EROFS) {
        return true;
    }
    handle = ::open(mark_.c_str(), O_RDONLY | flags);
    if (handle >= 0) {
        return take_present(handle, false);
    }
    holder_ = owner_of_closed_mark(mark_);
    held_elsewhere_ = !holder_.empty();
    return true;
}

bool FileLock::take_new() {
    constexpr mode_t readable_by_all = 0644;
    const int handle = ::open(mark_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                              S_IRUSR | S_IWUSR);
    if (handle < 0) {
        return errno != EEXIST;
    }
    struct stat file {};
    file.st_mode = readable_by_all;
    file.st_uid = ::geteuid();
    file.st_gid = ::getegid();
    (void)::stat(path_.c_str(), &file);
    file.st_mode &= 0666U;
    // A mark with rights of its own holds as well.
    (void)take_rights(handle, file, path_, S_IRUSR | S_IWUSR);
    return take_present(handle, true);
}

/// Takes an open mark unless it is locked; false if another attempt will show more.
bool FileLock::take_present(int handle, bool writable) {
    if (!may_be_mark(handle)) {
        ::close(handle);
        return true;
    }
    if (!lock(handle)) {
        held_elsewhere_ = errno == EWOULDBLOCK;
        holder_ = held_elsewhere_ ? read_signature(handle) : std::string();
        ::close(handle);
        return true;
    }
    // What nobody has locked has been left by a crash. One that is not ours to sign is made anew.
    const bool outdated = !still_there(handle, mark_);
    if (outdated || (!writable && ::unlink(mark_.c_str()) == 0)) {
        ::close(handle);
        return false;
    }
    handle_ = handle;
    if (writable) {
        sign();
    }
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
        if (still_there(handle_, mark_)) {
            ::unlink(mark_.c_str());
        }
        ::close(handle_);
    }
}

}  // namespace veldra
