#include "tray/TrayHost.h"

#include <gtest/gtest.h>

#include <vector>

namespace thermopix {
namespace {

using Processes = std::vector<std::optional<std::string>>;

TrayHost automatic(std::optional<std::string_view> watcher, const Processes& hosts = {}) {
    return trayHost(watcher, hosts, TrayShapeChoice::automatic);
}

std::vector<std::int32_t> sizes(TrayPictureSet set) {
    const auto all = pictureSizes(set);
    return {all.begin(), all.end()};
}

TEST(TrayHost, OnlyTraysThatKeepWidePicturesWideGetThem) {
    for (const auto* process : {"waybar", "notification-ar", "xapp-sn-watcher"}) {
        EXPECT_EQ(shape(automatic(process).pictures), TrayShape::wide) << process;
    }
    for (const auto* process :
         {"xfce4-panel", "panel-6-systray", "lxqt-panel", "gnome-shell", "swaybar", "kded5", "kded6", "plasmashell"}) {
        EXPECT_EQ(shape(automatic(process).pictures), TrayShape::square) << process;
    }
}

TEST(TrayHost, AnUnknownTrayGetsWhatSuitsEveryTray) {
    const TrayHost safe{TrayPictureSet::square, TrayClick::opensMenu, TrayRegistration::busName,
                        TrayInkRule::colorScheme};
    EXPECT_EQ(automatic(std::nullopt), safe);
    EXPECT_EQ(automatic(""), safe);
    EXPECT_EQ(automatic("."), safe);
    EXPECT_EQ(automatic("some-panel"), safe);
    EXPECT_EQ(automatic("way"), safe);
}

TEST(TrayHost, AWrappedProgramIsRecognized) {
    EXPECT_EQ(automatic(".waybar-wrapped"), automatic("waybar"));
}

TEST(TrayHost, PictureSizesSuitTheTray) {
    EXPECT_EQ(sizes(automatic("waybar").pictures), (std::vector{16, 32}));
    EXPECT_EQ(sizes(automatic("xapp-sn-watcher").pictures), (std::vector{16, 32}));
    EXPECT_EQ(sizes(automatic("notification-ar").pictures), (std::vector{16, 22, 24, 26, 28, 32, 48}));
    EXPECT_EQ(sizes(automatic("xfce4-panel").pictures), (std::vector{22, 44}));
    EXPECT_EQ(sizes(automatic("kded5").pictures), (std::vector{16, 20, 22, 24, 32, 44, 48}));
}

TEST(TrayHost, ActivateIsOfferedOnlyWhereLeftClicksNeedIt) {
    EXPECT_EQ(automatic("lxqt-panel").click, TrayClick::activates);
    EXPECT_EQ(automatic("notification-ar").click, TrayClick::activates);
    for (const auto* process : {"waybar", "xapp-sn-watcher", "xfce4-panel", "gnome-shell", "swaybar", "kded5"}) {
        EXPECT_EQ(automatic(process).click, TrayClick::opensMenu) << process;
    }
}

TEST(TrayHost, OneTrayOpensMenusOfItemsAtAPathOnly) {
    EXPECT_EQ(automatic("xapp-sn-watcher").registration, TrayRegistration::ayatanaPath);
    for (const auto* process : {"waybar", "notification-ar", "xfce4-panel", "lxqt-panel", "gnome-shell", "kded5"}) {
        EXPECT_EQ(automatic(process).registration, TrayRegistration::busName) << process;
    }
}

TEST(TrayHost, InkComesFromTheBarWhereItIsKnown) {
    EXPECT_EQ(automatic("waybar").ink, TrayInkRule::light);
    EXPECT_EQ(automatic("gnome-shell").ink, TrayInkRule::light);
    EXPECT_EQ(automatic("swaybar").ink, TrayInkRule::light);
    EXPECT_EQ(automatic("xfce4-panel").ink, TrayInkRule::xfcePanel);
    EXPECT_EQ(automatic("kded5").ink, TrayInkRule::colorScheme);
    EXPECT_EQ(automatic("lxqt-panel").ink, TrayInkRule::colorScheme);
    EXPECT_EQ(automatic("notification-ar").ink, TrayInkRule::colorScheme);
}

TEST(TrayHost, OtherTraysOfTheSameKindChangeNothing) {
    EXPECT_EQ(automatic("waybar", {"waybar", "waybar"}), automatic("waybar"));
    EXPECT_EQ(automatic("xfce4-panel", {"panel-6-systray"}), automatic("xfce4-panel"));
    EXPECT_EQ(automatic("kded5", {"plasmashell", std::nullopt}), automatic("kded5"));
}

TEST(TrayHost, TraysOfDifferentKindsGetWhatSuitsThemAll) {
    EXPECT_EQ(automatic("waybar", {"waybar", "swaybar"}), TrayHost{});
    EXPECT_EQ(automatic("waybar", {std::nullopt}), TrayHost{});
    EXPECT_EQ(automatic("xfce4-panel", {"lxqt-panel"}), TrayHost{});
    TrayHost byPath;
    byPath.registration = TrayRegistration::ayatanaPath;
    EXPECT_EQ(automatic("xapp-sn-watcher", {"xfce4-panel"}), byPath);
}

TEST(TrayHost, TheShapeCanBeChosen) {
    EXPECT_EQ(trayHost("kded5", {}, TrayShapeChoice::wide).pictures, TrayPictureSet::bar);
    EXPECT_EQ(trayHost("waybar", {}, TrayShapeChoice::square).pictures, TrayPictureSet::square);
    EXPECT_EQ(trayHost("notification-ar", {}, TrayShapeChoice::wide).pictures, TrayPictureSet::matePanel);
    EXPECT_EQ(trayHost("xfce4-panel", {}, TrayShapeChoice::square).pictures, TrayPictureSet::xfcePanel);
    EXPECT_EQ(trayHost("lxqt-panel", {}, TrayShapeChoice::wide).click, TrayClick::activates);
}

TEST(TrayHost, ATraysBusNameHoldsItsProcess) {
    EXPECT_EQ(trayHostProcess("org.kde.StatusNotifierHost-1234"), 1234U);
    EXPECT_EQ(trayHostProcess("org.kde.StatusNotifierHost-1234-2"), 1234U);
}

TEST(TrayHost, ABusNameWithoutAProcessHoldsNone) {
    for (const auto* name : {"", "org.kde.StatusNotifierHost-", "org.kde.StatusNotifierHost-panel",
                             "org.kde.StatusNotifierHost-12x", "org.kde.StatusNotifierHost--12",
                             "org.kde.StatusNotifierHost-99999999999", "org.kde.StatusNotifierItem-1234-1"}) {
        EXPECT_EQ(trayHostProcess(name), std::nullopt) << name;
    }
}

}  // namespace
}  // namespace thermopix
