// Who owns what the program writes, and what others may do with it.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "child_process.h"
#include "os/file_lock.h"
#include "os/files.h"
#include "other_user.h"
#include "temp_file.h"

namespace veldra {
namespace {

using testing_support::anna;
using testing_support::AsUser;
using testing_support::bert;
using testing_support::not_permitted;
using testing_support::others;
using testing_support::surveyors;

void write_file(const std::string& path, NamedBy named_by = NamedBy::user,
                const std::string& rights_of = "") {
    ReplacedFile file(path, named_by, rights_of);
    file.write("neu");
    file.commit();
}

struct stat status_of(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status;
}

unsigned rights(const std::string& path) {
    return status_of(path).st_mode & 07777U;
}

class FileRights : public ::testing::Test {
 protected:
    void SetUp() override {
        path = folder.file("ve.dat", "alt");
        ::chmod(path.c_str(), 0600);
    }

    /// Runs in a process of its own, which may become other users.
    static int as_several_users(const std::function<int()>& body) {
        return testing_support::run_in_child([&] {
            if (::geteuid() != 0 || !AsUser(anna, surveyors).became()) {
                return not_permitted;
            }
            return body();
        });
    }

    /// The folder and the file of `owner`, shared by the group.
    void share(uid_t owner, gid_t group, mode_t file_mode, mode_t folder_mode = 0770) const {
        ASSERT_EQ(::chown(folder.path().c_str(), owner, group), 0);
        ASSERT_EQ(::chown(path.c_str(), owner, group), 0);
        ASSERT_EQ(::chmod(folder.path().c_str(), folder_mode), 0);
        ASSERT_EQ(::chmod(path.c_str(), file_mode), 0);
    }

