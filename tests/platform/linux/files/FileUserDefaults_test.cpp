#include "platform/linux/files/FileUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "environment/PreferencesStore.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/Descriptor.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

constexpr std::string_view key = "preferences.v1";

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

class FileUserDefaultsTest : public testing::Test {
protected:
    FileUserDefaults made(WriteFunction write = ::write) { return {temporary.path("settings"), log, std::move(write)}; }

    /// Refuses to write while `cause` is an error.
    FileUserDefaults madeOnADiskWith(const int& cause) {
        return made([&cause](int descriptor, const void* bytes, std::size_t count) {
            errno = cause;
            return cause == 0 ? write(descriptor, bytes, count) : -1;
        });
    }

    [[nodiscard]] std::string trouble(const std::string& verb, const std::string& cause) const {
        return "settings: cannot " + verb + " " + document.string() + ": " + cause;
    }

    TemporaryFolder temporary;
    std::filesystem::path document = temporary.path("settings/preferences.v1");
    RecordingLog log;
};

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

TEST_F(FileUserDefaultsTest, KeepsEachKeyInAFileOfItsNameBesideOthers) {
    temporary.write("settings/desktop.conf", "[item]");
    EXPECT_TRUE(made().setData(key, "{}"));
    EXPECT_EQ(temporary.entries("settings"), (Names{"desktop.conf", "preferences.v1"}));
    EXPECT_EQ(temporary.read("settings/preferences.v1"), "{}");
    EXPECT_EQ(temporary.read("settings/desktop.conf"), "[item]");
    EXPECT_EQ(made().data(key), "{}") << "what an earlier process stored";
}

TEST_F(FileUserDefaultsTest, ReadingMakesNothing) {
    EXPECT_EQ(made().data(key), std::nullopt);
    EXPECT_EQ(temporary.entries(), Names{});
    EXPECT_EQ(log.lines, Names{});
}

TEST_F(FileUserDefaultsTest, FoldersAndFilesArePrivate) {
    FileUserDefaults defaults(temporary.path("new/home/thermopix"), log);
    EXPECT_TRUE(defaults.setData(key, "{}"));
    for (const std::string_view folder : {"new", "new/home", "new/home/thermopix"}) {
        EXPECT_EQ(permissions(temporary.path(folder)), 0700U) << folder;
    }
    EXPECT_EQ(permissions(temporary.path("new/home/thermopix/preferences.v1")), 0600U);
}

TEST_F(FileUserDefaultsTest, FolderThatIsThereKeepsItsPermissionsAndItsFilesBecomePrivateWithTheNextChange) {
    temporary.write("settings/preferences.v1", "old");
    ASSERT_EQ(chmod(document.c_str(), 0644), 0);
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0750), 0);
    EXPECT_TRUE(made().setData(key, "new"));
    EXPECT_EQ(permissions(temporary.path("settings")), 0750U);
    EXPECT_EQ(permissions(document), 0600U);
}

TEST_F(FileUserDefaultsTest, WritingTheSameBytesTouchesNothing) {
    EXPECT_TRUE(made().setData(key, "same"));
    auto defaults = made(diskWithRoom(0));
    EXPECT_TRUE(defaults.setData(key, "same"));
    EXPECT_FALSE(defaults.setData(key, "other"));
}

TEST_F(FileUserDefaultsTest, KeysThatAreNoPlainFileNamesHoldNothing) {
    temporary.write("outside", "secret");
    temporary.makeFolder("settings");
    auto defaults = made();
    for (const std::string& bad :
         {std::string(), std::string("."), std::string(".."), std::string("../outside"), std::string("/etc/hostname"),
          std::string("a/b"), std::string("a/"), std::string("a\0b", 3), std::string(1, '\0'), std::string(256, 'k')}) {
        EXPECT_EQ(defaults.data(bad), std::nullopt) << bad;
        EXPECT_FALSE(defaults.setData(bad, "x")) << bad;
    }
    EXPECT_EQ(temporary.entries("settings"), Names{});
    EXPECT_EQ(temporary.read("outside"), "secret");
    const std::string longest(255, 'k');
    EXPECT_TRUE(defaults.setData(longest, "x"));
    EXPECT_EQ(defaults.data(longest), "x");
}

