#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/linux/nvidia/NvidiaProtocol.h"
#include "platform/linux/sensors/HeldChannel.h"
#include "platform/linux/sensors/NvidiaStage.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Names = std::vector<std::string>;
using Lines = std::vector<std::string>;

constexpr auto card = "GPU MTR Temp nvidia";
constexpr auto nothing = std::nullopt;
constexpr auto firstAddress = "0000:01:00.0";

/// The cards of a machine, read in place.
class NvidiaSensorsTest : public NvidiaStage {
protected:
    [[nodiscard]] SysfsSensors sensors() { return SysfsSensors(tree.path(), &cards); }
};

TEST_F(NvidiaSensorsTest, ACardIsPublishedAndReadByItsAddressAndItsProcessEndsWithItsService) {
    {
        const auto found = sensors();
        EXPECT_EQ(found.names(), (Names{"CPU Core 0", "CPU Core 1", card}));
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
        EXPECT_EQ(calls("load"), 0) << "before a card is wanted";
        EXPECT_EQ(found.read(card), 55.0);
        EXPECT_EQ(calls("temperature of 0000:01:00.0"), 1);
        letLibrary("temperature 61\n");
        EXPECT_EQ(found.read(card), 61.0);
        EXPECT_EQ(calls("initialise"), 1);
        EXPECT_TRUE(isRunning());
    }
    EXPECT_TRUE(isGone());
    EXPECT_EQ(log.lines, Lines());
}

TEST_F(NvidiaSensorsTest, PollsThatWantACardKeepTheProcessAndAWholePollThatWantsNoneEndsIt) {
    const TestClock readersClock;
    SensorPolling polling(readersClock);
    const auto polls = polling.poll({.interval = 2s, .onLate = {}, .onChange = {}});
    const SysfsSensors found(tree.path(), &cards, systemFileAccess(), polling);
    const auto pollAll = [&] { return found.readAll().back(); };
    EXPECT_EQ(pollAll(), nothing);
    EXPECT_TRUE(found.isAwaited(2));
    EXPECT_TRUE(isAnswered());
    for (int poll = 0; poll < 5; ++poll) {
        EXPECT_EQ(pollAll(), 55.0);
    }
    EXPECT_EQ(calls("load"), 1);
    const auto pollProcessor = [&] {
        static_cast<void>(found.read("CPU Core 0"));
        static_cast<void>(found.read("CPU Core 1"));
    };
    pollProcessor();
    EXPECT_TRUE(isRunning());
    pollProcessor();
    EXPECT_TRUE(isGone());
    EXPECT_EQ(pollAll(), nothing) << "what the card said before";
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(pollAll(), 55.0);
    EXPECT_EQ(calls("load"), 2);
}

TEST_F(NvidiaSensorsTest, ReadersInPlaceKeepTheProcess) {
    const auto found = sensors();
    EXPECT_EQ(found.read(card), 55.0);
    for (int reading = 0; reading < 5; ++reading) {
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
    }
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(calls("load"), 1);
}

TEST_F(NvidiaSensorsTest, ALibraryThatCannotBeInitialisedIsTriedAgainAfterAPause) {
    letLibrary("initialise fails\n");
    const auto found = sensors();
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_TRUE(isGone());
    EXPECT_EQ(calls("initialise"), 1);
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors cannot initialise the library: NVIDIA cards are not "
                               "read"});
    letLibrary("");
    clock.time += RestartPauses::shortest;
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(calls("initialise"), 2);
}

TEST_F(NvidiaSensorsTest, ACardThatAnswersNothingFailsAlone) {
    const auto found = sensors();
    letLibrary("temperature fails\n");
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read("CPU Core 0"), 41.0);
    letLibrary("look up fails\n");
    EXPECT_EQ(found.read(card), nothing);
    letLibrary("");
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(calls("load"), 1);
}

