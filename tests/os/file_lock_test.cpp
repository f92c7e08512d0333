#include "os/file_lock.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "child_process.h"
#include "os/files.h"
#include "os/termination.h"
#include "temp_file.h"

namespace veldra {
namespace {

TEST(FileLock, SecondOneIsToldAndTheMarkGoesWithTheFirst) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("ve.dat", "x");
    {
        const FileLock first(path);
        EXPECT_FALSE(first.held_elsewhere());
        const FileLock second(path);
        EXPECT_TRUE(second.held_elsewhere());
        EXPECT_FALSE(second.holder().empty());
    }
    EXPECT_FALSE(datei_vorhanden(FileLock::mark_of(path)));
    EXPECT_FALSE(FileLock(path).held_elsewhere());
}

TEST(FileLock, HoldsAmongProcesses) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("ve.dat", "x");
    const FileLock held(path);
    EXPECT_EQ(
        testing_support::run_in_child([&] { return FileLock(path).held_elsewhere() ? 7 : 0; }), 7);
}

TEST(FileLock, AllPathsToAFileShareItsMark) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("ve.dat", "x");
    std::filesystem::create_symlink(path, folder.path("link.dat"));
    EXPECT_EQ(FileLock::mark_of(folder.path("link.dat")), FileLock::mark_of(path));
    EXPECT_EQ(FileLock::mark_of(folder.path("./ve.dat")), FileLock::mark_of(path));
    EXPECT_NE(FileLock::mark_of(folder.path("ve2.dat")), FileLock::mark_of(path));
}

TEST(FileLock, WhatACrashLeftBehindCountsForNothing) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("ve.dat", "x");
    EXPECT_EQ(testing_support::run_in_child([&] {
                  new FileLock(path);  // never deleted: the process ends as in a crash
                  return 0;
              }),
              0);
    ASSERT_TRUE(datei_vorhanden(FileLock::mark_of(path)));
    EXPECT_FALSE(FileLock(path).held_elsewhere());
}

TEST(FileLock, FolderThatDoesNotExistKeepsNobodyFromAnything) {
    EXPECT_FALSE(FileLock("/gibt/es/nicht/ve.dat").held_elsewhere());
}

TEST(FileLock, MarkThatIsALinkIsNotFollowed) {
    const testing_support::TempFolder folder;
    const std::string path = folder.file("ve.dat", "x");
    const std::string victim = folder.file("victim", "stays");
    std::filesystem::create_symlink(victim, FileLock::mark_of(path));
    EXPECT_FALSE(FileLock(path).held_elsewhere());
    EXPECT_EQ(testing_support::file_bytes(victim), "stays");
}

TEST(TerminationRequests, SignalBecomesReadableAndDoesNotEndTheProgram) {
    const int code = testing_support::run_in_child([] {
        const TerminationRequests requests;
        char byte = 0;
        if (::read(requests.descriptor(), &byte, 1) != -1) {
            return 1;
        }
        for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
            ::raise(signal);
            if (::read(requests.descriptor(), &byte, 1) != 1) {
                return 2;
            }
        }
        ::raise(SIGTERM);
        requests.take();
        return ::read(requests.descriptor(), &byte, 1) == -1 ? 0 : 3;
    });
    EXPECT_EQ(code, 0);
}

TEST(TerminationRequests, AfterItsEndTheSignalEndsTheProgramAgain) {
    const int code = testing_support::run_in_child([] {
        { const TerminationRequests requests; }
        ::raise(SIGTERM);
        return 0;
    });
    EXPECT_EQ(code, -1);
}

}  // namespace
}  // namespace veldra
