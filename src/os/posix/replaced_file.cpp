#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/file_rights.h"
#include "os/files.h"
#include "os/posix/temporaries.h"
#include "os/system_error.h"
#include "os/temporary_file.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

constexpr std::size_t write_buffer_size = std::size_t{1} << 18U;
constexpr const char* not_writable = "Datei kann nicht geschrieben werden";
constexpr mode_t private_rights = S_IRUSR | S_IWUSR;

void write_all(int handle, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(handle, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw file_error(not_writable, path, errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
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

bool is_link(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool nothing_has_name(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

/// Gives a file a name that nothing has; false with errno.
bool rename_to_unused(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return true;
    }
    if (errno == EEXIST) {
        return false;
    }
    // A file system with neither: the moment between looking and renaming cannot be helped.
    if (!nothing_has_name(to)) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

ReplacedFile::ReplacedFile(const std::string& path, NamedBy named_by, const std::string& rights_of)
    : given_path_(path), path_(path), named_by_(named_by) {
    follow_links();
    refuse_other_than_files();
    buffer_.reserve(write_buffer_size);
    remove_left_temporaries_beside(path_);
    open_temporary(rights_of);
}

ReplacedFile::~ReplacedFile() {
    discard();
}

void ReplacedFile::follow_links() {
    const bool link = is_link(path_);
    if (named_by_ != NamedBy::user) {
        if (link) {
            throw FatalError(given_path_ + ": " + not_writable +
                             ": der Name ist der einer symbolischen Verknüpfung");
        }
        return;
    }
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path_, error);
    if (!error) {
        path_ = target.string();
    } else if (link && error.value() == ENOENT) {
        throw FatalError(given_path_ + ": " + not_writable +
                         ": die symbolische Verknüpfung führt zu keiner Datei");
    } else if (link) {
        throw file_error(not_writable, given_path_, error.value());
    }
}

void ReplacedFile::refuse_other_than_files() const {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0) {
        if (errno != ENOENT) {
            throw file_error(not_writable, given_path_, errno);
        }
        return;
    }
    if (named_by_ == NamedBy::program_as_new) {
        throw file_error(not_writable, given_path_, EEXIST);
    }
    if (S_ISDIR(status.st_mode)) {
        throw file_error(not_writable, given_path_, EISDIR);
    }
    // A device or a pipe would be gone when a file takes its place.
    if (!S_ISREG(status.st_mode)) {
        throw file_error(not_writable, given_path_, ENOTSUP);
    }
    if (!file_writable(path_)) {
        throw file_error(not_writable, given_path_, errno);
    }
}

void ReplacedFile::open_temporary(const std::string& rights_of) {
    constexpr mode_t usual_rights = 0666;  // less what the user's mask takes away
    const bool copy = !rights_of.empty();
    const std::string& model_path = copy ? rights_of : path_;
    struct stat model {};
    const bool known = ::stat(model_path.c_str(), &model) == 0;
    const TemporariesHold hold;
    handle_ =
        create_temporary_beside(path_, known || copy ? private_rights : usual_rights, temporary_);
    if (handle_ < 0) {
        const int error = errno;
        temporary_.clear();
        throw file_error(not_writable, given_path_, error);
    }
    hold.add(temporary_);
    const int error =
        known ? take_rights(handle_, model, model_path, copy ? private_rights : 0) : 0;
    if (error != 0) {
        discard();
        throw file_error(not_writable, given_path_, error);
    }
}

void ReplacedFile::discard() {
    if (handle_ >= 0) {
        ::close(handle_);
        handle_ = -1;
    }
    if (!temporary_.empty()) {
        const TemporariesHold hold;
        ::unlink(temporary_.c_str());
        hold.forget(temporary_);
        temporary_.clear();
    }
}

void ReplacedFile::write(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > write_buffer_size) {
        flush();
    }
    if (bytes.size() >= write_buffer_size) {
        write_all(handle_, bytes, given_path_);
    } else {
        buffer_ += bytes;
    }
}

void ReplacedFile::flush() {
    write_all(handle_, buffer_, given_path_);
    buffer_.clear();
}

void ReplacedFile::take_place() {
    const TemporariesHold hold;
    const bool done = named_by_ == NamedBy::program_as_new
                          ? rename_to_unused(temporary_, path_)
                          : ::rename(temporary_.c_str(), path_.c_str()) == 0;
    if (!done) {
        throw file_error("Datei kann nicht ersetzt werden", given_path_, errno);
    }
    hold.forget(temporary_);
    temporary_.clear();
}

void ReplacedFile::commit() {
    flush();
    if (::fsync(handle_) != 0) {
        throw file_error(not_writable, given_path_, errno);
    }
    const int closed = ::close(handle_);
    handle_ = -1;
    if (closed != 0) {
        throw file_error(not_writable, given_path_, errno);
    }
    take_place();
    sync_folder_of(path_);
}

}  // namespace veldra
