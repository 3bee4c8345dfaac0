#include "platform/linux/sensors/NvmlLibrary.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "NvmlStandIn.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

/// A machine with a processor, one card of the closed driver and the library that reads it.
class NvmlLibraryTest : public testing::Test {
protected:
    NvmlLibraryTest() {
        handle_ = ::dlopen(THERMOPIX_NVML_STAND_IN, RTLD_NOW | RTLD_LOCAL);
        library = reinterpret_cast<NvmlStandIn* (*)()>(::dlsym(handle_, "nvmlStandIn"))();
        *library = NvmlStandIn();
        tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}, {"Core 1", "42000"}});
        addCard("0000:01:00.0", "0x030000", "active\n");
    }
    ~NvmlLibraryTest() override { ::dlclose(handle_); }

    void addCard(const std::string& address, std::string_view kind, std::string_view status) const {
        const auto device = "devices/pci0000:00/" + address;
        tree.write(device + "/vendor", "0x10de\n");
        tree.write(device + "/class", std::string(kind) + "\n");
        tree.write(device + "/power/runtime_status", status);
        tree.link("bus/pci/devices/" + address, device);
    }
    void setStatus(const std::string& address, std::string_view status) const {
        tree.write("devices/pci0000:00/" + address + "/power/runtime_status", status);
    }
    [[nodiscard]] SysfsSensors sensors() const { return SysfsSensors(tree.path(), THERMOPIX_NVML_STAND_IN); }
    [[nodiscard]] bool isRunning() const { return library->initialisations > library->shutdowns; }

    TemporaryTree tree;
    NvmlStandIn* library = nullptr;

private:
    void* handle_ = nullptr;
};

constexpr auto card = "GPU MTR Temp nvidia";
constexpr auto nothing = std::nullopt;

TEST_F(NvmlLibraryTest, ACardIsPublishedAndReadByItsAddressAndReleasedWithItsService) {
    {
        const auto found = sensors();
        EXPECT_EQ(found.names(), (Names{"CPU Core 0", "CPU Core 1", card}));
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
        EXPECT_EQ(library->initialisations, 0) << "before a card is wanted";
        EXPECT_EQ(found.read(card), 55.0);
        EXPECT_STREQ(library->lastAddress, "0000:01:00.0");
        library->celsius = 61;
        EXPECT_EQ(found.read(card), 61.0);
        EXPECT_EQ(library->lookups, 1);
        EXPECT_EQ(library->initialisations, 1);
        EXPECT_EQ(library->shutdowns, 0);
    }
    EXPECT_EQ(library->shutdowns, 1);
}

TEST_F(NvmlLibraryTest, PollsThatWantACardKeepTheLibraryAndAWholePollThatWantsNoneReleasesIt) {
    const auto found = sensors();
    for (int poll = 0; poll < 5; ++poll) {
        for (const auto& reading : found.readAll()) {
            EXPECT_TRUE(reading.has_value());
        }
    }
    EXPECT_EQ(library->initialisations, 1);
    const auto pollProcessor = [&] {
        EXPECT_EQ(found.read("CPU Core 0"), 41.0);
        EXPECT_EQ(found.read("CPU Core 1"), 42.0);
    };
    pollProcessor();
    EXPECT_TRUE(isRunning());
    pollProcessor();
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(library->shutdowns, 1);
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(library->initialisations, 2);
}

TEST_F(NvmlLibraryTest, ALibraryThatCannotBeInitialisedIsNotTriedAgainUntilRediscovery) {
    library->initialises = false;
    auto found = sensors();
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(library->initialisations, 1);
    library->initialises = true;
    found.discover();
    EXPECT_EQ(found.read(card), 55.0);
}

TEST_F(NvmlLibraryTest, ACardThatAnswersNothingFailsAloneAndIsLookedUpAgain) {
    const auto found = sensors();
    library->answers = false;
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read("CPU Core 0"), 41.0);
    library->answers = true;
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(library->lookups, 2);
    EXPECT_EQ(library->initialisations, 1);
}

TEST_F(NvmlLibraryTest, TheLastCardThatFallsAsleepReleasesTheLibraryUntilOneWakes) {
    addCard("0000:02:00.0", "0x030200", "active\n");
    const auto found = sensors();
    const std::string second = "GPU MTR Temp nvidia 2";
    EXPECT_EQ(found.names(), (Names{"CPU Core 0", "CPU Core 1", card, second}));
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(found.read(second), 55.0);
    setStatus("0000:01:00.0", "suspended\n");
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(found.read(second), 55.0);
    EXPECT_EQ(library->initialisations, 1);
    EXPECT_TRUE(isRunning());
    setStatus("0000:02:00.0", "suspended\n");
    EXPECT_EQ(found.read(second), nothing);
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(library->lookups, 2);
    setStatus("0000:01:00.0", "active\n");
    EXPECT_EQ(found.read(card), 55.0);
    EXPECT_EQ(library->initialisations, 2);
    EXPECT_EQ(library->lookups, 3);
}

TEST_F(NvmlLibraryTest, OnlyGraphicsCardsOfTheLibrarysOwnDriverCount) {
    addCard("0000:01:00.1", "0x040300", "active\n");
    addCard("0000:03:00.0", "0x030000", "active\n");
    tree.write("bus/pci/drivers/nouveau/bind", "");
    tree.link("devices/pci0000:00/0000:03:00.0/driver", "bus/pci/drivers/nouveau");
    addCard("0000:04:00.0", "0x030000", "active\n");
    tree.write("devices/pci0000:00/0000:04:00.0/vendor", "0x1002\n");
    EXPECT_EQ(sensors().names(), (Names{"CPU Core 0", "CPU Core 1", card}));
}

TEST_F(NvmlLibraryTest, WithoutTheLibraryOrOneOfItsFunctionsNoCardIsPublished) {
    EXPECT_EQ(SysfsSensors(tree.path(), "no-such-library.so").names(), (Names{"CPU Core 0", "CPU Core 1"}));
    EXPECT_EQ(SysfsSensors(tree.path(), THERMOPIX_NVML_INCOMPLETE).names(), (Names{"CPU Core 0", "CPU Core 1"}));
}

TEST_F(NvmlLibraryTest, TheSleepingCardOfAHybridLaptopIsLeftAlone) {
    const SysfsSensors found(machine("hybrid-laptop"), THERMOPIX_NVML_STAND_IN);
    EXPECT_EQ(found.names().back(), card);
    EXPECT_EQ(found.read(card), nothing);
    EXPECT_EQ(library->initialisations, 0);
    EXPECT_EQ(library->readings, 0);
}

}  // namespace
}  // namespace thermopix