TEST_F(FileUserDefaultsTest, EmptyFolderPathHoldsNothing) {
    FileUserDefaults defaults("", log);
    EXPECT_FALSE(defaults.setData("thermopix-test-key", "x"));
    EXPECT_EQ(defaults.data("thermopix-test-key"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists("/thermopix-test-key"));
}

TEST_F(FileUserDefaultsTest, FullDiskLeavesTheOldDocumentWholeAndIsToldOnce) {
    EXPECT_TRUE(made().setData(key, "old document"));
    for (const std::size_t room : {0U, 5U}) {
        log.lines.clear();
        auto defaults = made(diskWithRoom(room));
        EXPECT_FALSE(defaults.setData(key, "new document"));
        EXPECT_FALSE(defaults.setData(key, "newer document"));
        EXPECT_EQ(defaults.data(key), "old document");
        EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
        EXPECT_EQ(log.lines, Names{trouble("save", "No space left on device")});
    }
}

TEST_F(FileUserDefaultsTest, EachCauseIsToldOnceAndAgainAfterASuccess) {
    int cause = ENOSPC;
    auto defaults = madeOnADiskWith(cause);
    EXPECT_FALSE(defaults.setData(key, "first"));
    cause = EDQUOT;
    EXPECT_FALSE(defaults.setData(key, "first"));
    EXPECT_FALSE(defaults.setData(key, "first"));
    EXPECT_EQ(log.lines.size(), 2U);
    cause = 0;
    EXPECT_TRUE(defaults.setData(key, "second"));
    cause = EDQUOT;
    EXPECT_FALSE(defaults.setData(key, "third"));
    EXPECT_EQ(log.lines.size(), 3U);
    EXPECT_EQ(defaults.data(key), "second");
}

TEST_F(FileUserDefaultsTest, InterruptedAndShortWritesAreCompleted) {
    int calls = 0;
    auto defaults = made([&calls](int descriptor, const void* bytes, std::size_t) -> ssize_t {
        if (++calls % 2 == 0) {
            errno = EINTR;
            return -1;
        }
        return write(descriptor, bytes, 1);
    });
    EXPECT_TRUE(defaults.setData(key, "document"));
    EXPECT_EQ(defaults.data(key), "document");
    EXPECT_GE(calls, 8);
}

TEST_F(FileUserDefaultsTest, WriterThatDiesHalfwayLeavesTheOldDocumentAndTheNextWriteTidiesUp) {
    EXPECT_TRUE(made().setData(key, "old document"));
    const int status = statusOfChild([&] {
        auto defaults = made([](int descriptor, const void* bytes, std::size_t) -> ssize_t {
            static_cast<void>(write(descriptor, bytes, 3));
            _exit(42);
        });
        return defaults.setData(key, "new document") ? 0 : 1;
    });
    EXPECT_EQ(status, 42);
    ASSERT_EQ(temporary.entries("settings").size(), 2U);

    auto defaults = made();
    EXPECT_EQ(defaults.data(key), "old document");
    const std::string leftover = temporary.entries("settings").front();
    EXPECT_EQ(defaults.data(leftover), std::nullopt) << leftover;
    EXPECT_FALSE(defaults.setData(leftover, "x"));

    EXPECT_TRUE(defaults.setData(key, "newest document"));
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
}

TEST_F(FileUserDefaultsTest, WriterAtWorkIsNeitherWaitedForNorDisturbed) {
    EXPECT_TRUE(made().setData(key, "old"));
    auto slow = made([this](int descriptor, const void* bytes, std::size_t count) {
        EXPECT_TRUE(made().setData("other", "meanwhile"));
        EXPECT_TRUE(made().setData(key, "meanwhile"));
        return write(descriptor, bytes, count);
    });
    EXPECT_TRUE(slow.setData(key, "last"));
    EXPECT_EQ(slow.data(key), "last");
    EXPECT_EQ(slow.data("other"), "meanwhile");
    EXPECT_EQ(temporary.entries("settings"), (Names{"other", "preferences.v1"}));
}

TEST_F(FileUserDefaultsTest, TemporaryFileTakenForALeftoverIsWrittenAgain) {
    bool isFirst = true;
    auto defaults = made([&](int descriptor, const void* bytes, std::size_t count) {
        if (std::exchange(isFirst, false)) {
            std::filesystem::remove(temporary.path("settings/" + temporary.entries("settings").front()));
        }
        return write(descriptor, bytes, count);
    });
    EXPECT_TRUE(defaults.setData(key, "document"));
    EXPECT_EQ(defaults.data(key), "document");
    EXPECT_EQ(log.lines, Names{});
}

TEST_F(FileUserDefaultsTest, FolderUnderARegularFileFailsAndIsToldOnce) {
    temporary.write("settings", "a file in the way");
    auto defaults = made();
    EXPECT_FALSE(defaults.setData(key, "x"));
    EXPECT_FALSE(defaults.setData(key, "y"));
    FileUserDefaults below(temporary.path("settings/deeper"), log);
    EXPECT_FALSE(below.setData(key, "x"));
    EXPECT_EQ(temporary.read("settings"), "a file in the way");
    EXPECT_EQ(std::count(log.lines.begin(), log.lines.end(), trouble("save", "Not a directory")), 1);
}

TEST_F(FileUserDefaultsTest, ReadOnlyFolderLeavesTheOldDocumentWhole) {
    EXPECT_TRUE(made().setData(key, "old document"));
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0555), 0);
    ASSERT_EQ(chmod(temporary.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(document.c_str(), 0644), 0);
    const int status = statusOfUser([&] {
        auto defaults = made();
        const bool failed = !defaults.setData(key, "new document");
        const bool told = log.lines == Names{trouble("save", "Permission denied")};
        return failed && told && defaults.data(key) == "old document" ? 0 : 2;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(temporary.read("settings/preferences.v1"), "old document");
    ASSERT_EQ(chmod(temporary.path("settings").c_str(), 0755), 0);
}

TEST_F(FileUserDefaultsTest, FolderThatCannotBeMadeNamesItsCause) {
    ASSERT_EQ(chmod(temporary.path().c_str(), 0555), 0);
    const int status = statusOfUser([&] {
        const bool failed = !made().setData(key, "x");
        return failed && log.lines == Names{trouble("save", "Permission denied")} ? 0 : 2;
    });
    EXPECT_EQ(status, 0);
    ASSERT_EQ(chmod(temporary.path().c_str(), 0755), 0);
}

TEST_F(FileUserDefaultsTest, SymbolicLinkIsWrittenThrough) {
    temporary.write("dotfiles/thermopix.json", "old");
    for (const auto& [name, target] :
         std::vector<std::pair<std::string, std::string>>{{"absolute", temporary.path("dotfiles/thermopix.json")},
                                                          {"relative", "../dotfiles/thermopix.json"},
                                                          {"chain", "relative"}}) {
        temporary.link("settings/" + name, target);
        auto defaults = made();
        EXPECT_TRUE(defaults.setData(name, name));
        EXPECT_EQ(defaults.data(name), name);
        EXPECT_EQ(temporary.read("dotfiles/thermopix.json"), name);
        EXPECT_TRUE(std::filesystem::is_symlink(temporary.path("settings/" + name))) << name;
    }
    EXPECT_EQ(temporary.entries("dotfiles"), Names{"thermopix.json"});
}

TEST_F(FileUserDefaultsTest, DanglingLinkGetsItsFile) {
    temporary.makeFolder("dotfiles");
    temporary.link("settings/preferences.v1", "../dotfiles/new.json");
    auto defaults = made();
    EXPECT_EQ(defaults.data(key), std::nullopt);
    EXPECT_EQ(log.lines, Names{});
    EXPECT_TRUE(defaults.setData(key, "{}"));
    EXPECT_TRUE(std::filesystem::is_symlink(document));
    EXPECT_EQ(temporary.read("dotfiles/new.json"), "{}");
}

TEST_F(FileUserDefaultsTest, FolderMayBeALink) {
    temporary.makeFolder("elsewhere");
    temporary.link("settings", "elsewhere");
    EXPECT_TRUE(made().setData(key, "{}"));
    EXPECT_EQ(temporary.read("elsewhere/preferences.v1"), "{}");
}

TEST_F(FileUserDefaultsTest, WhatIsNoRegularFileOrLeadsToNoneIsNeitherReadNorReplaced) {
    temporary.makeFolder("settings/directory");
    ASSERT_EQ(mkfifo(temporary.path("settings/pipe").c_str(), 0600), 0);
    temporary.link("settings/device", "/dev/zero");
    temporary.link("settings/loop", "loop");
    temporary.link("settings/missing", "../no/folder/file");
    temporary.link("settings/folder", "..");
    auto defaults = made();
    for (const auto& name : temporary.entries("settings")) {
        const auto file = temporary.path("settings/" + name);
        const auto type = std::filesystem::symlink_status(file).type();
        EXPECT_EQ(defaults.data(name), std::nullopt) << name;
        EXPECT_FALSE(defaults.setData(name, "x")) << name;
        EXPECT_EQ(std::filesystem::symlink_status(file).type(), type) << name;
    }
    EXPECT_EQ(temporary.entries("settings"), (Names{"device", "directory", "folder", "loop", "missing", "pipe"}));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/zero"));
}

TEST_F(FileUserDefaultsTest, FileThatGrewBeyondMeasureIsNotRead) {
    temporary.write("settings/preferences.v1", "");
    std::filesystem::resize_file(document, (16U << 20U) + 1);
    auto defaults = made();
    EXPECT_EQ(defaults.data(key), std::nullopt);
    EXPECT_EQ(defaults.data(key), std::nullopt);
    EXPECT_EQ(log.lines, Names{trouble("read", "File too large")});
    EXPECT_FALSE(defaults.setData("big", std::string((16U << 20U) + 1, 'x')));
}

TEST_F(FileUserDefaultsTest, StoreGoesOnWhenNothingCanBeSaved) {
    temporary.write("settings", "a file in the way");
    PreferencesStore store(std::make_shared<FileUserDefaults>(temporary.path("settings"), log));
    store.set(&Preferences::pet, PixelPet::mac);
    store.set(&Preferences::pet, PixelPet::ghost);
    EXPECT_EQ(store.preferences().pet, PixelPet::ghost);
}

}  // namespace
}  // namespace thermopix
