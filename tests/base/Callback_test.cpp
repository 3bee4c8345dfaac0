#include "base/Callback.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace thermopix {
namespace {

TEST(Callback, WithoutWorkNothingHappens) {
    int done = 0;
    Callback callback;
    EXPECT_NO_THROW(callback());
    callback = [&done] { ++done; };
    callback = nullptr;
    EXPECT_NO_THROW(callback());
    EXPECT_EQ(done, 0);
}

TEST(Callback, TheWorkSetLastIsDone) {
    std::string done;
    Callback callback = [&] { done += "first"; };
    callback = [&] { done += "second"; };
    callback();
    EXPECT_EQ(done, "second");
}

TEST(Callback, WorkThatReplacesItselfIsDoneToItsEnd) {
    std::string done;
    Callback callback;
    callback = [&done, &callback, name = std::string("the first work, too long for a small buffer")] {
        callback = [&done] { done += " | next"; };
        done += name;
    };
    callback();
    callback();
    EXPECT_EQ(done, "the first work, too long for a small buffer | next");
}

TEST(Callback, WorkThatDestroysItsOwnerIsDoneToItsEnd) {
    std::string done;
    std::optional<Callback> owner;
    owner.emplace([&done, &owner, name = std::string("done, and too long for a small buffer")] {
        owner.reset();
        done = name;
    });
    (*owner)();
    EXPECT_EQ(done, "done, and too long for a small buffer");
    EXPECT_FALSE(owner.has_value());
}

}  // namespace
}  // namespace thermopix
