#include "os/file_names.h"

#include <array>
#include <cstdint>

#include <sys/stat.h>
#include <unistd.h>

#include "os/file_identity.h"

namespace veldra {

namespace {

constexpr std::size_t mark_digits = 8;

/// The name in eight hexadecimal digits, the same on each computer (FNV-1a).
std::string digits_of(const std::string& name) {
    constexpr std::uint32_t offset = 2166136261U;
    constexpr std::uint32_t prime = 16777619U;
    constexpr std::array<char, 17> hexadecimal{"0123456789abcdef"};
    constexpr unsigned bits_per_digit = 4;
    std::uint32_t hash = offset;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * prime;
    }
    std::string digits;
    for (std::size_t i = 0; i < mark_digits; ++i) {
        digits += hexadecimal.at(hash & 15U);
        hash >>= bits_per_digit;
    }
    return digits;
}

std::size_t longest_name(const std::string& folder) {
    constexpr std::size_t usual = 255;
    const long limit = ::pathconf(folder.c_str(), _PC_NAME_MAX);
    return limit > 0 ? static_cast<std::size_t>(limit) : usual;
}

/// Where a text may be cut so that at most `size` bytes are left and no character of UTF-8 is torn.
std::size_t cut_at_character(const std::string& text, std::size_t size) {
    constexpr std::size_t longest_character = 4;
    std::size_t at = size;
    while (at > 0 && size - at < longest_character &&
           (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
        --at;
    }
    return size - at < longest_character ? at : size;
}

}  // namespace

std::string with_room_for(const std::string& path, std::size_t bytes) {
    const std::size_t separator = path.rfind('/');
    const std::size_t from = separator == std::string::npos ? 0 : separator + 1;
    const std::string folder = from == 0 ? "." : path.substr(0, from);
    const std::string name = path.substr(from);
    const std::size_t limit = longest_name(folder);
    const std::size_t taken = bytes + 1 + mark_digits;
    if (name.size() + bytes <= limit || limit <= taken) {
        return path;
    }
    return path.substr(0, from) + name.substr(0, cut_at_character(name, limit - taken)) + "~" +
           digits_of(name);
}

std::optional<FileIdentity> identity_of(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    constexpr std::int64_t ns_per_second = 1000000000;
    return FileIdentity{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                        status.st_mtim.tv_sec * ns_per_second + status.st_mtim.tv_nsec};
}

}  // namespace veldra
