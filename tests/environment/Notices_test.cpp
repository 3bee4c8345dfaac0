#include "environment/Notices.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(Notices, SayWhyAndWhatHoldsMeanwhile) {
    const auto settings = settingsNotSavedNotice("No space left on device");
    EXPECT_EQ(settings.title, "Thermopix cannot save its settings");
    EXPECT_EQ(settings.body,
              "No space left on device. What you choose holds while Thermopix runs, and is saved as soon as that is "
              "possible.");
    const auto login = openAtLoginNotice("/home/user/entry starts another program, /bin/sh");
    EXPECT_EQ(login.title, "\"Open at login\" could not be changed");
    EXPECT_EQ(login.body, "/home/user/entry starts another program, /bin/sh.");
    const auto windows = windowsNotShownNotice("There is no display to show windows on.");
    EXPECT_EQ(windows.title, "Thermopix cannot show its windows");
    EXPECT_EQ(windows.body, "There is no display to show windows on.");
    for (const auto& notice : {settings, login, windows}) {
        EXPECT_FALSE(notice.isAnswer) << "it stays until it is read";
        EXPECT_EQ(notice.button, std::nullopt);
    }
}

}  // namespace
}  // namespace thermopix
