#include "platform/linux/terminal/TerminalStatusBar.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"
#include "platform/linux/files/Descriptor.h"
#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/glib/GLibSignals.h"
#include "platform/linux/terminal/TerminalEmulator.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

const EnvironmentVariables capable{{"TERM", "xterm-256color"}};

/// What is there to be read now.
std::string readAvailable(const Descriptor& descriptor) {
    fcntl(descriptor.get(), F_SETFL, fcntl(descriptor.get(), F_GETFL) | O_NONBLOCK);
    std::string all;
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = ::read(descriptor.get(), buffer.data(), buffer.size())) > 0) {
        all.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return all;
}

/// A terminal of our own: what the program writes to `program`, the emulator shows.
class PseudoTerminal {
public:
    explicit PseudoTerminal(unsigned short columns, unsigned short rows = 24)
        : screen(columns), device(openDevice()), program(open(ptsname(device.get()), O_RDWR | O_NOCTTY)) {
        setSize(columns, rows);
    }

    void resize(unsigned short columns, unsigned short rows = 24) {
        setSize(columns, rows);
        screen.resize(columns);
    }

    /// Shows what has been written; returns its bytes.
    std::string show() {
        auto bytes = readAvailable(device);
        screen.feed(bytes);
        return bytes;
    }

    TerminalEmulator screen;
    Descriptor device;
    Descriptor program;

private:
    static int openDevice() {
        const int opened = posix_openpt(O_RDWR | O_NOCTTY);
        if (opened < 0 || grantpt(opened) != 0 || unlockpt(opened) != 0) {
            throw std::runtime_error("no pseudo terminal");
        }
        return opened;
    }

    void setSize(unsigned short columns, unsigned short rows) {
        winsize size{};
        size.ws_col = columns;
        size.ws_row = rows;
        ioctl(device.get(), TIOCSWINSZ, &size);
    }
};

StatusItemImage image(std::int64_t value, PixelStyle style = PixelStyle::arcade) {
    Display display;
    display.value = value;
    return {StatusImageRenderer::image(display, {.style = style}), PixelRasterizer::digitsBitmap(display)};
}

Lines withoutTrailingBlanks(Lines lines) {
    for (auto& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
    }
    return lines;
}

Lines expected(const StatusItemImage& drawn) {
    return withoutTrailingBlanks(halfBlockLines(drawn.readout.bitmap, TerminalColor::avoided));
}

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define THERMOPIX_SANITIZED
#endif
#endif

/// System calls of this process that wrote something; none where the system does not count, or where a sanitizer's
/// own writes would be counted too.
std::optional<long> writesSoFar() {
#ifdef THERMOPIX_SANITIZED
    return std::nullopt;
#else
    std::ifstream file("/proc/self/io");
    std::string key;
    long value = 0;
    while (file >> key >> value) {
        if (key == "syscw:") {
            return value;
        }
    }
    return std::nullopt;
#endif
}

/// Two ends of a pipe or of a socket.
struct Ends {
    explicit Ends(const std::function<int(int*)>& make) {
        std::array<int, 2> both{};
        EXPECT_EQ(make(both.data()), 0);
        reader = Descriptor(both[0]);
        writer = Descriptor(both[1]);
    }

    Descriptor reader{-1};
    Descriptor writer{-1};
};

class TerminalStatusBarTest : public testing::Test {
protected:
    /// The item of a status bar that writes there.
    std::unique_ptr<StatusItem> makeItem(const Descriptor& output, const EnvironmentVariables& variables = capable) {
        bar.emplace(output.get(), variables, [this] { ++timesLost; });
        return bar->makeStatusItem();
    }

    static void SetUpTestSuite() { std::signal(SIGPIPE, SIG_IGN); }

    GLibMainLoop loop;
    int timesLost = 0;
    PseudoTerminal terminal{80};
    std::optional<TerminalStatusBar> bar;
};

TEST_F(TerminalStatusBarTest, TheReadoutIsDrawnInPlaceAndStaysWithTheCursorBelowIt) {
    auto item = makeItem(terminal.program);
    EXPECT_TRUE(item->hasButton());
    EXPECT_EQ(terminal.show(), "") << "Nothing before the first picture";
    item->setImage(image(57));
    terminal.show();
    EXPECT_EQ(terminal.screen.rowsAbove(), expected(image(57)));
    item->setImage(image(61));
    terminal.show();
    EXPECT_EQ(terminal.screen.rowsAbove(), expected(image(61)));
    item.reset();
    EXPECT_EQ(terminal.show(), "");
    EXPECT_EQ(terminal.screen.rowsAbove(), expected(image(61)));
    EXPECT_EQ(terminal.screen.rowsFromCursorOn(), Lines{""});
    EXPECT_EQ(terminal.screen.cursorColumn(), 0U);
    EXPECT_TRUE(terminal.screen.isCursorVisible());
    EXPECT_EQ(timesLost, 0);
}

TEST_F(TerminalStatusBarTest, ARedrawIsOneWriteThatLeavesTheCursorVisible) {
    const auto item = makeItem(terminal.program);
    const auto before = writesSoFar();
    item->setImage(image(57));
    if (before) {
        EXPECT_EQ(writesSoFar(), *before + 1);
    }
    const auto bytes = terminal.show();
    EXPECT_TRUE(bytes.starts_with("\x1b[?25l"));
    EXPECT_TRUE(bytes.ends_with("\x1b[?25h"));
}

