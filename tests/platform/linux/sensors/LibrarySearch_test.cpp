#include "platform/linux/sensors/LibrarySearch.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

using namespace std::string_literals;

class LibrarySearchTest : public testing::Test {
protected:
    ~LibrarySearchTest() override { ::unsetenv("LD_LIBRARY_PATH"); }

    [[nodiscard]] bool isFound() const { return isLoadable("libcard.so.1", folder.path("cache")); }

    TemporaryFolder folder;
};

TEST_F(LibrarySearchTest, LooksInTheFoldersThatTheEnvironmentNames) {
    folder.write("second/libcard.so.1", "");
    EXPECT_FALSE(isFound());
    ::setenv("LD_LIBRARY_PATH", (folder.path("first").string() + ":" + folder.path("second").string()).c_str(), 1);
    EXPECT_TRUE(isFound());
    ::setenv("LD_LIBRARY_PATH", (folder.path("second").string() + "::" + folder.path("first").string()).c_str(), 1);
    EXPECT_TRUE(isFound());
    ::setenv("LD_LIBRARY_PATH", (folder.path("first").string() + ":").c_str(), 1);
    EXPECT_FALSE(isFound());
}

TEST_F(LibrarySearchTest, LooksForTheWholeNameInTheLoadersCache) {
    folder.write("cache", "/lib/libcard.so.1.2\0/lib/mylibcard.so.1\0"s);
    EXPECT_FALSE(isFound());
    folder.write("cache", "/lib/libz.so\0/lib/libcard.so.1\0"s);
    EXPECT_TRUE(isFound());
}

TEST_F(LibrarySearchTest, FindsWhatThisSystemHas) {
    EXPECT_TRUE(isLoadable("libc.so.6"));
}

}  // namespace
}  // namespace thermopix