    testing_support::TempFolder folder;
    std::string path;
};

TEST_F(FileRights, ReplacedFileKeepsThem) {
    for (const mode_t mode : {0600U, 0640U, 0664U, 0755U}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        write_file(path);
        EXPECT_EQ(rights(path), mode);
    }
}

TEST_F(FileRights, CopyHasThoseOfItsFileAndItsWriterMayWriteIt) {
    for (const mode_t mode : {0600U, 0640U, 0664U, 0444U}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        write_file(path + "_1", NamedBy::program_as_new, path);
        EXPECT_EQ(rights(path + "_1"), mode | 0600U);
        write_file(path + "_1", NamedBy::program, path);
        EXPECT_EQ(rights(path + "_1"), mode | 0600U);
        std::filesystem::remove(path + "_1");
    }
}

TEST_F(FileRights, CopyOfAFileThatIsGoneIsPrivate) {
    write_file(folder.path("copy"), NamedBy::program_as_new, folder.path("gone"));
    EXPECT_EQ(rights(folder.path("copy")), 0600U);
}

TEST_F(FileRights, NewFileHasWhatTheMaskLeaves) {
    const int code = testing_support::run_in_child([this] {
        constexpr mode_t mask = 0027;
        ::umask(mask);
        write_file(folder.path("new"));
        return rights(folder.path("new")) == 0640U && ::umask(0) == mask ? 0 : 1;
    });
    EXPECT_EQ(code, 0);
}

TEST_F(FileRights, MaskOfTheProcessIsNeverChanged) {
    testing_support::SteppedChild child([this] {
        write_file(folder.path("new"));
        write_file(path);
        write_file(path + "_1", NamedBy::program_as_new, path);
        const FileLock lock(path);
        return 0;
    });
    if (child.exit_code() == not_permitted) {
        GTEST_SKIP() << "this system lets no process step another one";
    }
    int calls = 0;
    while (child.step()) {
        const auto call = child.beginning_call();
        calls += call ? 1 : 0;
        EXPECT_NE(call.value_or(-1), SYS_umask);
    }
    EXPECT_EQ(child.exit_code(), 0);
    EXPECT_GT(calls, 10);
}

TEST_F(FileRights, GroupStaysWhereTheWriterBelongsToIt) {
    const int code = as_several_users([this] {
        share(anna, others, 0640);
        const AsUser user(anna, others, surveyors);
        ::chown(path.c_str(), anna, surveyors);
        write_file(path);
        write_file(path + "_1", NamedBy::program_as_new, path);
        return status_of(path).st_gid == surveyors && rights(path) == 0640U &&
                       status_of(path + "_1").st_gid == surveyors && rights(path + "_1") == 0640U
                   ? 0
                   : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become another user";
    }
    EXPECT_EQ(code, 0);
}

TEST_F(FileRights, GroupThatCannotBeKeptLeavesNothingToAnotherOne) {
    const int code = as_several_users([this] {
        share(anna, others, 0664);
        ::chown(path.c_str(), anna, surveyors);
        const AsUser user(anna, others);
        write_file(path);
        write_file(path + "_1", NamedBy::program_as_new, path);
        // The new group has what everybody has.
        return status_of(path).st_gid == others && rights(path) == 0644U ? 0 : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become another user";
    }
    EXPECT_EQ(code, 0);
}

TEST_F(FileRights, AllMayLeaveAFileToItsOwner) {
    const int code = as_several_users([this] {
        share(anna, surveyors, 0600);
        write_file(path);  // by root
        return status_of(path).st_uid == anna && status_of(path).st_gid == surveyors &&
                       rights(path) == 0600U
                   ? 0
                   : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become another user";
    }
    EXPECT_EQ(code, 0);
}

TEST_F(FileRights, LossOfOwnerAndGroupIsKnownBeforehand) {
    const int code = as_several_users([this] {
        share(anna, surveyors, 0666, 0777);
        {
            const AsUser user(anna, surveyors);
            if (ownership_loss(path).any()) {
                return 1;
            }
        }
        {
            const AsUser user(bert, others, surveyors);
            const OwnershipLoss loss = ownership_loss(path);
            if (loss.owner != std::to_string(anna) || !loss.group.empty()) {
                return 2;
            }
        }
        {
            const AsUser user(bert, others);
            const OwnershipLoss loss = ownership_loss(path);
            if (loss.owner != std::to_string(anna) || loss.group != std::to_string(surveyors)) {
                return 3;
            }
        }
        share(anna, surveyors, 0666, 0757);  // no group shares it
        const AsUser user(bert, others);
        return ownership_loss(path).any() ? 4 : 0;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become another user";
    }
    EXPECT_EQ(code, 0);
}

/// A list that names one more user, in the form of the system: version, then kind, rights and
/// number of each entry.
std::string access_list_naming(uid_t named) {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t may;
        std::uint32_t id;
    };
    constexpr std::uint32_t nobody = 0xFFFFFFFFU;
    const Entry entries[] = {{0x01, 6, nobody},
                             {0x02, 6, named},
                             {0x04, 0, nobody},
                             {0x10, 6, nobody},
                             {0x20, 0, nobody}};
    const std::uint32_t version = 2;
    std::string list(reinterpret_cast<const char*>(&version), sizeof version);
    return list.append(reinterpret_cast<const char*>(entries), sizeof entries);
}

TEST_F(FileRights, ListOfNamedUsersStays) {
    constexpr const char* name = "system.posix_acl_access";
    const std::string list = access_list_naming(bert);
    if (::setxattr(path.c_str(), name, list.data(), list.size(), 0) != 0) {
        GTEST_SKIP() << "this file system keeps no lists of named users";
    }
    write_file(path);
    write_file(path + "_1", NamedBy::program_as_new, path);
    for (const std::string& file : {path, path + "_1"}) {
        std::string found(list.size() + 1, '\0');
        EXPECT_EQ(::getxattr(file.c_str(), name, found.data(), found.size()),
                  static_cast<ssize_t>(list.size()));
        found.pop_back();
        EXPECT_EQ(found, list);
    }
}

/// The mark of an open file among users of a group, with masks that would hide it.
class SharedMark : public FileRights {
 protected:
    int held_against(mode_t file_mode, mode_t mask, uid_t second_user) {
        return as_several_users([&] {
            share(anna, surveyors, file_mode, 0770);
            ::umask(mask);
            std::unique_ptr<FileLock> held;
            {
                const AsUser user(anna, surveyors);
                held = std::make_unique<FileLock>(path);
            }
            if (held->held_elsewhere() || !datei_vorhanden(FileLock::mark_of(path))) {
                return 1;
            }
            const AsUser user(second_user, surveyors);
            const FileLock second(path);
            const bool named = second.holder().find(std::to_string(anna)) == 0;
            return second.held_elsewhere() && named ? 0 : 2;
        });
    }

    void expect_noticed(mode_t file_mode, mode_t mask) {
        const int code = held_against(file_mode, mask, bert);
        if (code == not_permitted) {
            GTEST_SKIP() << "this system does not let the test become another user";
        }
        EXPECT_EQ(code, 0);
    }
};

TEST_F(SharedMark, IsNoticedByOneWhoMayWrite) {
    expect_noticed(0660, 0077);
}

TEST_F(SharedMark, IsNoticedByOneWhoMayRead) {
    expect_noticed(0640, 0077);
}

TEST_F(SharedMark, IsNoticedByOneWhoMayNotEvenReadIt) {
    expect_noticed(0600, 0022);
}

TEST_F(SharedMark, HasTheRightsOfTheFile) {
    for (const mode_t mode : {0600U, 0640U, 0664U, 0755U}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        const FileLock lock(path);
        EXPECT_EQ(rights(FileLock::mark_of(path)), mode & 0666U);
    }
}

TEST_F(SharedMark, OneLeftByACrashOfAnotherUserIsMadeAnew) {
    const int code = as_several_users([this] {
        share(anna, surveyors, 0640, 0770);
        const int left = testing_support::run_in_child([this] {
            const AsUser user(anna, surveyors);
            new FileLock(path);  // never deleted: the process ends as in a crash
            return 0;
        });
        const AsUser user(bert, surveyors);
        const FileLock lock(path);
        const bool own = status_of(FileLock::mark_of(path)).st_uid == bert;
        return left == 0 && !lock.held_elsewhere() && own ? 0 : 1;
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system does not let the test become another user";
    }
    EXPECT_EQ(code, 0);
}

TEST_F(SharedMark, FileOfAnotherKindWithItsNameStays) {
    const std::string mark = FileLock::mark_of(path);
    const std::string foreign(300, 'x');
    ASSERT_EQ(folder.file(std::filesystem::path(mark).filename(), foreign), mark);
    { EXPECT_FALSE(FileLock(path).held_elsewhere()); }
    EXPECT_EQ(testing_support::file_bytes(mark), foreign);
    std::filesystem::remove(mark);

    const std::string victim = folder.file("victim", "stays");
    std::filesystem::create_hard_link(victim, mark);
    { EXPECT_FALSE(FileLock(path).held_elsewhere()); }
    EXPECT_EQ(testing_support::file_bytes(victim), "stays");
    EXPECT_TRUE(std::filesystem::exists(mark));
    std::filesystem::remove(mark);

    ASSERT_EQ(::mkfifo(mark.c_str(), 0600), 0);
    EXPECT_FALSE(FileLock(path).held_elsewhere());
    EXPECT_TRUE(std::filesystem::is_fifo(mark));
}

TEST_F(SharedMark, LongNamesHaveMarksOfTheirOwn) {
    const std::string first = folder.file(std::string(254, 'n') + "1", "x");
    const std::string second = folder.file(std::string(254, 'n') + "2", "x");
    const FileLock lock(first);
    EXPECT_TRUE(datei_vorhanden(FileLock::mark_of(first)));
    EXPECT_TRUE(FileLock(first).held_elsewhere());
    EXPECT_FALSE(FileLock(second).held_elsewhere());
}

}  // namespace
}  // namespace veldra
