#include "platform/linux/files/SettingsWriter.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/WriterStage.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

/// A disk whose writes fail with what the test sets; any thread.
class Disk {
public:
    [[nodiscard]] FileOperations operations() const {
        FileOperations made;
        made.write = [cause = cause_](int descriptor, const void* bytes, std::size_t count) -> ssize_t {
            errno = *cause;
            return errno == 0 ? write(descriptor, bytes, count) : -1;
        };
        return made;
    }
    void failWith(int cause) const { *cause_ = cause; }

private:
    std::shared_ptr<std::atomic<int>> cause_ = std::make_shared<std::atomic<int>>(0);
};

class SettingsWriterTest : public testing::Test {
protected:
    void write(const std::string& name, const std::string& bytes, FormerFile former = FormerFile::replaced) const {
        writer->write(path(name), bytes, former);
    }
    [[nodiscard]] std::string path(const std::string& name) const { return temporary.path("settings/" + name); }
    [[nodiscard]] std::string stored(const std::string& name) const { return temporary.read("settings/" + name); }
    [[nodiscard]] std::string trouble(const std::string& name, const std::string& cause) const {
        return "settings: cannot save " + path(name) + ": " + cause;
    }
    void start(FileOperations operations) {
        writer = std::make_unique<SettingsWriter>(stage.services(), std::move(operations));
    }

    TemporaryFolder temporary;
    WriterStage stage;
    Disk disk;
    std::unique_ptr<SettingsWriter> writer = std::make_unique<SettingsWriter>(stage.services(), disk.operations());
};

TEST_F(SettingsWriterTest, StoresWhatItIsGivenAndSaysNothing) {
    write("one", "1");
    stage.hear();
    EXPECT_EQ(stored("one"), "1");
    write("two", "2");
    writer.reset();
    EXPECT_EQ(stored("two"), "2");
    EXPECT_EQ(stage.log.lines, Names{});
    EXPECT_EQ(stage.troubles, Names{});
    EXPECT_EQ(stage.loop.activeTimerCount(), 0U);
}

TEST_F(SettingsWriterTest, DoesNotHoldUpWhoeverGivesItSomething) {
    const Gate gate;
    FileOperations slow;
    slow.synchronize = [gate](int descriptor) {
        gate.pass();
        return fsync(descriptor);
    };
    start(slow);
    write("key", "first");
    gate.awaitVisitor();
    write("key", "second");
    write("key", "third");
    EXPECT_FALSE(stage.hasUnheard()) << "the first is still under way";
    gate.open();
    writer.reset();
    EXPECT_EQ(stored("key"), "third");
}

TEST_F(SettingsWriterTest, WritesInOrderAndOfEachFileTheNewestBytesOnly) {
    const Gate gate;
    const auto written = std::make_shared<Names>();
    FileOperations slow;
    slow.write = [gate, written](int descriptor, const void* bytes, std::size_t count) {
        written->emplace_back(static_cast<const char*>(bytes), count);
        gate.pass();
        return ::write(descriptor, bytes, count);
    };
    start(slow);
    write("first", "1");
    gate.awaitVisitor();
    write("second", "2");
    write("third", "3");
    write("second", "4");
    gate.open();
    writer.reset();
    EXPECT_EQ(*written, (Names{"1", "3", "4"}));
    EXPECT_EQ(stored("second"), "4");
}

TEST_F(SettingsWriterTest, BytesThatAreThereAlreadyAreNotTouched) {
    temporary.write("settings/key", "same");
    disk.failWith(ENOSPC);
    write("key", "same");
    stage.hear();
    EXPECT_EQ(stage.log.lines, Names{});
    EXPECT_EQ(stage.troubles, Names{});
}

TEST_F(SettingsWriterTest, LeavesSignalsToTheMainThread) {
    const auto missing = std::make_shared<std::atomic<int>>(-1);
    FileOperations asking;
    asking.synchronize = [missing](int /*descriptor*/) {
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        int count = 0;
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD, SIGWINCH}) {
            count += sigismember(&blocked, signal) == 1 ? 0 : 1;
        }
        *missing = count;
        return 0;
    };
    start(asking);
    write("key", "value");
    stage.hear();
    EXPECT_EQ(*missing, 0);
    sigset_t own;
    pthread_sigmask(SIG_SETMASK, nullptr, &own);
    EXPECT_EQ(sigismember(&own, SIGTERM), 0);
}

