// What a fault while writing leaves behind: a graphic file is always the old one or the new one,
// byte for byte, and whoever is told of the fault is told the file and the reason.

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "child_process.h"
#include "graphikdatei/working_copies.h"
#include "graphikdatei/writer.h"
#include "os/files.h"
#include "session_fixture.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;
using testing_support::not_permitted;
using testing_support::run_in_child;
using testing_support::SteppedChild;

constexpr int written = 0;
constexpr int refused = 3;
constexpr int wrong_state = 4;
constexpr const char* temporary_mark = ".neu-";

/// Names and contents of the files of a folder.
using Snapshot = std::map<std::string, std::string>;

std::optional<std::string> content(const Snapshot& files, const std::string& name) {
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
}

bool is_temporary(const std::string& name) {
    return name.find(temporary_mark) != std::string::npos;
}

Snapshot snapshot(const std::string& folder) {
    Snapshot files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files[entry.path().filename().string()] = file_bytes(entry.path().string());
    }
    return files;
}

void restore(const std::string& folder, const Snapshot& files) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::filesystem::remove(entry.path());
    }
    for (const auto& [name, bytes] : files) {
        std::ofstream(std::filesystem::path(folder) / name, std::ios::binary) << bytes;
    }
}

/// Runs the action and says how it ended, with the message of a failure.
int outcome(const std::function<void()>& action, std::string* message = nullptr) {
    try {
        action();
        return written;
    } catch (const FatalError& error) {
        if (message != nullptr) {
            *message = error.what();
        }
        return refused;
    }
}

enum class Action { replace, working_copy, final_form };

std::string action_name(const ::testing::TestParamInfo<Action>& info) {
    constexpr std::array<const char*, 3> names{"ReplacedFile", "WorkingCopy", "FinalForm"};
    return names.at(static_cast<std::size_t>(info.param));
}

/// One way of writing, on a graphic file with a working copy, larger than what goes to the disk at
/// once.
class WriteFaults : public testing_support::SessionOnFile,
                    public ::testing::WithParamInterface<Action> {
 protected:
    void SetUp() override {
        std::string text = "NETZTEIL A\r\nTITEL2 alt\r\n";
        for (int i = 1; i <= 6000; ++i) {
            text += "Punktsignatur " + std::to_string(2500000 + i) + " 5600000 1 1 1 \"" +
                    std::to_string(i) + "\" 0 0\r\n";
        }
        read_points(text);
        session.datei_geladen = 1;
        arbeitskopie_schreiben(session);
        session.titel[1].setTitelText("neu");
        before = snapshot(folder.path());
        write();
        after = snapshot(folder.path());
        ASSERT_NE(before, after);
        restore(folder.path(), before);
        session_for_next_run();
    }

    void write() {
        session.arbeitskopien.clear();
        for (const char* suffix : {"_1", "_2"}) {
            count_as_own_copy(session, session.graphikdatei + suffix);
        }
        switch (GetParam()) {
            case Action::replace: {
                ReplacedFile file(session.graphikdatei);
                file.write(std::string(300000, 'x'));
                file.write(std::string(300000, 'y'));
                file.commit();
                break;
            }
            case Action::working_copy:
                arbeitskopie_schreiben(session);
                break;
            case Action::final_form:
                endfassung_schreiben(session);
                break;
        }
    }

    /// The state of a session before it writes; its tables stay as they are.
    void session_for_next_run() {
        session.arbeitsdatei_suffix = "_1";
        session.datei_geladen = 1;
    }

    [[nodiscard]] std::function<int()> writing() {
        return [this] { return outcome([this] { write(); }); };
    }

    /// The file that is written.
    [[nodiscard]] static std::string target() {
        return GetParam() == Action::working_copy ? "ve.dat_2" : "ve.dat";
    }

    [[nodiscard]] bool target_is_new(const Snapshot& now) const {
        return content(now, target()) == content(after, target());
    }

    /// Each file is the old or the new one, and before the new one is there, no old one is gone.
    void expect_old_or_new(const Snapshot& now) const {
        for (const auto& [name, bytes] : now) {
            if (!is_temporary(name)) {
                EXPECT_TRUE(bytes == content(before, name) || bytes == content(after, name))
                    << name << " has " << bytes.size() << " bytes";
            }
        }
        EXPECT_EQ(now.count("ve.dat"), 1U);
        for (const auto& [name, bytes] : target_is_new(now) ? after : before) {
            EXPECT_EQ(now.count(name), 1U) << name;
        }
    }

    [[nodiscard]] std::size_t total_size() const {
        std::size_t size = 0;
        for (const auto& [name, bytes] : before) {
            size += bytes.size();
        }
        return size;
    }

    /// For a child: the write was refused, with this reason, and nothing has changed.
    int expect_refused(const std::string& reason) {
        std::string message;
        if (outcome([this] { write(); }, &message) != refused) {
            return written;
        }
        const bool told = message.find(reason) != std::string::npos &&
                          message.find(session.graphikdatei) != std::string::npos;
        return told && snapshot(folder.path()) == before ? refused : wrong_state;
    }

    Snapshot before;
    Snapshot after;
};

