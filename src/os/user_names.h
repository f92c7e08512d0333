#pragma once

#include <string>

#include <sys/types.h>

namespace veldra {

/// The names of a user and of a group; their numbers where the system knows no names.
[[nodiscard]] std::string user_name(uid_t user);
[[nodiscard]] std::string group_name(gid_t group);

}  // namespace veldra