TEST_F(SettingsWriterTest, WhatCannotBeStoredIsTriedAgainUntilThereIsRoom) {
    disk.failWith(ENOSPC);
    write("key", "choice");
    stage.hear();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stage.loop.activeTimerCount(), 1U);
        stage.loop.advance(StorageLimits::retryPause);
        stage.hear();
        EXPECT_FALSE(std::filesystem::exists(path("key")));
    }
    disk.failWith(0);
    stage.loop.advance(StorageLimits::retryPause);
    stage.hear();
    EXPECT_EQ(stored("key"), "choice");
    EXPECT_EQ(stage.loop.activeTimerCount(), 0U);
    EXPECT_LE(StorageLimits::retryPause + StorageLimits::lockPatience, std::chrono::seconds(10));
}

TEST_F(SettingsWriterTest, TroubleIsToldOnceUntilAllIsStored) {
    for (int spell = 1; spell <= 2; ++spell) {
        disk.failWith(ENOSPC);
        write("key", "first");
        stage.hear();
        write("key", "second");
        stage.hear();
        write("other", "third");
        stage.hear();
        EXPECT_EQ(stage.troubles, Names(static_cast<std::size_t>(spell), "No space left on device"));
        disk.failWith(0);
        stage.loop.advance(StorageLimits::retryPause);
        stage.hear();
        stage.hear();
        EXPECT_EQ(stored("key"), "second");
        EXPECT_EQ(stored("other"), "third");
        std::filesystem::remove_all(temporary.path("settings"));
    }
}

TEST_F(SettingsWriterTest, EachCauseIsLoggedOnceAndAgainAfterASuccess) {
    disk.failWith(ENOSPC);
    write("key", "first");
    stage.hear();
    disk.failWith(EDQUOT);
    for (int i = 0; i < 2; ++i) {
        stage.loop.advance(StorageLimits::retryPause);
        stage.hear();
    }
    const Names told{trouble("key", "No space left on device"), trouble("key", "Disk quota exceeded")};
    EXPECT_EQ(stage.log.lines, told);
    disk.failWith(0);
    write("key", "second");
    stage.hear();
    disk.failWith(EDQUOT);
    write("key", "third");
    stage.hear();
    EXPECT_EQ(stage.log.lines.size(), 3U);
}

TEST_F(SettingsWriterTest, TriesOnceMoreAtItsEnd) {
    disk.failWith(ENOSPC);
    write("key", "choice");
    write("other", "choice");
    stage.hear();
    stage.hear();
    disk.failWith(0);
    writer.reset();
    EXPECT_EQ(stored("key"), "choice");
    EXPECT_EQ(stored("other"), "choice");
}

TEST_F(SettingsWriterTest, LogsAtItsEndWhatIsLost) {
    disk.failWith(EROFS);
    write("key", "choice");
    writer.reset();
    EXPECT_EQ(stage.log.lines, Names{trouble("key", "Read-only file system")});
}

TEST_F(SettingsWriterTest, EndsWithoutADiskThatDoesNotAnswer) {
    const Gate gate;
    const Gate over;
    FileOperations stuck;
    stuck.synchronize = [gate, over](int /*descriptor*/) {
        gate.pass();
        over.open();
        return 0;
    };
    auto services = stage.services();
    services.endPatience = std::chrono::milliseconds(1);
    writer = std::make_unique<SettingsWriter>(services, stuck);
    temporary.makeFolder("settings");
    write("key", "choice");
    gate.awaitVisitor();
    writer.reset();
    EXPECT_EQ(stage.log.lines, Names{trouble("key", "the disk does not answer")});
    gate.open();
    over.pass();
}

TEST_F(SettingsWriterTest, DamagedFileIsKeptWhenItIsReplaced) {
    temporary.write("settings/key", "damaged");
    write("key", "new");
    stage.hear();
    EXPECT_EQ(stored("key"), "new");
    EXPECT_EQ(stored("key.unreadable"), "damaged");
    EXPECT_EQ(stage.log.lines,
              Names{"settings: kept " + path("key") + ", which could not be read, as " + path("key.unreadable")});
    write("key", "newer");
    stage.hear();
    EXPECT_EQ(temporary.entries("settings"), (Names{"key", "key.unreadable"}));
}

TEST_F(SettingsWriterTest, FileThatIsToBeKeptIsKeptThoughItFailedAtFirst) {
    temporary.write("settings/key", "readable again");
    disk.failWith(EIO);
    write("key", "first", FormerFile::keptBeside);
    stage.hear();
    disk.failWith(0);
    write("key", "second");
    stage.hear();
    EXPECT_EQ(stored("key"), "second");
    EXPECT_EQ(stored("key.unreadable"), "readable again");
}

}  // namespace
}  // namespace thermopix