INSTANTIATE_TEST_SUITE_P(All, WriteFaults,
                         ::testing::Values(Action::replace, Action::working_copy,
                                           Action::final_form),
                         action_name);

TEST_P(WriteFaults, KilledBetweenAnyTwoSystemCalls) {
    bool seen_old = false;
    bool seen_new = false;
    for (int stops = 1;; ++stops) {
        restore(folder.path(), before);
        SteppedChild child(writing());
        if (child.exit_code() == not_permitted) {
            GTEST_SKIP() << "this system lets no process step another one";
        }
        for (int i = 0; i < stops && child.running(); ++i) {
            child.step();
        }
        const bool ended = !child.running();
        child.kill();
        const Snapshot now = snapshot(folder.path());
        SCOPED_TRACE("killed at stop " + std::to_string(stops));
        expect_old_or_new(now);
        seen_old = seen_old || !target_is_new(now);
        seen_new = seen_new || target_is_new(now);
        if (ended) {
            EXPECT_EQ(child.exit_code(), written);
            EXPECT_EQ(now, after);
            break;
        }
    }
    EXPECT_TRUE(seen_old);
    EXPECT_TRUE(seen_new);
}

/// What a system call is to a writer. Failing memory is not the matter here.
enum class Call { other, open, mode, read, write, sync, close, rename, remove };

Call kind_of(long call) {
    switch (call) {
        case SYS_openat:
            return Call::open;
        case SYS_fchmod:
            return Call::mode;
        case SYS_read:
            return Call::read;
        case SYS_write:
            return Call::write;
        case SYS_fsync:
            return Call::sync;
        case SYS_close:
            return Call::close;
#ifdef SYS_rename
        case SYS_rename:
#endif
        case SYS_renameat:
        case SYS_renameat2:
            return Call::rename;
#ifdef SYS_unlink
        case SYS_unlink:
#endif
        case SYS_unlinkat:
            return Call::remove;
        default:
            return Call::other;
    }
}

class WriteFaultAtCall : public WriteFaults {
 protected:
    void SetUp() override {
        if (!SteppedChild::can_fail_calls) {
            GTEST_SKIP() << "how a system call is made to fail is known for x86-64 only";
        }
        if (SteppedChild([] { return 0; }).exit_code() == not_permitted) {
            GTEST_SKIP() << "this system lets no process step another one";
        }
        WriteFaults::SetUp();
    }

    /// Lets the n-th call that reaches for a file fail, of one kind or of all of them (`other`).
    /// False if there are fewer.
    bool fail_nth_call(int n, int error, Call wanted = Call::other) {
        restore(folder.path(), before);
        SteppedChild child(writing());
        int seen = 0;
        Call kind = Call::other;
        while (seen < n && child.step()) {
            const auto call = child.beginning_call();
            kind = call ? kind_of(*call) : Call::other;
            seen += kind != Call::other && (kind == wanted || wanted == Call::other) ? 1 : 0;
        }
        if (seen < n) {
            return false;
        }
        child.fail_call(error);
        const bool was_refused = child.finish() == refused;
        ++(was_refused ? refusals_ : ignored_)[kind];
        expect_state_after(kind, was_refused, snapshot(folder.path()));
        return true;
    }

    void expect_state_after(Call kind, bool was_refused, const Snapshot& now) const {
        if (was_refused && kind == Call::remove) {
            // A working copy that cannot be deleted: the new graphic file is there by then.
            EXPECT_TRUE(target_is_new(now));
        } else {
            EXPECT_EQ(now, was_refused ? before : after);
        }
    }

    std::map<Call, int> refusals_;
    std::map<Call, int> ignored_;
};