TEST_F(NvidiaSensorsTest, TheLastCardThatFallsAsleepEndsTheProcessUntilOneWakes) {
    addCard("0000:02:00.0", "0x030200", "active\n");
    const auto found = sensors();
    const std::string second = "GPU MTR Temp nvidia 2";
    EXPECT_EQ(found.names(), (Names{"CPU Core 0", "CPU Core 1", card, second}));
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(found.read(second), 55.0);
    EXPECT_EQ(calls("temperature of 0000:02:00.0"), 1);
    setStatus(firstAddress, "suspended\n");
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read(second), 55.0);
    EXPECT_TRUE(isRunning());
    setStatus("0000:02:00.0", "suspended\n");
    EXPECT_EQ(found.read(second), nothing);
    EXPECT_TRUE(isGone());
    EXPECT_EQ(calls("load"), 1);
    setStatus(firstAddress, "active\n");
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(calls("load"), 2);
}

TEST_F(NvidiaSensorsTest, OnlyGraphicsCardsOfTheLibrarysOwnDriverCount) {
    addCard("0000:01:00.1", "0x040300", "active\n");
    addCard("0000:03:00.0", "0x030000", "active\n");
    tree.write("bus/pci/drivers/nouveau/bind", "");
    tree.link("devices/pci0000:00/0000:03:00.0/driver", "bus/pci/drivers/nouveau");
    addCard("0000:04:00.0", "0x030000", "active\n");
    tree.write("devices/pci0000:00/0000:04:00.0/vendor", "0x1002\n");
    EXPECT_EQ(sensors().names(), (Names{"CPU Core 0", "CPU Core 1", card}));
}

TEST_F(NvidiaSensorsTest, WithoutTheLibraryNoCardIsPublished) {
    ::setenv("LD_LIBRARY_PATH", standIn.path().c_str(), 1);
    EXPECT_EQ(sensors().names(), (Names{"CPU Core 0", "CPU Core 1"}));
    EXPECT_EQ(log.lines, Lines());
}

TEST_F(NvidiaSensorsTest, ALibraryWithoutOneOfItsFunctionsIsNone) {
    ::setenv("LD_LIBRARY_PATH", THERMOPIX_NVML_INCOMPLETE, 1);
    EXPECT_EQ(sensors().read(card), nothing);
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors finds no library: NVIDIA cards are not read"});
}

TEST_F(NvidiaSensorsTest, WithoutTheProgramNoCardIsPublishedAndTheLogSaysSoOnce) {
    program.reset();
    auto found = sensors();
    found.discover();
    EXPECT_EQ(found.names(), (Names{"CPU Core 0", "CPU Core 1"}));
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors is not installed: NVIDIA cards are not read"});
}

TEST_F(NvidiaSensorsTest, AProgramThatCannotBeStartedIsTriedAgainAfterAPause) {
    program = tree.write("no program", "");
    const auto found = sensors();
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(log.lines.size(), 1U);
    program = THERMOPIX_NVIDIA_SENSORS;
    EXPECT_EQ(found.read(card), nothing);
    clock.time += RestartPauses::shortest;
    EXPECT_EQ(found.read(card), 55.0);
}

TEST_F(NvidiaSensorsTest, TheSleepingCardOfAHybridLaptopIsLeftAlone) {
    const SysfsSensors found(machine("hybrid-laptop"), &cards);
    EXPECT_EQ(found.names().back(), card);
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(calls("load"), 0);
}

/// Where the library can get stuck while a card is read.
class NvidiaSensorsStuckTest : public NvidiaSensorsTest, public testing::WithParamInterface<std::string> {};

TEST_P(NvidiaSensorsStuckTest, IsWaitedForOnlySoLongAndCostsNothingButTheCard) {
    letLibrary(GetParam() + " hangs\n");
    const auto found = sensors();
    clock.step = NvidiaCards::patienceInPlace;
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors does not answer: NVIDIA cards are not read"});
    EXPECT_EQ(found.read("CPU Core 0"), 41.0);
    EXPECT_TRUE(isGone());
    letLibrary("");
    clock.step = {};
    clock.time += RestartPauses::shortest;
    EXPECT_EQ(found.read(card), 55.0);
}

