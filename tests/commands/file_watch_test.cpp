#include "commands/file_watch.h"

#include <chrono>
#include <filesystem>

#include <gtest/gtest.h>

#include "temp_file.h"

namespace veldra {
namespace {

using testing_support::TempFolder;

TEST(FileWatch, WithoutAFileNothingIsRewritten) {
    const FileWatch watch;
    EXPECT_FALSE(watch.rewritten());
}

TEST(FileWatch, TellsARewriteUntilItIsAcceptedAndAgainAfterTheAnswerWasTakenBack) {
    const TempFolder folder;
    const std::string file = folder.file("ve.dat", "NETZTEIL A\n");
    FileWatch watch;
    watch.follow(file);
    EXPECT_FALSE(watch.rewritten());
    (void)folder.file("ve.dat", "NETZTEIL A und B\n");  // another size
    EXPECT_TRUE(watch.rewritten());
    watch.accept();
    EXPECT_FALSE(watch.rewritten());
    watch.withdraw_acceptance();
    EXPECT_TRUE(watch.rewritten());
    watch.leave();
    EXPECT_FALSE(watch.rewritten());
}

TEST(FileWatch, AFileThatVanishedIsNotRewritten) {
    const TempFolder folder;
    const std::string file = folder.file("ve.dat", "NETZTEIL A\n");
    FileWatch watch;
    watch.follow(file);
    std::filesystem::remove(file);
    EXPECT_FALSE(watch.rewritten());
}

}  // namespace
}  // namespace veldra
