#pragma once

#include <grp.h>
#include <unistd.h>

namespace veldra::testing_support {

/// Numbers that belong to nobody on an ordinary system.
constexpr uid_t anna = 64101;
constexpr uid_t bert = 64102;
constexpr gid_t surveyors = 64201;  ///< the group of both
constexpr gid_t others = 64202;

/// For a process that may be anybody (root): this user, of one group or of two, as long as it
/// lives. To be used in a child process, which the rest of the test does not notice.
class AsUser {
 public:
    explicit AsUser(uid_t user, gid_t group, gid_t second_group = 0) {
        const gid_t second[] = {second_group};
        became_ = ::setgroups(second_group != 0 ? 1 : 0, second) == 0 && ::setegid(group) == 0 &&
                  ::seteuid(user) == 0;
    }
    ~AsUser() {
        if (::seteuid(0) != 0 || ::setegid(0) != 0) {
            ::_exit(1);
        }
    }
    AsUser(const AsUser&) = delete;
    AsUser& operator=(const AsUser&) = delete;

    [[nodiscard]] bool became() const { return became_; }

 private:
    bool became_ = false;
};

}  // namespace veldra::testing_support