TEST_P(NvidiaSensorsStuckTest, CrashesAloneAndIsTriedAgain) {
    letLibrary(GetParam() + " crashes\n");
    const auto found = sensors();
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_TRUE(isGone());
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors has ended: NVIDIA cards are not read"});
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(calls("load"), 1);
    letLibrary("");
    clock.time += RestartPauses::shortest;
    EXPECT_EQ(found.read(card), 55.0);
}

TEST_P(NvidiaSensorsStuckTest, IsReadBesideThePollsWithoutWaiting) {
    letLibrary(GetParam() + " is held\n");
    const auto handle = cards.card(firstAddress);
    EXPECT_EQ(cards.read(*handle, 2s), nothing);
    EXPECT_TRUE(handle->isAwaited);
    release();
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(cards.read(*handle, 2s), 55.0);
    EXPECT_FALSE(handle->isAwaited);
}

INSTANTIATE_TEST_SUITE_P(Library, NvidiaSensorsStuckTest,
                         testing::Values("load", "initialise", "look up", "temperature"),
                         [](const auto& tried) { return tried.param == "look up" ? "lookUp" : tried.param; });

TEST_F(NvidiaSensorsTest, AProcessThatHangsIsKilledAndItsCardsAreNotAwaitedAgain) {
    letLibrary("initialise is held\ntemperature hangs\n");
    const auto handle = cards.card(firstAddress);
    EXPECT_EQ(cards.read(*handle, 2s), nothing);
    EXPECT_TRUE(handle->isAwaited);
    release();
    clock.time += LateReading::longestWait;
    EXPECT_EQ(cards.read(*handle, 2s), nothing);
    EXPECT_FALSE(handle->isAwaited);
    EXPECT_TRUE(isGone());
    letLibrary("");
    clock.time += RestartPauses::shortest;
    EXPECT_EQ(cards.read(*handle, 2s), nothing);
    EXPECT_FALSE(handle->isAwaited) << "a process that follows a failed one is not waited for";
    EXPECT_TRUE(isAnswered());
    EXPECT_EQ(cards.read(*handle, 2s), 55.0);
}

TEST_F(NvidiaSensorsTest, TheEndOfThePollsDoesNotWaitForALibraryThatHangs) {
    letLibrary("shut down hangs\nunload hangs\ntemperature is held\n");
    {
        const auto handle = cards.card(firstAddress);
        EXPECT_EQ(cards.read(*handle, 2s), nothing);
        release();
    }
    EXPECT_TRUE(isGone());
    EXPECT_EQ(log.lines, Lines());
}

TEST_F(NvidiaSensorsTest, TheProcessEndsByItselfWhenItsInputDoesAndDoesNotBidTheLibraryFarewell) {
    letLibrary("shut down hangs\nunload hangs\n");
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDIN_FILENO);
        ::execl(program->c_str(), program->c_str(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    const NvidiaProtocol::Question question{.number = 7, .pciAddress = {"0000:01:00.0"}};
    NvidiaProtocol::Answer answer;
    ASSERT_EQ(::send(ends[0], &question, sizeof question, 0), ssize_t{sizeof question});
    ASSERT_EQ(::recv(ends[0], &answer, sizeof answer, 0), ssize_t{sizeof answer});
    EXPECT_EQ(answer.number, 7U);
    EXPECT_EQ(answer.celsius, 55);
    ::close(ends[0]);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(calls("unload"), 0);
}

TEST_F(NvidiaSensorsTest, TheProcessDoesNotOutliveAProgramThatIsKilledWhileTheLibraryHangs) {
    letLibrary("initialise is held\ntemperature hangs\n");
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    const pid_t child = ::fork();
    if (child == 0) {
        const auto handle = cards.card(firstAddress);
        static_cast<void>(cards.read(*handle, 2s));
        release();
        ::kill(::getpid(), SIGKILL);
    }
    EXPECT_EQ(::waitpid(child, nullptr, 0), child);
    // Its process is now this one's.
    int status = 0;
    EXPECT_GT(::wait(&status), 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "by the system, whether or not the library hears of anything";
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

}  // namespace
}  // namespace thermopix
