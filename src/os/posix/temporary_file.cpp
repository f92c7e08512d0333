#include "os/temporary_file.h"

#include <array>
#include <cctype>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/file_names.h"

namespace veldra {

namespace {

constexpr std::string_view temporary_mark = ".veldra.neu-";
constexpr std::size_t random_letters = 6;

/// Empty if the system gives no random numbers.
std::string random_text() {
    constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::array<unsigned char, random_letters> numbers{};
    if (::getentropy(numbers.data(), numbers.size()) != 0) {
        return {};
    }
    std::string text;
    for (const unsigned char number : numbers) {
        text += letters[number % letters.size()];
    }
    return text;
}

bool is_temporary_name(std::string_view name) {
    constexpr std::size_t end = temporary_mark.size() + random_letters;
    if (name.size() <= end ||
        name.substr(name.size() - end, temporary_mark.size()) != temporary_mark) {
        return false;
    }
    for (const char c : name.substr(name.size() - random_letters)) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) {
            return false;
        }
    }
    return true;
}

bool left_for_a_day(const std::string& path) {
    constexpr std::time_t day = 86400;  // seconds
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid() && status.st_nlink == 1 &&
           std::time(nullptr) - status.st_mtim.tv_sec > day;
}

std::filesystem::path folder_of(const std::string& path) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    return folder.empty() ? "." : folder;
}

}  // namespace

int create_temporary_beside(const std::string& path, mode_t mode, std::string& name) {
    constexpr int attempts = 100;
    const std::string begin =
        with_room_for(path, temporary_mark.size() + random_letters).append(temporary_mark);
    for (int i = 0; i < attempts; ++i) {
        const std::string random = random_text();
        if (random.empty()) {
            return -1;
        }
        name = begin + random;
        const int handle =
            ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (handle >= 0 || errno != EEXIST) {
            return handle;
        }
    }
    return -1;
}

void remove_left_temporaries_beside(const std::string& path) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder_of(path), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string file = entry->path().string();
        if (is_temporary_name(entry->path().filename().string()) && left_for_a_day(file)) {
            ::unlink(file.c_str());
        }
    }
}

}  // namespace veldra
