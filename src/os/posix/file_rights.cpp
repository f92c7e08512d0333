#include "os/file_rights.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <sys/xattr.h>
#include <unistd.h>

#include "os/files.h"
#include "os/user_names.h"

namespace veldra {

namespace {

constexpr const char* access_list = "system.posix_acl_access";

/// A file system that keeps no permissions refuses even the owner of a file, which is no reason to
/// fail: the file is as private as it was made.
int set_permissions(int handle, mode_t mode) {
    if (::fchmod(handle, mode) == 0 || errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS) {
        return 0;
    }
    return errno;
}

struct Kept {
    bool owner = true;
    bool group = true;
};

Kept take_owner_and_group(int handle, const struct stat& model) {
    struct stat own {};
    if (::fstat(handle, &own) != 0) {
        return {false, false};
    }
    if (own.st_uid != model.st_uid && ::fchown(handle, model.st_uid, model.st_gid) == 0) {
        return {true, true};
    }
    const bool group =
        own.st_gid == model.st_gid || ::fchown(handle, static_cast<uid_t>(-1), model.st_gid) == 0;
    return {own.st_uid == model.st_uid, group};
}

/// Whoever is named one by one in the rights of the model is named in those of the file, and nobody
/// else. False if that cannot be done.
bool take_access_list(int handle, const std::string& model_path) {
    constexpr std::size_t longest = 65536;
    std::string entries(longest, '\0');
    const ssize_t size =
        ::getxattr(model_path.c_str(), access_list, entries.data(), entries.size());
    if (size <= 0) {
        ::fremovexattr(handle, access_list);
        return true;
    }
    return ::fsetxattr(handle, access_list, entries.data(), static_cast<std::size_t>(size), 0) == 0;
}

bool is_member(gid_t group) {
    constexpr int most_groups = 65536;
    std::vector<gid_t> groups(most_groups);
    const int count = ::getgroups(most_groups, groups.data());
    groups.resize(static_cast<std::size_t>(std::max(count, 0)));
    return group == ::getegid() || std::find(groups.begin(), groups.end(), group) != groups.end();
}

}  // namespace

int take_rights(int handle, const struct stat& model, const std::string& model_path,
                mode_t at_least) {
    constexpr mode_t group_shift = 3;
    const Kept kept = take_owner_and_group(handle, model);
    mode_t mode = model.st_mode & 07777U;
    if (!kept.owner) {
        mode &= ~static_cast<mode_t>(S_ISUID);
    }
    const bool listed = take_access_list(handle, model_path);
    if (!kept.group || !listed) {
        const mode_t of_everybody = mode & S_IRWXO;
        mode &= ~static_cast<mode_t>(S_IRWXG | S_ISGID);
        mode |= of_everybody << group_shift;
    }
    return set_permissions(handle, mode | at_least);
}

OwnershipLoss ownership_loss(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    struct stat file {};
    struct stat folder {};
    const bool shared = !error && file_writable(path) && ::stat(target.c_str(), &file) == 0 &&
                        ::stat(target.parent_path().c_str(), &folder) == 0 &&
                        (folder.st_mode & S_IWGRP) != 0;
    OwnershipLoss loss;
    if (!shared || ::geteuid() == 0) {
        return loss;
    }
    if (file.st_uid != ::geteuid()) {
        loss.owner = user_name(file.st_uid);
    }
    const bool group_of_folder = (folder.st_mode & S_ISGID) != 0 && folder.st_gid == file.st_gid;
    if (!group_of_folder && !is_member(file.st_gid)) {
        loss.group = group_name(file.st_gid);
    }
    return loss;
}

}  // namespace veldra
