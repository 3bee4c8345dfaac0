#include "platform/linux/glib/GLibDescriptors.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

#include "platform/linux/glib/GLibMainLoop.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class GLibDescriptorsTest : public testing::Test {
protected:
    GLibDescriptorsTest() { EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends.data()), 0); }
    ~GLibDescriptorsTest() override {
        ::close(ends[0]);
        ::close(ends[1]);
    }

    void run() {
        auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
        loop.run();
    }

    GLibMainLoop loop;
    std::array<int, 2> ends{};
    int calls = 0;
};

TEST_F(GLibDescriptorsTest, TheHandlerRunsWhenSomethingCanBeRead) {
    const auto observer = observeReadable(ends[0], [&] {
        ++calls;
        loop.quit();
    });
    EXPECT_EQ(::send(ends[1], "x", 1, 0), 1);
    EXPECT_EQ(calls, 0);
    run();
    EXPECT_EQ(calls, 1);
}

TEST_F(GLibDescriptorsTest, TheHandlerRunsWhenTheOtherEndHasGoneAndMayEndItself) {
    Subscription observer;
    observer = observeReadable(ends[0], [&] {
        ++calls;
        observer.cancel();
        loop.quit();
    });
    ::shutdown(ends[1], SHUT_RDWR);
    run();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(observer.isActive());
}

}  // namespace
}  // namespace thermopix
