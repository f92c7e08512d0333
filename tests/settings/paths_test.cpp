#include "settings/paths.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "temp_file.h"
#include "text/fatal_error.h"

namespace veldra {
namespace {

using testing_support::file_bytes;

const SystemFolders example{.documents = "/d", .windows = "/w", .program = "/p"};

TEST(Paths, StandWhereTheFoldersAre) {
    EXPECT_EQ(user_folder(example), "/d/Kelvara");
    EXPECT_EQ(plain_profile(example), "/d/Kelvara/VELDRA.INI");
    EXPECT_EQ(old_profile(example), "/w/VELDRA.INI");
    EXPECT_EQ(version_file(example), "/p/VELDRA.VRS");
}

TEST(Paths, SonderordnerKnowsTheDocumentsFolder) {
    EXPECT_EQ(sonderordner(example, 5), "/d");
    EXPECT_EQ(sonderordner(example, 0), "");
    EXPECT_EQ(sonderordner(SystemFolders{}, 5), "");
}

TEST(Paths, WithoutDocumentsThePlainProfileBeginsWithTheFolderName) {
    EXPECT_EQ(plain_profile(SystemFolders{}), "Kelvara/VELDRA.INI");
}

TEST(Paths, ASeparatorIsNotDoubled) {
    SystemFolders folders;
    folders.documents = "/";
    EXPECT_EQ(user_folder(folders), "/Kelvara");
}

/// Three empty folders of a user.
class UserFolders : public testing::Test {
 protected:
    SystemFolders folders() const {
        return {.documents = root_.path("doc"),
                .windows = root_.path("win"),
                .program = root_.path("prog")};
    }

    /// Writes a file, with the folder it stands in, and gives its path.
    std::string put(const std::string& name, const std::string& bytes) {
        std::filesystem::create_directories(std::filesystem::path(root_.path(name)).parent_path());
        return root_.file(name, bytes);
    }

    testing_support::TempFolder root_;
};

TEST_F(UserFolders, ProjectProfileIsFoundInTheUserFolderFirst) {
    const std::string second = put("win/p.ini", "");
    EXPECT_EQ(project_profile(folders(), "p.ini"), second);
    const std::string first = put("doc/Kelvara/p.ini", "");
    EXPECT_EQ(project_profile(folders(), "p.ini"), first);
}

TEST_F(UserFolders, ProjectProfileInNeitherFolderIsNotThere) {
    const std::string path = project_profile(folders(), "p.ini");
    EXPECT_EQ(path, root_.path("win/p.ini"));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(UserFolders, WithoutVersionFileTheVersionTextIsEmpty) {
    EXPECT_EQ(version_text(folders()), "");
}

TEST_F(UserFolders, VersionTextHoldsTheTrimmedDate) {
    put("prog/VELDRA.VRS", "[version]\r\nDATUM = \" 3. M\xE4rz 2004 \"\r\n");
    EXPECT_EQ(version_text(folders()), "Version erstellt am 3. März 2004");
}

TEST_F(UserFolders, VersionFileWithoutDateGivesNoText) {
    put("prog/VELDRA.VRS", "[VERSION]\r\nDatum=\r\n");
    EXPECT_EQ(version_text(folders()), "");
}

TEST_F(UserFolders, PlainStartWithoutAnyProfileMakesTheFolderAndCopiesNothing) {
    EXPECT_EQ(prepare_plain_profile(folders()), root_.path("doc/Kelvara/VELDRA.INI"));
    EXPECT_TRUE(std::filesystem::is_directory(root_.path("doc/Kelvara")));
    EXPECT_TRUE(std::filesystem::is_empty(root_.path("doc/Kelvara")));
    EXPECT_NO_THROW(prepare_plain_profile(folders())) << "the folder is there already";
}

TEST_F(UserFolders, PlainStartMovesTheProfileOfAnOlderInstallation) {
    const std::string bytes = "[X]\r\ny=\x81\n\nz";
    const std::string old = put("win/VELDRA.INI", bytes);
    const std::string profile = prepare_plain_profile(folders());
    EXPECT_EQ(file_bytes(profile), bytes);
    EXPECT_FALSE(std::filesystem::exists(old));
}

TEST_F(UserFolders, PlainStartLeavesAnOlderProfileBesideAPresentOne) {
    const std::string old = put("win/VELDRA.INI", "old");
    put("doc/Kelvara/VELDRA.INI", "new");
    const std::string profile = prepare_plain_profile(folders());
    EXPECT_EQ(file_bytes(profile), "new");
    EXPECT_EQ(file_bytes(old), "old");
}

TEST_F(UserFolders, PlainStartKeepsTheOlderProfileWhenTheFolderCannotBeMade) {
    const std::string old = put("win/VELDRA.INI", "old");
    put("doc", "a file where the folder should be");
    EXPECT_THROW(prepare_plain_profile(folders()), FatalError);
    EXPECT_EQ(file_bytes(old), "old");
}

}  // namespace
}  // namespace veldra
