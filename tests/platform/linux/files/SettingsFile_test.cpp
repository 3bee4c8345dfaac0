#include "platform/linux/files/SettingsFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/Descriptor.h"
#include "system/StorageLimits.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

mode_t permissions(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

/// Runs `work` in a process of its own and answers its exit status.
template <typename Work>
int statusOfChild(Work work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work());
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The same for an ordinary user, as the superuser may write anywhere.
template <typename Work>
int statusOfUser(Work work) {
    return statusOfChild([&] {
        constexpr uid_t nobody = 65534;
        return geteuid() == 0 && setresuid(nobody, nobody, nobody) != 0 ? 1 : work();
    });
}

/// Writes at most `room` bytes, then fails as a full disk does.
WriteFunction diskWithRoom(std::size_t room) {
    return [room](int descriptor, const void* bytes, std::size_t count) mutable -> ssize_t {
        if (room == 0) {
            errno = ENOSPC;
            return -1;
        }
        const ssize_t written = write(descriptor, bytes, std::min(count, room));
        room -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        return written;
    };
}

class SettingsFileTest : public testing::Test {
protected:
    SettingsFileTest() {
        operations.pause = [this] {
            ++pauses;
            if (onPause) {
                onPause();
            }
        };
    }

    ReplacedSettings replace(std::string_view bytes, FormerFile former = FormerFile::replaced) {
        return replaceSettingsFile(document, bytes, former, operations);
    }
    [[nodiscard]] std::string stored() const { return readSettingsFile(document).bytes.value_or("none"); }

    /// The folder's lock, as another writer holds it.
    [[nodiscard]] Descriptor lockedFolder() const {
        Descriptor folder(open(temporary.path("settings").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        EXPECT_EQ(flock(folder.get(), LOCK_EX | LOCK_NB), 0);
        return folder;
    }

    TemporaryFolder temporary;
    std::filesystem::path document = temporary.path("settings/preferences.v1");
    FileOperations operations;
    int pauses = 0;
    std::function<void()> onPause;
};

TEST_F(SettingsFileTest, KeepsItsBytesBesideOtherFiles) {
    temporary.write("settings/desktop.conf", "[item]");
    EXPECT_EQ(replace("{}").error, std::error_code());
    EXPECT_EQ(temporary.entries("settings"), (Names{"desktop.conf", "preferences.v1"}));
    EXPECT_EQ(stored(), "{}");
    EXPECT_EQ(temporary.read("settings/desktop.conf"), "[item]");
}

TEST_F(SettingsFileTest, ReadingMakesNothingAndAMissingFileIsNoError) {
    const auto read = readSettingsFile(document);
    EXPECT_EQ(read.bytes, std::nullopt);
    EXPECT_EQ(read.error, std::error_code());
    EXPECT_EQ(temporary.entries(), Names{});
}

TEST_F(SettingsFileTest, FoldersAndFilesArePrivate) {
    document = temporary.path("new/home/thermopix/preferences.v1");
    EXPECT_EQ(replace("{}").error, std::error_code());
    for (const std::string_view folder : {"new", "new/home", "new/home/thermopix"}) {
        EXPECT_EQ(permissions(temporary.path(folder)), 0700U) << folder;
    }
    EXPECT_EQ(permissions(document), 0600U);
}

TEST_F(SettingsFileTest, FolderThatIsThereKeepsItsPermissionsAndItsFilesBecomePrivateWithTheNextChange) {
    temporary.write("settings/preferences.v1", "old");
    ASSERT_EQ(chmod(document.c_str(), 0644), 0);
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0750), 0);
    EXPECT_EQ(replace("new").error, std::error_code());
    EXPECT_EQ(permissions(temporary.path("settings")), 0750U);
    EXPECT_EQ(permissions(document), 0600U);
}

TEST_F(SettingsFileTest, FullDiskLeavesTheOldDocumentWhole) {
    EXPECT_EQ(replace("old document").error, std::error_code());
    for (const std::size_t room : {0U, 5U}) {
        for (const auto former : {FormerFile::replaced, FormerFile::keptBeside}) {
            operations.write = diskWithRoom(room);
            const auto result = replace("new document", former);
            EXPECT_EQ(result.error, std::errc::no_space_on_device);
            EXPECT_EQ(result.kept, "");
            EXPECT_EQ(stored(), "old document");
            EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
        }
    }
}

TEST_F(SettingsFileTest, BytesThatDoNotReachTheDiskAreNotPutInPlace) {
    EXPECT_EQ(replace("old document").error, std::error_code());
    operations.synchronize = [](int /*descriptor*/) {
        errno = EIO;
        return -1;
    };
    EXPECT_EQ(replace("new document").error, std::errc::io_error);
    EXPECT_EQ(stored(), "old document");
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(SettingsFileTest, InterruptedAndShortWritesAreCompleted) {
    int calls = 0;
    operations.write = [&calls](int descriptor, const void* bytes, std::size_t) -> ssize_t {
        if (++calls % 2 == 0) {
            errno = EINTR;
            return -1;
        }
        return write(descriptor, bytes, 1);
    };
    EXPECT_EQ(replace("document").error, std::error_code());
    EXPECT_EQ(stored(), "document");
    EXPECT_GE(calls, 8);
}

TEST_F(SettingsFileTest, WriterThatDiesHalfwayLeavesTheOldDocumentAndTheNextWriteTidiesUp) {
    EXPECT_EQ(replace("old document").error, std::error_code());
    const int status = statusOfChild([&] {
        operations.write = [](int descriptor, const void* bytes, std::size_t) -> ssize_t {
            static_cast<void>(write(descriptor, bytes, 3));
            _exit(42);
        };
        return replace("new document").error ? 1 : 0;
    });
    EXPECT_EQ(status, 42);
    const auto left = temporary.entries("settings");
    ASSERT_EQ(left.size(), 2U);
    EXPECT_TRUE(isTemporaryName(left.front()));
    EXPECT_EQ(stored(), "old document");

    EXPECT_EQ(replace("newest document").error, std::error_code());
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(SettingsFileTest, LockOfAnotherWriterIsWaitedFor) {
    EXPECT_EQ(replace("old").error, std::error_code());
    auto other = lockedFolder();
    onPause = [&] {
        if (pauses == 3) {
            other = Descriptor(-1);
        }
    };
    EXPECT_EQ(replace("new").error, std::error_code());
    EXPECT_EQ(pauses, 3);
    EXPECT_EQ(stored(), "new");
}

TEST_F(SettingsFileTest, LockThatIsNeverReleasedIsWaitedForOneSecond) {
    EXPECT_EQ(replace("old").error, std::error_code());
    const auto other = lockedFolder();
    EXPECT_EQ(replace("new").error, std::error_code());
    EXPECT_EQ(pauses * std::chrono::milliseconds(20), StorageLimits::lockPatience);
    EXPECT_EQ(stored(), "new");
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(SettingsFileTest, WriterAtWorkLosesNothingToOneThatHasWaitedInVain) {
    EXPECT_EQ(replace("old").error, std::error_code());
    FileOperations slow = operations;
    slow.write = [this](int descriptor, const void* bytes, std::size_t count) {
        EXPECT_EQ(replace("meanwhile").error, std::error_code());
        EXPECT_EQ(stored(), "meanwhile");
        EXPECT_EQ(temporary.entries("settings").size(), 2U) << "the slow writer's temporary file is there";
        return write(descriptor, bytes, count);
    };
    EXPECT_EQ(replaceSettingsFile(document, "last", FormerFile::replaced, slow).error, std::error_code());
    EXPECT_EQ(stored(), "last");
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(SettingsFileTest, TemporaryFileOfALivingWriterStaysThoughItsFolderIsNotLocked) {
    const auto temporaryFile = temporary.write("settings/.thermopix-new-1-0", "half");
    {
        const Descriptor living(open(temporaryFile.c_str(), O_WRONLY | O_CLOEXEC));
        ASSERT_EQ(flock(living.get(), LOCK_EX | LOCK_NB), 0);
        EXPECT_EQ(replace("one").error, std::error_code());
        EXPECT_TRUE(std::filesystem::exists(temporaryFile));
    }
    EXPECT_EQ(replace("two").error, std::error_code());
    EXPECT_FALSE(std::filesystem::exists(temporaryFile));
}

TEST_F(SettingsFileTest, TwoProgramsOnOneFolderLoseNoSave) {
    constexpr int saves = 200;
    const auto save = [&](const std::string& name) {
        int failures = 0;
        for (int i = 0; i < saves; ++i) {
            const auto path = temporary.path("settings/" + name).string();
            const auto result = replaceSettingsFile(path, std::to_string(i), FormerFile::replaced, FileOperations());
            failures += result.error ? 1 : 0;
        }
        return failures;
    };
    const pid_t other = fork();
    if (other == 0) {
        _exit(save("one"));
    }
    EXPECT_EQ(save("two"), 0);
    int status = 0;
    EXPECT_EQ(waitpid(other, &status, 0), other);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(temporary.entries("settings"), (Names{"one", "two"}));
}

TEST_F(SettingsFileTest, FolderUnderARegularFileFails) {
    temporary.write("settings", "a file in the way");
    EXPECT_EQ(replace("x").error, std::errc::not_a_directory);
    document = temporary.path("settings/deeper/preferences.v1");
    EXPECT_EQ(replace("x").error, std::errc::not_a_directory);
    EXPECT_EQ(temporary.read("settings"), "a file in the way");
}

TEST_F(SettingsFileTest, ReadOnlyFolderLeavesTheOldDocumentWhole) {
    EXPECT_EQ(replace("old document").error, std::error_code());
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0555), 0);
    ASSERT_EQ(chmod(temporary.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(document.c_str(), 0644), 0);
    const int status = statusOfUser([&] {
        const bool isRefused = replace("new document").error == std::errc::permission_denied;
        return isRefused && stored() == "old document" ? 0 : 2;
    });
    EXPECT_EQ(status, 0);
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0755), 0);
}

TEST_F(SettingsFileTest, FolderThatCannotBeMadeNamesItsCause) {
    ASSERT_EQ(chmod(temporary.path().c_str(), 0555), 0);
    const int status = statusOfUser([&] { return replace("x").error == std::errc::permission_denied ? 0 : 2; });
    EXPECT_EQ(status, 0);
    ASSERT_EQ(chmod(temporary.path().c_str(), 0755), 0);
}

TEST_F(SettingsFileTest, SymbolicLinkIsWrittenThrough) {
    temporary.write("dotfiles/thermopix.json", "old");
    for (const auto& [name, target] :
         std::vector<std::pair<std::string, std::string>>{{"absolute", temporary.path("dotfiles/thermopix.json")},
                                                          {"relative", "../dotfiles/thermopix.json"},
                                                          {"chain", "relative"}}) {
        temporary.link("settings/" + name, target);
        document = temporary.path("settings/" + name);
        EXPECT_EQ(replace(name).error, std::error_code());
        EXPECT_EQ(stored(), name);
        EXPECT_EQ(temporary.read("dotfiles/thermopix.json"), name);
        EXPECT_TRUE(std::filesystem::is_symlink(document)) << name;
    }
    EXPECT_EQ(temporary.entries("dotfiles"), Names{"thermopix.json"});
}

TEST_F(SettingsFileTest, DanglingLinkGetsItsFile) {
    temporary.makeFolder("dotfiles");
    temporary.link("settings/preferences.v1", "../dotfiles/new.json");
    EXPECT_EQ(readSettingsFile(document).error, std::error_code());
    EXPECT_EQ(replace("{}").error, std::error_code());
    EXPECT_TRUE(std::filesystem::is_symlink(document));
    EXPECT_EQ(temporary.read("dotfiles/new.json"), "{}");
}

TEST_F(SettingsFileTest, FolderMayBeALink) {
    temporary.makeFolder("elsewhere");
    temporary.link("settings", "elsewhere");
    EXPECT_EQ(replace("{}").error, std::error_code());
    EXPECT_EQ(temporary.read("elsewhere/preferences.v1"), "{}");
}

TEST_F(SettingsFileTest, WhatIsNoRegularFileOrLeadsToNoneIsNeitherReadNorReplaced) {
    temporary.makeFolder("settings/directory");
    ASSERT_EQ(mkfifo(temporary.path("settings/pipe").c_str(), 0600), 0);
    temporary.link("settings/device", "/dev/zero");
    temporary.link("settings/loop", "loop");
    temporary.link("settings/missing", "../no/folder/file");
    temporary.link("settings/folder", "..");
    for (const auto& name : temporary.entries("settings")) {
        document = temporary.path("settings/" + name);
        const auto type = std::filesystem::symlink_status(document).type();
        EXPECT_EQ(readSettingsFile(document).bytes, std::nullopt) << name;
        for (const auto former : {FormerFile::replaced, FormerFile::keptBeside}) {
            EXPECT_TRUE(replace("x", former).error) << name;
        }
        EXPECT_EQ(std::filesystem::symlink_status(document).type(), type) << name;
    }
    EXPECT_EQ(temporary.entries("settings"), (Names{"device", "directory", "folder", "loop", "missing", "pipe"}));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/zero"));
}

TEST_F(SettingsFileTest, FileThatGrewBeyondMeasureIsNotRead) {
    const std::string longest(StorageLimits::largestFile, 'x');
    temporary.write("settings/preferences.v1", longest);
    EXPECT_EQ(readSettingsFile(document).bytes, longest);
    temporary.write("settings/preferences.v1", longest + "x");
    EXPECT_EQ(readSettingsFile(document).bytes, std::nullopt);
    EXPECT_EQ(readSettingsFile(document).error, std::errc::file_too_large);
}

TEST_F(SettingsFileTest, FormerFileIsKeptWholeTheFirstAndTheLast) {
    const Names former{"first", "second", "third"};
    for (const auto& bytes : former) {
        temporary.write("settings/preferences.v1", bytes);
        const auto result = replace("new", FormerFile::keptBeside);
        EXPECT_EQ(result.error, std::error_code());
        EXPECT_EQ(result.kept,
                  temporary.path("settings/preferences.v1.unreadable").string() + (bytes == "first" ? "" : ".newest"));
        EXPECT_EQ(stored(), "new");
    }
    EXPECT_EQ(temporary.entries("settings"),
              (Names{"preferences.v1", "preferences.v1.unreadable", "preferences.v1.unreadable.newest"}));
    EXPECT_EQ(temporary.read("settings/preferences.v1.unreadable"), "first");
    EXPECT_EQ(temporary.read("settings/preferences.v1.unreadable.newest"), "third");
}

TEST_F(SettingsFileTest, FormerFileThatMayNotBeReadIsKeptToo) {
    temporary.write("settings/preferences.v1", "secret");
    ASSERT_EQ(chmod(document.c_str(), 0), 0);
    ASSERT_EQ(chmod(temporary.path().c_str(), 0755), 0);
    // Of another's file the kernel may refuse a link; then it is renamed.
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0777), 0);
    const int status = statusOfUser([&] {
        const bool isRefused = geteuid() == 0 || readSettingsFile(document).error == std::errc::permission_denied;
        return isRefused && !replace("new", FormerFile::keptBeside).error && stored() == "new" ? 0 : 2;
    });
    EXPECT_EQ(status, 0);
    ASSERT_EQ(chmod(temporary.path("settings/preferences.v1.unreadable").c_str(), 0600), 0);
    EXPECT_EQ(temporary.read("settings/preferences.v1.unreadable"), "secret");
}

TEST_F(SettingsFileTest, NothingIsKeptOfAFileThatIsNotThere) {
    const auto result = replace("new", FormerFile::keptBeside);
    EXPECT_EQ(result.error, std::error_code());
    EXPECT_EQ(result.kept, "");
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(SettingsFileTest, FormerFileOfALinkIsKeptBesideTheFileItself) {
    temporary.write("dotfiles/thermopix.json", "old");
    temporary.link("settings/preferences.v1", "../dotfiles/thermopix.json");
    EXPECT_EQ(replace("new", FormerFile::keptBeside).error, std::error_code());
    EXPECT_EQ(temporary.read("dotfiles/thermopix.json.unreadable"), "old");
    EXPECT_EQ(temporary.read("dotfiles/thermopix.json"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(document));
}

}  // namespace
}  // namespace thermopix
