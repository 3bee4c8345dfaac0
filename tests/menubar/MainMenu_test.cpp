#include "menubar/MainMenu.h"

#include <gtest/gtest.h>

#include "environment/AppInfo.h"
#include "menubar/MenuText.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

TEST(MainMenu, TheApplicationMenuIsUntitledAndNamesTheProgram) {
    const auto item = MainMenu::appMenuItem(AppInfo::name);
    EXPECT_EQ(item.kind, MenuItemKind::submenu);
    EXPECT_EQ(item.title, "");
    EXPECT_EQ(item.submenu.title, "");
    EXPECT_FALSE(item.submenu.listsWindows);
    EXPECT_EQ(menuText(item.submenu), (Lines{
                                          "About Thermopix -> showAboutPanel",
                                          "----",
                                          "Hide Thermopix Command+h -> hide",
                                          "Hide Others Command+Option+h -> hideOtherApplications",
                                          "Show All -> unhideAllApplications",
                                          "----",
                                          "Quit Thermopix Command+q -> terminate",
                                      }));
}

TEST(MainMenu, TheApplicationMenuTakesAnyName) {
    const auto items = MainMenu::appMenuItem("Other").submenu.items;
    EXPECT_EQ(items.front().title, "About Other");
    EXPECT_EQ(items[2].title, "Hide Other");
    EXPECT_EQ(items.back().title, "Quit Other");
}

TEST(MainMenu, TheEditMenuHasTheUsualShortcuts) {
    const auto item = MainMenu::editMenuItem();
    EXPECT_EQ(item.kind, MenuItemKind::submenu);
    EXPECT_EQ(item.title, "Edit");
    EXPECT_EQ(item.submenu.title, "Edit");
    EXPECT_FALSE(item.submenu.listsWindows);
    EXPECT_EQ(menuText(item.submenu), (Lines{
                                          "Undo Command+z -> undo",
                                          "Redo Command+Shift+z -> redo",
                                          "----",
                                          "Cut Command+x -> cut",
                                          "Copy Command+c -> copy",
                                          "Paste Command+v -> paste",
                                          "Select All Command+a -> selectAll",
                                      }));
}

TEST(MainMenu, TheWindowMenuIsWhereTheSystemListsTheWindows) {
    const auto item = MainMenu::windowMenuItem();
    EXPECT_EQ(item.kind, MenuItemKind::submenu);
    EXPECT_EQ(item.title, "Window");
    EXPECT_EQ(item.submenu.title, "Window");
    EXPECT_TRUE(item.submenu.listsWindows);
    EXPECT_EQ(menuText(item.submenu), (Lines{
                                          "Close Command+w -> performClose",
                                          "Minimize Command+m -> performMiniaturize",
                                          "----",
                                          "Bring All to Front -> arrangeInFront",
                                      }));
}

}  // namespace
}  // namespace thermopix
