#include "tray/StatusPlace.h"

#include <gtest/gtest.h>

#include <array>

namespace thermopix {
namespace {

constexpr StatusPlaces terminal{};
constexpr StatusPlaces tray{.tray = true, .strip = false};
constexpr StatusPlaces strip{.tray = false, .strip = true};
constexpr StatusPlaces stripForTheTray{.tray = true, .strip = true};

TEST(StatusPlaces, FollowTheRequestTheChoiceAndWhatTheSessionHas) {
    constexpr auto unknown = std::nullopt;
    struct Case {
        StatusPlaceOffer offer;
        StatusPlaces places;
    };
    // The choice; the terminal requested, a bus, a display and a watcher on the bus at the start; a tray.
    const std::array cases{
        Case{{TrayPlace::automatic, false, false, false, false, unknown}, terminal},
        Case{{TrayPlace::automatic, false, true, false, false, unknown}, terminal},
        Case{{TrayPlace::automatic, false, true, true, false, unknown}, tray},
        Case{{TrayPlace::automatic, false, true, false, true, unknown}, tray},
        Case{{TrayPlace::automatic, false, true, false, true, false}, tray},
        Case{{TrayPlace::automatic, false, true, true, false, true}, tray},
        Case{{TrayPlace::automatic, false, true, true, true, false}, stripForTheTray},
        Case{{TrayPlace::automatic, false, false, true, false, unknown}, strip},
        Case{{TrayPlace::tray, false, true, true, false, false}, tray},
        Case{{TrayPlace::tray, true, true, true, true, unknown}, terminal},
        Case{{TrayPlace::terminal, false, true, true, false, unknown}, terminal},
        Case{{TrayPlace::strip, false, true, true, false, true}, strip},
        Case{{TrayPlace::strip, false, true, false, true, false}, tray},
        Case{{TrayPlace::strip, false, false, false, false, unknown}, terminal},
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
