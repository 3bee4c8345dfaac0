#include "menubar/MainMenu.h"

#include <gtest/gtest.h>

#include "menubar/MenuText.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

void expectMenu(const MenuItem& item, const std::string& title, bool listsWindows, const Lines& lines) {
    EXPECT_EQ(item.kind, MenuItemKind::submenu);
    EXPECT_EQ(item.title, title);
    EXPECT_EQ(item.submenu.title, title);
    EXPECT_EQ(item.submenu.listsWindows, listsWindows);
    EXPECT_EQ(menuText(item.submenu), lines);
}

TEST(MainMenu, TheApplicationMenuIsUntitledAndNamesTheProgram) {
    expectMenu(MainMenu::appMenuItem("Other"), "", false,
               {
                   "About Other -> showAboutPanel",
                   "----",
                   "Hide Other Command+h -> hide",
                   "Hide Others Command+Option+h -> hideOtherApplications",
                   "Show All -> unhideAllApplications",
                   "----",
                   "Quit Other Command+q -> terminate",
               });
}

TEST(MainMenu, TheEditMenuHasTheUsualShortcuts) {
    expectMenu(MainMenu::editMenuItem(), "Edit", false,
               {
                   "Undo Command+z -> undo",
                   "Redo Command+Shift+z -> redo",
                   "----",
                   "Cut Command+x -> cut",
                   "Copy Command+c -> copy",
                   "Paste Command+v -> paste",
                   "Select All Command+a -> selectAll",
               });
}

TEST(MainMenu, TheWindowMenuIsWhereTheSystemListsTheWindows) {
    expectMenu(MainMenu::windowMenuItem(), "Window", true,
               {
                   "Close Command+w -> performClose",
                   "Minimize Command+m -> performMiniaturize",
                   "----",
                   "Bring All to Front -> arrangeInFront",
               });
}

}  // namespace
}  // namespace thermopix
