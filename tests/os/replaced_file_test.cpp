// Where a written file goes: links, names that are taken, what a crash has left.

#include <chrono>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "os/file_names.h"
#include "os/files.h"
#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;
using testing_support::file_bytes;

class Replaced : public ::testing::Test {
 protected:
    /// The message of the failure, "" for none.
    static std::string write(const std::string& path, NamedBy named_by = NamedBy::user) {
        try {
            ReplacedFile file(path, named_by);
            file.write("neu");
            file.commit();
        } catch (const FatalError& error) {
            return error.what();
        }
        return "";
    }

    [[nodiscard]] std::size_t files() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            count += entry.path().empty() ? 0 : 1;
        }
        return count;
    }

    void make_old(const std::string& path, std::chrono::hours age) const {
        std::filesystem::last_write_time(folder.path(path),
                                         std::filesystem::file_time_type::clock::now() - age);
    }

    testing_support::TempFolder folder;
};

TEST_F(Replaced, LinkOfTheUserIsFollowed) {
    const std::string target = folder.file("target", "alt");
    std::filesystem::create_symlink("target", folder.path("link"));
    EXPECT_EQ(write(folder.path("link")), "");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
    EXPECT_EQ(file_bytes(target), "neu");
}

TEST_F(Replaced, LinkThatLeadsNowhereIsAnError) {
    std::filesystem::create_symlink("fehlt", folder.path("link"));
    EXPECT_EQ(write(folder.path("link")),
              folder.path("link") +
                  ": Datei kann nicht geschrieben werden: die symbolische "
                  "Verknüpfung führt zu keiner Datei");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
    EXPECT_EQ(files(), 1U);
}

TEST_F(Replaced, LoopOfLinksIsAnError) {
    std::filesystem::create_symlink("b", folder.path("a"));
    std::filesystem::create_symlink("a", folder.path("b"));
    EXPECT_EQ(write(folder.path("a")),
              folder.path("a") +
                  ": Datei kann nicht geschrieben werden: zu viele symbolische "
                  "Verknüpfungen");
    EXPECT_EQ(files(), 2U);
}

TEST_F(Replaced, LinkAtANameOfTheProgramIsAnError) {
    const std::string target = folder.file("target", "alt");
    std::filesystem::create_symlink("target", folder.path("link"));
    for (const NamedBy named_by : {NamedBy::program, NamedBy::program_as_new}) {
        EXPECT_THAT(write(folder.path("link"), named_by),
                    EndsWith(": der Name ist der einer symbolischen Verknüpfung"));
    }
    EXPECT_EQ(file_bytes(target), "alt");
}

TEST_F(Replaced, NewFileTakesNoOnesPlace) {
    const std::string path = folder.file("da", "alt");
    EXPECT_THAT(write(path, NamedBy::program_as_new), EndsWith(": der Name ist schon vergeben"));
    EXPECT_EQ(file_bytes(path), "alt");
    EXPECT_EQ(write(path, NamedBy::program), "");
    EXPECT_EQ(file_bytes(path), "neu");
}

TEST_F(Replaced, NewFileTakesNoOnesPlaceThatCameMeanwhile) {
    const std::string path = folder.path("da");
    ReplacedFile file(path, NamedBy::program_as_new);
    file.write("neu");
    (void)folder.file("da", "alt");
    EXPECT_THROW(file.commit(), FatalError);
    EXPECT_EQ(file_bytes(path), "alt");
}

TEST_F(Replaced, LeftTemporaryFilesGoWhenTheyAreOlderThanADay) {
    constexpr std::chrono::hours day{24};
    const std::string taken = ".veldra.neu-";
    (void)folder.file("other" + taken + "aB3xyz", "half");
    (void)folder.file("young" + taken + "aB3xyz", "half");
    (void)folder.file("brief.neu-251122", "of the user");
    (void)folder.file("plan" + taken + "aB3-yz", "of the user");
    (void)folder.file("plan" + taken + "aB3xyz0", "of the user");
    for (const char* name : {"other.veldra.neu-aB3xyz", "brief.neu-251122",
                             "plan.veldra.neu-aB3-yz", "plan.veldra.neu-aB3xyz0"}) {
        make_old(name, day + std::chrono::hours(1));
    }
    make_old("young" + taken + "aB3xyz", day - std::chrono::hours(1));
    std::filesystem::create_directory(folder.path("folder" + taken + "aB3xyz"));
    make_old("folder" + taken + "aB3xyz", 2 * day);
    EXPECT_EQ(write(folder.path("ve.dat")), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path("other" + taken + "aB3xyz")));
    EXPECT_EQ(files(), 6U);
}

TEST_F(Replaced, NamesAreCutAtCharactersAndStayDifferent) {
    const std::string a = folder.path(std::string(240, 'n') + "\xC3\xA4\xC3\xA4\xC3\xA4");
    const std::string b = folder.path(std::string(240, 'n') + "\xC3\xB6\xC3\xB6\xC3\xB6");
    EXPECT_EQ(with_room_for(a, 9), a);  // 246 and 9 are 255
    const std::string cut = with_room_for(a, 10);
    // 255 - 10 - 9 leaves 236 bytes of the name.
    EXPECT_THAT(cut, StartsWith(folder.path(std::string(236, 'n')) + "~"));
    EXPECT_EQ(cut.size(), folder.path("").size() + 1 + 245);
    EXPECT_NE(cut, with_room_for(b, 10));
    // 255 - 4 - 9 = 242 of a name of 253 bytes is the middle of a character there.
    const std::string c = folder.path(std::string(241, 'n') + "\xC3\xA4" + std::string(10, 'n'));
    EXPECT_THAT(with_room_for(c, 4), StartsWith(folder.path(std::string(241, 'n')) + "~"));
}

}  // namespace
}  // namespace veldra
