#include "platform/linux/sensors/SysfsFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>

#include "platform/linux/sensors/SysfsMachine.h"
#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {
namespace {

struct Number {
    std::string_view text;
    std::optional<std::int64_t> value;
};

const std::vector<Number> numbers = {
    {"0", 0},
    {"45000\n", 45000},
    {"45000", 45000},
    {"-12500\n", -12500},
    {"007", 7},
    {"9223372036854775807\n", 9223372036854775807},
    {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
    {"9223372036854775808", std::nullopt},
    {"99999999999999999999999", std::nullopt},
    {"", std::nullopt},
    {"\n", std::nullopt},
    {"-", std::nullopt},
    {"--5", std::nullopt},
    {"+5", std::nullopt},
    {" 5", std::nullopt},
    {"5 ", std::nullopt},
    {"5\n\n", std::nullopt},
    {"5\r\n", std::nullopt},
    {"5\n6\n", std::nullopt},
    {"5.0", std::nullopt},
    {"5e3", std::nullopt},
    {"0x1F", std::nullopt},
    {"five", std::nullopt},
    {std::string_view("5\0", 2), std::nullopt},
};

TEST(SysfsFile, ANumberIsAnOptionalMinusDigitsAndAtMostOneLineFeedReadAtOnce) {
    const TemporaryTree tree;
    for (const auto& [text, value] : numbers) {
        EXPECT_EQ(parseSysfsInteger(text), value) << '"' << text << '"';
        tree.write("value", text);
        CountingFileAccess access;
        EXPECT_EQ(SysfsFile(access, tree.path() / "value").readInteger(), value) << '"' << text << '"';
        EXPECT_EQ(access.reads, 1);
    }
}

TEST(SysfsFile, ANumberLongerThanTheBufferIsNotCutIntoAnotherNumber) {
    const TemporaryTree tree;
    tree.write("value", std::string(200, '0') + "45000\n");
    EXPECT_EQ(SysfsFile(systemFileAccess(), tree.path() / "value").readInteger(), std::nullopt);
}

TEST(SysfsFile, AnOpenFileShowsWhatIsWrittenLater) {
    const TemporaryTree tree;
    tree.write("value", "1\n");
    const SysfsFile file(systemFileAccess(), tree.path() / "value");
    EXPECT_EQ(file.readInteger(), 1);
    tree.write("value", "22222\n");
    EXPECT_EQ(file.readInteger(), 22222);
}

TEST(SysfsFile, AMissingFileAndAFolderHaveNoContent) {
    const TemporaryTree tree;
    const SysfsFile missing(systemFileAccess(), tree.path() / "missing");
    EXPECT_FALSE(missing.isOpen());
    EXPECT_EQ(missing.readInteger(), std::nullopt);
    EXPECT_EQ(SysfsFile(systemFileAccess(), tree.path()).readInteger(), std::nullopt);
    EXPECT_FALSE(SysfsFile().isOpen());
}

TEST(SysfsFile, MovingAFileMovesItsDescriptor) {
    const TemporaryTree tree;
    tree.write("one", "1");
    tree.write("two", "2");
    SysfsFile file(systemFileAccess(), tree.path() / "one");
    file = SysfsFile(systemFileAccess(), tree.path() / "two");
    const SysfsFile moved(std::move(file));
    EXPECT_EQ(moved.readInteger(), 2);
    EXPECT_FALSE(file.isOpen());  // NOLINT(bugprone-use-after-move): that is what is tested
}

TEST(SysfsTree, NumberedEntriesComeInTheOrderOfTheirNumbers) {
    const TemporaryTree tree;
    for (const auto name : {"temp10_input", "temp2_input", "temp1_label", "temp_input", "tempX_input", "temp-1_input",
                            "temp99999999999_input", "other"}) {
        tree.write(name, "");
    }
    std::vector<int> found;
    for (const auto& entry : numberedEntries(tree.path(), "temp", "_input")) {
        found.push_back(entry.number);
    }
    EXPECT_EQ(found, (std::vector{2, 10}));
    EXPECT_TRUE(numberedEntries(tree.path() / "nowhere", "temp").empty());
}

TEST(SysfsTree, ALineIsTheFirstOneWithoutTheBlanksAroundIt) {
    const TemporaryTree tree;
    tree.write("line", " \tPackage id 0 \r\nmore\n");
    tree.write("blank", "  \n");
    tree.write("long", std::string(5000, 'x'));
    EXPECT_EQ(readLine(tree.path() / "line"), "Package id 0");
    EXPECT_EQ(readLine(tree.path() / "blank"), std::nullopt);
    EXPECT_EQ(readLine(tree.path() / "missing"), std::nullopt);
    EXPECT_EQ(readLine(tree.path() / "long").value().size(), 256U);
}

TEST(SysfsTree, TheRootIsTheEnvironmentsElseTheSystems) {
    ::unsetenv("THERMOPIX_SYSFS_ROOT");
    EXPECT_EQ(sysfsRoot(), "/sys");
    ::setenv("THERMOPIX_SYSFS_ROOT", "", 1);
    EXPECT_EQ(sysfsRoot(), "/sys");
    ::setenv("THERMOPIX_SYSFS_ROOT", "/captured/machine", 1);
    EXPECT_EQ(sysfsRoot(), "/captured/machine");
    ::unsetenv("THERMOPIX_SYSFS_ROOT");
}

TEST(SysfsFile, FilesThatFindNoDescriptorAreReadAllTheSameAndLeaveOthersRoom) {
    const TemporaryTree tree;
    tree.write("temp1_input", "45000\n");
    const std::string path = tree.path() / "temp1_input";
    const rlimit few{200, 300};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);

    std::vector<SysfsFile> files;
    for (int i = 0; i < 400; ++i) {
        files.emplace_back(systemFileAccess(), path);
    }
    for (const auto& file : files) {
        EXPECT_TRUE(file.isOpen());
        EXPECT_EQ(file.readInteger(), 45000);
    }
    rlimit raised{};
    getrlimit(RLIMIT_NOFILE, &raised);
    EXPECT_EQ(raised.rlim_cur, 300U);
    std::vector<int> others;
    for (int i = 0; i < 60; ++i) {
        others.push_back(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_GE(others.back(), 0);
    }
    for (const int other : others) {
        ::close(other);
    }

    const SysfsFile moved = std::move(files.back());
    EXPECT_EQ(moved.readInteger(), 45000);
    tree.remove("temp1_input");
    EXPECT_EQ(moved.readInteger(), std::nullopt);
}

}  // namespace
}  // namespace thermopix
