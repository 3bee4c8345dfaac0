#include "platform/linux/terminal/TerminalScreen.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/linux/terminal/TerminalEmulator.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

StatusImage image(std::int64_t width, std::int64_t height, std::vector<Ink> cells) {
    StatusImage made;
    made.bitmap = PixelBitmap(width, height, std::move(cells));
    made.description = "57 degrees Celsius";
    return made;
}

/// "#.:" over "#:#" over "..#".
StatusImage corner() {
    constexpr auto o = Ink::none;
    constexpr auto g = Ink::ghost;
    constexpr auto x = Ink::full;
    return image(3, 3, {x, o, g, x, g, x, o, o, x});
}

TEST(TerminalScreen, APictureThatFitsIsShownInHalfBlocksAndAnyOtherGivesWayToItsDescription) {
    const Lines picture{"█ ▄", "  ▀"};
    const Lines description{"57 degrees Celsius"};
    const auto wide = image(30, 1, std::vector<Ink>(30, Ink::full));
    auto silent = wide;
    silent.description.reset();
    struct Case {
        const char* name;
        StatusImage image;
        TerminalSize size;
        Lines lines;
    };
    for (const auto& [name, shown, size, lines] :
         {Case{"fits", corner(), {80, 24}, picture}, Case{"fills all rows but the cursor's", corner(), {3, 3}, picture},
          Case{"unknown size", corner(), {}, picture}, Case{"too low", corner(), {80, 2}, description},
          Case{"too narrow", wide, {29, 24}, description}, Case{"just enough for words", wide, {18, 24}, description},
          Case{"words cut", wide, {17, 24}, {"57 degrees Celsi…"}}, Case{"one column", wide, {1, 24}, {"…"}},
          Case{"no words", silent, {29, 24}, {""}}}) {
        EXPECT_EQ(TerminalScreen::lines(shown, size, TerminalColor::avoided), lines) << name;
    }
    EXPECT_EQ(TerminalScreen::lines(corner(), {80, 24}, TerminalColor::allowed),
              halfBlockLines(corner().bitmap, TerminalColor::allowed));
}

TEST(TerminalScreen, TheWidthOfALineLeavesOutEscapeSequences) {
    EXPECT_EQ(TerminalScreen::width(""), 0);
    EXPECT_EQ(TerminalScreen::width("57°"), 3);
    EXPECT_EQ(TerminalScreen::width("█ \x1b[2m▀▄\x1b[0m█"), 5);
    EXPECT_EQ(TerminalScreen::width("\x1b[38;5;240m▀\x1b[0m"), 1);
    EXPECT_EQ(TerminalScreen::width("a\x1b[12"), 1) << "A sequence without an end";
}

TEST(TerminalScreen, DrawnLinesTakeMoreRowsInANarrowerTerminal) {
    const Lines drawn{"123456", "", "1234567"};
    EXPECT_EQ(TerminalScreen::rowsTaken(drawn, 80), 3);
    EXPECT_EQ(TerminalScreen::rowsTaken(drawn, 7), 3);
    EXPECT_EQ(TerminalScreen::rowsTaken(drawn, 6), 4);
    EXPECT_EQ(TerminalScreen::rowsTaken(drawn, 3), 6);
    EXPECT_EQ(TerminalScreen::rowsTaken(drawn, 0), 3);
    EXPECT_EQ(TerminalScreen::rowsTaken({}, 80), 0);
}

TEST(TerminalScreen, ARedrawHidesTheCursorOnlyWhileItLasts) {
    EXPECT_EQ(TerminalScreen::redraw(0, Lines{"ab", "c"}), "\x1b[?25l\r\x1b[Kab\r\n\x1b[Kc\r\n\x1b[J\x1b[?25h");
    EXPECT_EQ(TerminalScreen::redraw(4, Lines{"ab"}), "\x1b[?25l\x1b[4A\r\x1b[Kab\r\n\x1b[J\x1b[?25h");
}

class TerminalRedrawTest : public testing::Test {
protected:
    TerminalEmulator terminal{20};
    Lines drawn;

    void show(Lines fresh, std::int64_t columns = 20) {
        terminal.feed(TerminalScreen::redraw(TerminalScreen::rowsTaken(drawn, columns), fresh));
        drawn = std::move(fresh);
        EXPECT_TRUE(terminal.isCursorVisible());
        EXPECT_TRUE(terminal.isPlain());
        EXPECT_EQ(terminal.cursorColumn(), 0U);
        EXPECT_EQ(terminal.rowsFromCursorOn(), Lines{""});
    }

    void SetUp() override { terminal.feed("$ thermopix\r\n"); }
};

TEST_F(TerminalRedrawTest, APictureReplacesTheOneBeforeIt) {
    show({"████████", "▀▀▀▀▀▀▀▀"});
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", "████████", "▀▀▀▀▀▀▀▀"}));
    show({"▄▄", "██"});
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", "▄▄", "██"}));
}

TEST_F(TerminalRedrawTest, ALowerPictureLeavesNothingBelow) {
    show({"1", "2", "3", "4"});
    show({"one"});
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", "one"}));
    show({"1", "2", "3"});
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", "1", "2", "3"}));
}

TEST_F(TerminalRedrawTest, APictureAsWideAsTheTerminalKeepsItsLastColumn) {
    const std::string full = "12345678901234567890";
    show({full, full});
    show({full, full});
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", full, full}));
}

TEST_F(TerminalRedrawTest, NothingOfAWrappedPictureStaysInANarrowerTerminalAndItComesBackInAWiderOne) {
    show({"123456789012345", "abcdefghijklmno"});
    terminal.resize(7);
    ASSERT_EQ(terminal.rowsAbove(), (Lines{"$ therm", "opix", "1234567", "8901234", "5", "abcdefg", "hijklmn", "o"}));
    show({"57 deg…"}, 7);
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ therm", "opix", "57 deg…"}));
    terminal.resize(20);
    show({"123456789012345", "abcdefghijklmno"}, 20);
    EXPECT_EQ(terminal.rowsAbove(), (Lines{"$ thermopix", "123456789012345", "abcdefghijklmno"}));
}

}  // namespace
}  // namespace thermopix
