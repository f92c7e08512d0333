#include "os/user_names.h"

#include <array>

#include <grp.h>
#include <pwd.h>

namespace veldra {

namespace {

/// More than an entry of usual length takes; a group of very many users shows its number.
constexpr std::size_t entry_size = 65536;

}  // namespace

std::string user_name(uid_t user) {
    std::string buffer(entry_size, '\0');
    passwd entry{};
    passwd* found = nullptr;
    const bool known =
        ::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
    return known ? entry.pw_name : std::to_string(user);
}

std::string group_name(gid_t group) {
    std::string buffer(entry_size, '\0');
    ::group entry{};
    ::group* found = nullptr;
    const bool known =
        ::getgrgid_r(group, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
    return known ? entry.gr_name : std::to_string(group);
}

}  // namespace veldra
