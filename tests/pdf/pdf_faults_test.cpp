// What faults leave behind: every one is told with file and reason, and the file that was there
// stays as it was.

#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "child_process.h"
#include "pdf_fixture.h"

namespace veldra::pdf_test {
namespace {

using testing_support::file_bytes;
using testing_support::not_permitted;
using testing_support::run_in_child;
using testing_support::SteppedChild;

constexpr int written = 0;
constexpr int refused = 3;
constexpr int wrong_state = 4;

class PdfFaults : public PdfFile {
 protected:
    /// A document of about a megabyte.
    void write_document() const {
        PdfPrinter printer(asked);
        printer.begin_job({"Titel"});
        for (int sheet = 1; sheet <= 3; ++sheet) {
            printer.begin_sheet({"Netzteil", std::to_string(sheet)});
            for (int i = 0; i < lines; ++i) {
                const auto y = static_cast<float>(i % 2869) * 0.1F;
                printer.page().Line(static_cast<float>(i % 1999) * 0.1F, y, 50, y * 0.7F);
            }
            printer.page().Print("Blatt", 10, 10, FontSpec(), 0);
            printer.NewPage();
        }
        printer.end_job();
    }

    /// For a child: the document was refused for this reason with the file named, nothing is left
    /// of it, and the old file is whole.
    [[nodiscard]] int outcome(const std::string& reason, const std::string& named) const {
        std::string message;
        try {
            write_document();
            return written;
        } catch (const PrinterError& error) {
            message = error.what();
        }
        const bool told =
            message.find(reason) != std::string::npos && message.find(named) != std::string::npos;
        if (!told) {
            std::fprintf(stderr, "%s\n", message.c_str());
        }
        return told && is_untouched() ? refused : wrong_state;
    }

    [[nodiscard]] bool is_untouched() const {
        std::size_t others = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            others += entry.path() != file ? 1 : 0;
        }
        return others == 0 && file_bytes(file) == "alt";
    }

    /// Size of the document when nothing fails.
    [[nodiscard]] std::size_t whole_size() const {
        write_document();
        const std::size_t size = file_bytes(file).size();
        static_cast<void>(folder.file("plan.pdf", "alt"));
        return size;
    }

    void SetUp() override { static_cast<void>(folder.file("plan.pdf", "alt")); }

    int lines = 50000;
};

TEST_F(PdfFaults, WithoutFaultTheFileIsReplaced) {
    write_document();
    EXPECT_GT(file_bytes(file).size(), 1000000U);
}

TEST_F(PdfFaults, AFolderThatDoesNotExist) {
    file = folder.path("fehlt") + "/plan.pdf";
    PdfPrinter printer(asked);
    try {
        printer.begin_job({"Titel"});
        FAIL() << "no error";
    } catch (const PrinterError& error) {
        EXPECT_EQ(std::string(error.what()),
                  file +
                      ": Datei kann nicht geschrieben werden: Datei oder Verzeichnis nicht "
                      "vorhanden");
    }
    EXPECT_THROW(printer.begin_sheet({"A", "1"}), PrinterError);
    EXPECT_NO_THROW(printer.EndDoc());
}

TEST_F(PdfFaults, AFolderInPlaceOfAFile) {
    file = folder.path();
    PdfPrinter printer(asked);
    EXPECT_THROW(printer.begin_job({"Titel"}), PrinterError);
}

TEST_F(PdfFaults, AFolderThatTakesNoNewFile) {
    const auto set_rights = [&](unsigned mode) {
        std::filesystem::permissions(folder.path(), std::filesystem::perms(mode));
    };
    set_rights(0555);
    const int code = run_in_child([this] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            return not_permitted;
        }
        return outcome("keine Berechtigung", file);
    });
    set_rights(0755);
    if (code == not_permitted) {
        GTEST_SKIP() << "this system lets the test not become another user";
    }
    EXPECT_EQ(code, refused);
}

TEST_F(PdfFaults, AFolderThatVanishesWhilePagesAreDrawn) {
    const std::string place = folder.path("weg");
    std::filesystem::create_directory(place);
    file = place + "/plan.pdf";
    PdfPrinter printer(asked);
    EXPECT_TRUE(printer.begin_job({"Titel"}));
    printer.begin_sheet({"A", "1"});
    std::filesystem::remove_all(place);
    printer.NewPage();
    EXPECT_THROW(printer.end_job(), PrinterError);
    EXPECT_NO_THROW(printer.end_job());  // once is enough
}

