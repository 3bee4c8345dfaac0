#include "tray/StatusPlace.h"

#include <gtest/gtest.h>

#include <array>

namespace thermopix {
namespace {

constexpr StatusPlaces terminal{.tray = false, .strip = false, .terminal = true};
constexpr StatusPlaces tray{.tray = true, .strip = false, .terminal = false};
constexpr StatusPlaces strip{.tray = false, .strip = true, .terminal = false};
constexpr StatusPlaces stripForTheTray{.tray = true, .strip = true, .terminal = false};
constexpr StatusPlaces terminalForTheTray{.tray = true, .strip = false, .terminal = true};

TEST(StatusPlaces, FollowTheRequestTheChoiceAndWhatTheSessionHas) {
    constexpr auto unknown = std::nullopt;
    struct Case {
        StatusPlaceOffer offer;
        StatusPlaces places;
    };
    // The choice; the terminal requested, a bus and a display; a tray.
    const std::array cases{
        Case{{TrayPlace::automatic, false, false, false, unknown}, terminal},
        Case{{TrayPlace::automatic, false, true, false, unknown}, tray},
        Case{{TrayPlace::automatic, false, true, false, false}, terminalForTheTray},
        Case{{TrayPlace::automatic, false, true, false, true}, tray},
        Case{{TrayPlace::automatic, false, true, true, unknown}, tray},
        Case{{TrayPlace::automatic, false, true, true, true}, tray},
        Case{{TrayPlace::automatic, false, true, true, false}, stripForTheTray},
        Case{{TrayPlace::automatic, false, false, true, unknown}, strip},
        Case{{TrayPlace::automatic, true, true, false, true}, terminal},
        Case{{TrayPlace::tray, false, true, true, false}, tray},
        Case{{TrayPlace::tray, false, true, false, false}, terminalForTheTray},
        Case{{TrayPlace::tray, true, true, true, unknown}, terminal},
        Case{{TrayPlace::terminal, false, true, true, unknown}, terminal},
        Case{{TrayPlace::terminal, false, true, false, true}, terminal},
        Case{{TrayPlace::strip, false, true, true, true}, strip},
        Case{{TrayPlace::strip, false, true, false, true}, tray},
        Case{{TrayPlace::strip, false, true, false, false}, terminalForTheTray},
        Case{{TrayPlace::strip, false, false, false, unknown}, terminal},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(statusPlaces(cases[i].offer), cases[i].places) << "case " << i;
    }
}

TEST(StatusPlaces, KeepAReadoutThatIsOnADesktopFromMovingToATerminal) {
    EXPECT_EQ(choiceOnDesktop(TrayPlace::terminal), TrayPlace::automatic);
    EXPECT_EQ(choiceOnDesktop(TrayPlace::strip), TrayPlace::strip);
}

}  // namespace
}  // namespace thermopix
