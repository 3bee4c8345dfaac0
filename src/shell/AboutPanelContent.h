#pragma once

#include <string>

namespace thermopix {

/// How the credits are set: the system font in the secondary label colour. Sizes are in points.
struct AboutCreditsStyle {
    double fontSize = 11;
    bool isSecondary = true;
    bool isCentered = true;
    /// On top of the font's own line height.
    double extraLineSpacing = 2;

    friend bool operator==(const AboutCreditsStyle&, const AboutCreditsStyle&) = default;
};

/// What the About panel says, below the program's icon.
struct AboutPanelContent {
    std::string applicationName;
    std::string version;
    std::string credits;
    AboutCreditsStyle creditsStyle;

    friend bool operator==(const AboutPanelContent&, const AboutPanelContent&) = default;
};

}  // namespace thermopix