TEST_F(PdfFaults, AFileThatWouldBecomeTooLarge) {
    const auto size_of_all = static_cast<rlim_t>(whole_size());
    for (const rlim_t limit : {rlim_t{0}, rlim_t{1000}, rlim_t{300000}, size_of_all - 1}) {
        EXPECT_EQ(run_in_child([this, limit] {
                      ::signal(SIGXFSZ, SIG_IGN);
                      const rlimit size{limit, limit};
                      ::setrlimit(RLIMIT_FSIZE, &size);
                      return outcome("die Datei würde zu groß", "/");
                  }),
                  refused)
            << limit;
    }
}

/// Runs `body` with a disk of this size mounted at `place`.
int with_small_disk(const std::string& place, std::size_t bytes, const std::function<int()>& body) {
    return run_in_child([&] {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) {
            return not_permitted;
        }
        const std::string size = "size=" + std::to_string(bytes);
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", place.c_str(), "tmpfs", 0, size.c_str()) != 0) {
            return not_permitted;
        }
        return body();
    });
}

TEST_F(PdfFaults, AFullDisk) {
    constexpr std::size_t block = 4096;
    const std::size_t nearly = whole_size() / block * block;
    for (const std::size_t size : {2 * block, std::size_t{400000}, nearly}) {
        const int code = with_small_disk(folder.path(), size, [this] {
            static_cast<void>(folder.file("plan.pdf", "alt"));
            return outcome("kein Speicherplatz mehr frei", file);
        });
        if (code == not_permitted) {
            GTEST_SKIP() << "this system lets the test mount no small disk of its own";
        }
        EXPECT_EQ(code, refused) << size;
    }
}

TEST_F(PdfFaults, AFullDiskUnderTheIntermediateFile) {
    const testing_support::TempFolder intermediate;
    const int code = with_small_disk(intermediate.path(), 400000, [&] {
        ::setenv("TMPDIR", intermediate.path().c_str(), 1);
        return outcome("kein Speicherplatz mehr frei", intermediate.path());
    });
    if (code == not_permitted) {
        GTEST_SKIP() << "this system lets the test mount no small disk of its own";
    }
    EXPECT_EQ(code, refused);
}

TEST_F(PdfFaults, NoPlaceForTheIntermediateFile) {
    const testing_support::TempFolder intermediate;
    EXPECT_EQ(run_in_child([&] {
                  ::setenv("TMPDIR", intermediate.path().c_str(), 1);
                  std::filesystem::remove_all(intermediate.path());
                  // The system's own place is taken then.
                  write_document();
                  return file_bytes(file).size() > 1000000 ? written : wrong_state;
              }),
              written);
}

/// Each call that writes, brings to the disk or renames fails in turn.
TEST_F(PdfFaults, AnyCallThatFails) {
    if (!SteppedChild::can_fail_calls) {
        GTEST_SKIP() << "how a system call is made to fail is known for x86-64 only";
    }
    if (SteppedChild([] { return 0; }).exit_code() == not_permitted) {
        GTEST_SKIP() << "this system lets no process step another one";
    }
    lines = 2000;
    const auto matters = [](long call) {
        return call == SYS_write || call == SYS_pwrite64 || call == SYS_pread64 ||
               call == SYS_fsync || call == SYS_rename;
    };
    int refusals = 0;
    int ignored = 0;
    for (int n = 1;; ++n) {
        static_cast<void>(folder.file("plan.pdf", "alt"));
        SteppedChild child([this] { return outcome("Ein-/Ausgabefehler", ": "); });
        int seen = 0;
        while (seen < n && child.step()) {
            const auto call = child.beginning_call();
            seen += call && matters(*call) ? 1 : 0;
        }
        if (seen < n) {
            break;
        }
        child.fail_call(EIO);
        const int code = child.finish();
        refusals += code == refused ? 1 : 0;
        ignored += code == written ? 1 : 0;
        EXPECT_TRUE(code == refused || code == written) << "call " << n << " code " << code;
    }
    // Three pages to and from the intermediate file, the document, its way to the disk.
    EXPECT_GE(refusals, 9);
    // The folder need not be brought to the disk.
    EXPECT_EQ(ignored, 1);
}

}  // namespace
}  // namespace veldra::pdf_test