INSTANTIATE_TEST_SUITE_P(All, WriteFaultAtCall,
                         ::testing::Values(Action::replace, Action::working_copy,
                                           Action::final_form),
                         action_name);

TEST_P(WriteFaultAtCall, LeavesTheOldFileOrDoesNotMatter) {
    for (int n = 1; fail_nth_call(n, n % 2 == 0 ? ENOSPC : EIO); ++n) {
    }
    const bool copies = GetParam() != Action::replace;
    EXPECT_EQ(refusals_[Call::open], copies ? 2 : 1);
    EXPECT_EQ(refusals_[Call::mode], 1);
    EXPECT_GE(refusals_[Call::read], copies ? 2 : 0);
    EXPECT_GE(refusals_[Call::write], 2);
    EXPECT_EQ(refusals_[Call::sync], 1);
    EXPECT_EQ(refusals_[Call::close], 1);
    EXPECT_EQ(refusals_[Call::rename], 1);
    EXPECT_EQ(refusals_[Call::remove], GetParam() == Action::final_form ? 1 : 0);
    EXPECT_EQ(ignored_[Call::write], 0);
    EXPECT_EQ(ignored_[Call::read], 0);
    // The folder need not be searched for old temporary files nor written through, and the file
    // that was read may close as it likes.
    EXPECT_EQ(ignored_[Call::sync], 1);
    EXPECT_EQ(ignored_[Call::open], 2);
    EXPECT_EQ(ignored_[Call::close], copies ? 3 : 2);
}

TEST_P(WriteFaultAtCall, FileSystemWithoutPermissionsIsWrittenTo) {
    for (const int error : {EPERM, EOPNOTSUPP, ENOSYS}) {
        EXPECT_TRUE(fail_nth_call(1, error, Call::mode));
    }
    EXPECT_EQ(ignored_[Call::mode], 3);
}

TEST_P(WriteFaults, FileSizeLimitLeavesTheOldFile) {
    for (const rlim_t limit : {rlim_t{0}, rlim_t{1}, rlim_t{4096}, rlim_t{300000}}) {
        EXPECT_EQ(run_in_child([this, limit] {
                      ::signal(SIGXFSZ, SIG_IGN);
                      const rlimit size{limit, limit};
                      ::setrlimit(RLIMIT_FSIZE, &size);
                      return expect_refused("die Datei würde zu groß");
                  }),
                  refused)
            << limit;
    }
    EXPECT_EQ(snapshot(folder.path()), before);
}

TEST_P(WriteFaults, FullDiskLeavesTheOldFile) {
    const int code = run_in_child([this] {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) {
            return not_permitted;
        }
        const std::string size = "size=" + std::to_string(total_size() + 200000);
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", folder.path().c_str(), "tmpfs", 0, size.c_str()) != 0) {
            return not_permitted;
        }
        restore(folder.path(), before);
        if (snapshot(folder.path()) != before) {
            return wrong_state;
        }
        return expect_refused("kein Speicherplatz mehr frei");
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system lets the test mount no small disk of its own";
    }
    EXPECT_EQ(code, refused);
}

/// Writes as a user who has no rights by being root.
class WriteWithoutPermission : public WriteFaults {
 protected:
    void TearDown() override { permit(folder.path(), 0755); }

    static void permit(const std::string& path, unsigned mode) {
        std::filesystem::permissions(path, std::filesystem::perms(mode));
    }

    int refused_as_ordinary_user() {
        return run_in_child([this] {
            constexpr uid_t nobody = 65534;
            if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
                return not_permitted;
            }
            return expect_refused("keine Berechtigung");
        });
    }
};

INSTANTIATE_TEST_SUITE_P(All, WriteWithoutPermission,
                         ::testing::Values(Action::replace, Action::working_copy,
                                           Action::final_form),
                         action_name);

TEST_P(WriteWithoutPermission, FolderThatTakesNoNewFile) {
    permit(folder.path(), 0555);
    EXPECT_EQ(refused_as_ordinary_user(), refused);
    EXPECT_EQ(snapshot(folder.path()), before);
}

TEST_P(WriteWithoutPermission, FileThatMustNotBeWritten) {
    permit(folder.path(), 0777);
    before.try_emplace(target(), "fremd");
    restore(folder.path(), before);
    permit(folder.path(target()), 0444);
    EXPECT_EQ(refused_as_ordinary_user(), refused);
    EXPECT_EQ(snapshot(folder.path()), before);
}

}  // namespace
}  // namespace veldra
