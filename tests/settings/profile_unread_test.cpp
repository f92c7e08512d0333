// A profile that could not be read is not written from the defaults.
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/syscall.h>

#include "child_process.h"
#include "model/session.h"
#include "settings/paths.h"
#include "settings/profile.h"
#include "settings/profile_file.h"
#include "settings/start_profile.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;
using testing_support::file_bytes;
using testing_support::SteppedChild;

constexpr const char* users_profile =
    "[FREMD]\r\nk=1\r\n[BEZPUN]\r\npubfon=Courier\r\n"
    "[START]\r\nBestaetigung=N\r\n[GRAPHIKDATEIEN]\r\nGraphikdatei_1=/ve.dat\r\n";

class UnreadProfile : public ::testing::Test {
 protected:
    /// A folder in its place opens, but its reading fails.
    void hide_file() const {
        std::filesystem::remove(path);
        std::filesystem::create_directory(path);
    }
    void bring_file_back() const {
        std::filesystem::remove(path);
        (void)folder.file("VELDRA.INI", users_profile);
    }

    template <typename Write>
    std::string refusal(const Write& write) {
        try {
            write(session, path);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "";
    }

    testing_support::TempFolder folder;
    std::string path = folder.file("VELDRA.INI", users_profile);
    Session session;
};

TEST_F(UnreadProfile, StaysAsItIsWhenItCanBeReadAgain) {
    hide_file();
    profil_lesen(session, path);
    start_lesen(session, path);
    bring_file_back();
    EXPECT_THAT(refusal(profil_schreiben), HasSubstr(path + ": Das Profil konnte nicht gelesen"));
    EXPECT_THAT(refusal(start_schreiben), HasSubstr(path));
    EXPECT_EQ(file_bytes(path), users_profile);
}

TEST_F(UnreadProfile, OnlyThePartThatWasNotReadStays) {
    profil_lesen(session, path);
    hide_file();
    start_lesen(session, path);
    bring_file_back();
    session.settings.pubfon = "Arial";
    EXPECT_EQ(refusal(profil_schreiben), "");
    EXPECT_NE(refusal(start_schreiben), "");
    const std::string bytes = file_bytes(path);
    EXPECT_THAT(bytes, HasSubstr("pubfon=Arial\r\n"));
    EXPECT_THAT(bytes, HasSubstr("[FREMD]\r\nk=1\r\n"));
    EXPECT_THAT(bytes, HasSubstr("Graphikdatei_1=/ve.dat\r\n"));
}

TEST_F(UnreadProfile, IsWrittenAfterAReadingThatSucceeds) {
    hide_file();
    profil_lesen(session, path);
    bring_file_back();
    profil_lesen(session, path);
    EXPECT_EQ(session.settings.pubfon, "Courier");
    EXPECT_EQ(refusal(profil_schreiben), "");
}

TEST_F(UnreadProfile, MissingOneIsNoFailure) {
    std::filesystem::remove(path);
    profil_lesen(session, path);
    start_lesen(session, path);
    EXPECT_EQ(refusal(profil_schreiben), "");
    EXPECT_EQ(refusal(start_schreiben), "");
    EXPECT_THAT(file_bytes(path), HasSubstr("[BEZPUN]\r\n"));
}

/// Each system call of the action in turn fails with `error`; the action reports its outcome.
template <typename Action, typename Check>
void fail_each_call(int error, const Action& action, const Check& check) {
    for (int call = 1;; ++call) {
        SteppedChild child([&] { return action(); });
        int begun = 0;
        bool failed = false;
        while (!failed && child.step()) {
            const auto number = child.beginning_call();
            const bool wanted = number && *number != SYS_exit_group && *number != SYS_munmap &&
                                *number != SYS_mmap && *number != SYS_brk;
            if (wanted && ++begun == call) {
                child.fail_call(error);
                failed = true;
            }
        }
        (void)child.finish();
        check(call);
        if (!failed) {
            return;
        }
    }
}

TEST_F(UnreadProfile, NoFailingCallCostsTheUsersSections) {
    if (!SteppedChild::can_fail_calls) {
        GTEST_SKIP() << "system calls of this processor cannot be made to fail";
    }
    for (const int error : {EIO, EMFILE, ESTALE}) {
        fail_each_call(
            error,
            [this] {
                Session own;
                profil_lesen(own, path);
                start_lesen(own, path);
                try {
                    profil_schreiben(own, path);
                } catch (const FatalError&) {
                }
                try {
                    start_schreiben(own, path);
                } catch (const FatalError&) {
                }
                return 0;
            },
            [&](int call) {
                const std::string bytes = file_bytes(path);
                EXPECT_THAT(bytes, HasSubstr("[FREMD]\r\nk=1\r\n")) << call;
                EXPECT_THAT(bytes, HasSubstr("pubfon=Courier\r\n")) << call;
                EXPECT_THAT(bytes, HasSubstr("Graphikdatei_1=/ve.dat\r\n")) << call;
                std::filesystem::remove(path);
                (void)folder.file("VELDRA.INI", users_profile);
            });
    }
}

TEST_F(UnreadProfile, OlderProfileDoesNotTakeItsPlace) {
    SystemFolders folders;
    folders.documents = folder.path();
    folders.windows = folder.path("windows");
    std::filesystem::create_directories(folder.path("Kelvara"));
    std::filesystem::create_directory(folders.windows);
    (void)folder.file("windows/VELDRA.INI", "[BEZPUN]\r\npubfon=Alt\r\n");
    // It is there, but leads round in a circle: nobody can open it.
    const std::string own = folder.path("Kelvara/VELDRA.INI");
    std::filesystem::create_symlink(own, own);
    EXPECT_EQ(prepare_plain_profile(folders), own);
    EXPECT_TRUE(std::filesystem::is_symlink(own));
    EXPECT_TRUE(std::filesystem::exists(folder.path("windows/VELDRA.INI")));
    profil_lesen(session, own);
    EXPECT_NE(refusal([&](const Session& s, const std::string&) { profil_schreiben(s, own); }), "");
    EXPECT_TRUE(std::filesystem::is_symlink(own));
}

}  // namespace
}  // namespace veldra
