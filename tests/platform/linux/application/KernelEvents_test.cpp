#include "platform/linux/application/KernelEvents.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <string>
#include <utility>

namespace thermopix {
namespace {

using namespace std::string_literals;

std::string event(const std::string& action, const std::string& subsystem) {
    return action + "@/devices/platform/chip.0/x\0ACTION="s + action + "\0DEVPATH=/devices/platform/chip.0/x\0"s +
           "SUBSYSTEM="s + subsystem + "\0SEQNUM=4711\0"s;
}

TEST(KernelEvents, OnlySensorsThatComeOrGoAreOfConcern) {
    EXPECT_TRUE(KernelEvents::concernsSensors(event("add", "hwmon")));
    EXPECT_TRUE(KernelEvents::concernsSensors(event("remove", "hwmon")));
    EXPECT_TRUE(KernelEvents::concernsSensors(event("add", "thermal")));
    EXPECT_FALSE(KernelEvents::concernsSensors(event("change", "thermal")));
    EXPECT_FALSE(KernelEvents::concernsSensors(event("add", "block")));
    EXPECT_FALSE(KernelEvents::concernsSensors(event("add", "hwmon2")));
}

TEST(KernelEvents, WhatIsNoEventIsOfNoConcern) {
    for (const auto& message :
         {""s, "\0"s, "add@"s, "libudev\0SUBSYSTEM=hwmon\0"s, "SUBSYSTEM=hwmon"s, "add@/x\0SUBSYSTEM=hwmo"s}) {
        EXPECT_FALSE(KernelEvents::concernsSensors(message)) << message;
    }
    EXPECT_TRUE(KernelEvents::concernsSensors("add@/x\0SUBSYSTEM=hwmon"s)) << "The last field may end with the message";
}

class KernelEventsTest : public testing::Test {
protected:
    void SetUp() override {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0);
        kernel = Descriptor(ends[0]);
        events = std::make_unique<KernelEvents>(Descriptor(ends[1]), [this] { ++told; });
    }
    void send(const std::string& message) {
        ASSERT_EQ(::send(kernel.get(), message.data(), message.size(), 0), static_cast<ssize_t>(message.size()));
    }
    static void serve() {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }

    Descriptor kernel{-1};
    int told = 0;
    std::unique_ptr<KernelEvents> events;
};

TEST_F(KernelEventsTest, AWholeBurstIsToldOnce) {
    for (const auto* subsystem : {"block", "hwmon", "thermal", "hwmon"}) {
        send(event("add", subsystem));
    }
    serve();
    EXPECT_EQ(told, 1);
    send(event("remove", "hwmon"));
    serve();
    EXPECT_EQ(told, 2);
}

TEST_F(KernelEventsTest, OtherEventsAreNotTold) {
    send(event("add", "block"));
    send(std::string(4000, 'x'));
    serve();
    EXPECT_EQ(told, 0);
}

TEST_F(KernelEventsTest, NothingIsToldOnceItIsGone) {
    send(event("add", "hwmon"));
    events.reset();
    serve();
    EXPECT_EQ(told, 0);
}

TEST(KernelEvents, WithoutASocketItStaysSilent) {
    bool hasTold = false;
    const KernelEvents events(Descriptor(-1), [&hasTold] { hasTold = true; });
    g_main_context_iteration(nullptr, FALSE);
    EXPECT_FALSE(hasTold);
}

}  // namespace
}  // namespace thermopix