TEST_F(TerminalStatusBarTest, ColourIsUsedUnlessItIsRefused) {
    const auto escapes = [this](const EnvironmentVariables& variables) {
        const auto item = makeItem(terminal.program, variables);
        item->setImage(image(57, PixelStyle::segment));
        return terminal.show().find('m') != std::string::npos;
    };
    EXPECT_TRUE(escapes({{"TERM", "xterm"}}));
    EXPECT_TRUE(escapes({{"TERM", "xterm"}, {"NO_COLOR", ""}}));
    EXPECT_FALSE(escapes({{"TERM", "xterm"}, {"NO_COLOR", "1"}}));
}

TEST_F(TerminalStatusBarTest, AResizeIsFollowedAtOnceAndLeavesNoTraces) {
    terminal.screen.feed("$ thermopix\r\n");
    const auto item = makeItem(terminal.program);
    const auto resizeTo = [&](unsigned short columns, unsigned short rows) {
        terminal.resize(columns, rows);
        std::raise(SIGWINCH);
        auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
        std::string bytes;
        while (bytes.empty() && deadline.isActive()) {
            g_main_context_iteration(nullptr, TRUE);
            bytes = terminal.show();
        }
    };
    auto picture = expected(image(57));
    item->setImage(image(57));
    terminal.show();

    resizeTo(12, 24);
    EXPECT_EQ(terminal.screen.rowsAbove(), (Lines{"$ thermopix", "57 degrees …"}));
    resizeTo(80, 24);
    picture.insert(picture.begin(), "$ thermopix");
    EXPECT_EQ(terminal.screen.rowsAbove(), picture);
    resizeTo(80, 4);
    EXPECT_EQ(terminal.screen.rowsAbove(), (Lines{"$ thermopix", "57 degrees Celsius"}));
    EXPECT_TRUE(terminal.screen.isCursorVisible());
}

TEST_F(TerminalStatusBarTest, AResizeBeforeTheFirstPictureDrawsNothing) {
    const auto item = makeItem(terminal.program);
    auto observer = observeUnixSignal(SIGWINCH, [this] { loop.quit(); });
    std::raise(SIGWINCH);
    loop.run();
    EXPECT_EQ(terminal.show(), "");
}

TEST_F(TerminalStatusBarTest, ATerminalWithoutAbilitiesGetsLines) {
    for (const auto& variables : {EnvironmentVariables{{"TERM", "dumb"}}, EnvironmentVariables{}}) {
        const auto item = makeItem(terminal.program, variables);
        item->setImage(image(57));
        EXPECT_EQ(terminal.show(), "57 degrees Celsius\r\n");
    }
}

TEST_F(TerminalStatusBarTest, APipeGetsOneLineForEachChangeOfTheDescriptionWrittenAtOnce) {
    const Ends ends([](int* both) { return socketpair(AF_UNIX, SOCK_SEQPACKET, 0, both); });
    const auto& reader = ends.reader;
    const auto item = makeItem(ends.writer);
    EXPECT_TRUE(item->hasButton());
    item->setImage(image(57));
    EXPECT_EQ(readAvailable(reader), "57 degrees Celsius\n");
    item->setImage(image(57, PixelStyle::micro));
    item->setImage(image(57));
    EXPECT_EQ(readAvailable(reader), "") << "Neither a blink nor another look is news";
    item->setImage(image(58));
    item->setImage(image(57));
    std::array<char, 256> packet{};
    const auto length = ::read(reader.get(), packet.data(), packet.size());
    ASSERT_GT(length, 0);
    EXPECT_EQ(std::string(packet.data(), static_cast<std::size_t>(length)), "58 degrees Celsius\n");
    EXPECT_EQ(readAvailable(reader), "57 degrees Celsius\n");
    EXPECT_EQ(timesLost, 0);
}

TEST_F(TerminalStatusBarTest, AReaderThatHasGoneIsReportedOnceAndNotWrittenToAgain) {
    const auto expectLoss = [this](Descriptor& reader, const Descriptor& writer) {
        timesLost = 0;
        const auto item = makeItem(writer);
        item->setImage(image(57));
        EXPECT_EQ(timesLost, 0);
        reader = Descriptor(-1);
        item->setImage(image(58));
        EXPECT_EQ(timesLost, 1);
        const auto writes = writesSoFar();
        item->setImage(image(59));
        EXPECT_EQ(writesSoFar(), writes);
        EXPECT_EQ(timesLost, 1);
    };
    Ends ends(pipe);
    expectLoss(ends.reader, ends.writer);
    expectLoss(terminal.device, terminal.program);
}

TEST_F(TerminalStatusBarTest, ANonBlockingPipeThatIsFullLosesNothing) {
    const Ends ends([](int* both) { return pipe2(both, O_NONBLOCK); });
    const int capacity = fcntl(ends.writer.get(), F_GETPIPE_SZ);
    const std::string filling(static_cast<std::size_t>(capacity), '.');
    ASSERT_EQ(::write(ends.writer.get(), filling.data(), filling.size()), capacity);
    const auto item = makeItem(ends.writer);
    std::string read;
    std::thread drain([&] {
        while (!read.ends_with('\n')) {
            read += readAvailable(ends.reader);
        }
    });
    item->setImage(image(57));
    drain.join();
    EXPECT_EQ(read, filling + "57 degrees Celsius\n");
    EXPECT_EQ(timesLost, 0);
}

}  // namespace
}  // namespace thermopix
