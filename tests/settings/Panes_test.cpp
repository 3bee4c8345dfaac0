#include "settings/Panes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "fakes/Golden.h"
#include "settings/ChoiceRow.h"
#include "settings/SettingsSidebar.h"
#include "settings/StatusBarPreview.h"
#include "settings/ViewOutline.h"

namespace thermopix {
namespace {

constexpr Display comfy{
    .value = 52, .unit = TemperatureUnit::celsius, .pressure = {}, .isHot = false, .mood = PetMood::content};

void expectPane(const std::string& name, const ViewNode& pane) {
    expectGolden("settings/golden/" + name + ".txt", outline(pane));
}

const ViewNode* find(const ViewNode& node, const std::string& identifier) {
    if (node.identifier == identifier) {
        return &node;
    }
    for (const auto& child : node.children) {
        if (const auto* found = find(child, identifier)) {
            return found;
        }
    }
    return nullptr;
}

bool says(const ViewNode& node, const std::string& text) {
    if (node.text.find(text) != std::string::npos) {
        return true;
    }
    for (const auto& child : node.children) {
        if (says(child, text)) {
            return true;
        }
    }
    return false;
}

std::vector<const ViewNode*> pixelImages(const ViewNode& node) {
    std::vector<const ViewNode*> images;
    if (node.kind == ViewKind::pixelImage) {
        images.push_back(&node);
    }
    for (const auto& child : node.children) {
        const auto inner = pixelImages(child);
        images.insert(images.end(), inner.begin(), inner.end());
    }
    return images;
}

TEST(ReadoutPane, IsAsApproved) {
    expectPane("readout-default", Panes::readout(Preferences{}, comfy, false));
}

TEST(ReadoutPane, IsAsApprovedWithEveryOtherChoice) {
    const Preferences preferences{.unit = TemperatureUnit::fahrenheit,
                                  .style = PixelStyle::dotMatrix,
                                  .size = PixelSize::large,
                                  .pet = PixelPet::none,
                                  .showsUnitLetter = true};
    const Display hot{.value = 201,
                      .unit = TemperatureUnit::fahrenheit,
                      .pressure = ThermalPressure::serious,
                      .isHot = true,
                      .mood = PetMood::scorching};
    expectPane("readout-other", Panes::readout(preferences, hot, false));
}

TEST(ReadoutPane, HidesThePetInEveryPreviewAtOnceWhenNoPetIsChosen) {
    Preferences preferences;
    const auto widthOf = [&](const std::string& identifier) {
        const auto pane = Panes::readout(preferences, comfy, false);
        return pixelImages(*find(pane, identifier)).front()->image.bitmap.width();
    };
    EXPECT_EQ(widthOf("prefs.preview"), 27);
    EXPECT_EQ(widthOf("prefs.style.micro"), 21);
    preferences.pet = PixelPet::none;
    EXPECT_EQ(widthOf("prefs.preview"), 17);
    EXPECT_EQ(widthOf("prefs.style.micro"), 11);
}

TEST(ReadoutPane, SelectsTheRowsOfTheSettings) {
    for (const PixelPet pet : allCases<PixelPet>()) {
        for (const PixelStyle style : allCases<PixelStyle>()) {
            const auto pane = Panes::readout({.style = style, .pet = pet}, comfy, false);
            for (const PixelPet each : allCases<PixelPet>()) {
                const auto* node = find(pane, "prefs.pet." + std::string(rawValue(each)));
                ASSERT_NE(node, nullptr);
                EXPECT_EQ(node->accessibility.isSelected, each == pet);
            }
            for (const PixelStyle each : allCases<PixelStyle>()) {
                const auto* node = find(pane, "prefs.style." + std::string(rawValue(each)));
                ASSERT_NE(node, nullptr);
                EXPECT_EQ(node->accessibility.isSelected, each == style);
            }
        }
    }
}

TEST(ReadoutPane, NamesTheUnitInItsCaption) {
    EXPECT_TRUE(says(Panes::readout({}, comfy, false), "Off shows `52°`; on shows `52°C`. "));
    EXPECT_TRUE(says(Panes::readout({.unit = TemperatureUnit::fahrenheit}, comfy, false), "on shows `52°F`. "));
}

TEST(ReadoutPane, StatesTheCompactHeightOfTheChosenStyle) {
    EXPECT_TRUE(says(Panes::readout({}, comfy, false), "at 2 pt — 14 pt tall,"));
    EXPECT_TRUE(says(Panes::readout({.style = PixelStyle::micro}, comfy, false), "at 2 pt — 10 pt tall,"));
}

TEST(ReadoutPane, ShowsTheUnavailableReadout) {
    const auto pane = Panes::readout({}, Display{}, false);
    const auto* preview = find(pane, "prefs.preview");
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->accessibility.label, "Preview: --°");
    EXPECT_EQ(pixelImages(*preview).front()->image.description, "Temperature unavailable. Thermal state nominal.");
}

TEST(StatusBarPreview, ReadsTheTextThatItShows) {
    const Display hot{.value = 91, .unit = {}, .pressure = {}, .isHot = true, .mood = PetMood::scorching};
    const auto label = [&](PixelPet pet) {
        return StatusBarPreview{hot, {.pet = pet, .showsUnitLetter = true}}.node().accessibility.label;
    };
    EXPECT_EQ(label(PixelPet::none), "Preview: 91~°C");
    EXPECT_EQ(label(PixelPet::cat), "Preview: 91°C");
}

TEST(PetRow, HighlightsTheMoodOfTheDisplay) {
    for (const PetMood mood : allCases<PetMood>()) {
        Display display = comfy;
        display.mood = mood;
        const auto row = PetRow{PixelPet::ghost, display, {}}.node();
        const auto images = pixelImages(row);
        ASSERT_EQ(images.size(), 4U);
        for (const PetMood each : allCases<PetMood>()) {
            const auto& color = images[static_cast<std::size_t>(each)]->color;
            EXPECT_EQ(color, Color(RoleColor{each == mood ? ColorRole::accent : ColorRole::tertiary}));
        }
    }
}

TEST(PetRow, BlinksInThePresentMoodOnly) {
    const auto images = [](bool blinking) {
        std::vector<PixelBitmap> bitmaps;
        const auto row = PetRow{PixelPet::cat, comfy, {.blinking = blinking}}.node();
        for (const auto* image : pixelImages(row)) {
            bitmaps.push_back(image->image.bitmap);
        }
        return bitmaps;
    };
    const auto open = images(false);
    auto expected = open;
    const auto face = sprite(PixelPet::cat, PetMood::content, true);
    expected[1] = PixelBitmap(face->width(), face->height(), face->cells());
    EXPECT_EQ(images(true), expected);
    EXPECT_NE(open, expected);
}

TEST(GeneralPane, IsAsApproved) {
    expectPane("general-default", Panes::general(Preferences{}));
}

TEST(GeneralPane, IsAsApprovedWithEveryOtherChoice) {
    expectPane("general-other", Panes::general({.source = SensorSource::hottest,
                                                .refreshInterval = RefreshInterval::thirtySeconds,
                                                .openAtLogin = true,
                                                .showPreferencesOnLaunch = true,
                                                .showInDock = true,
                                                .checkForUpdatesAutomatically = false}));
}

TEST(GeneralPane, ExplainsTheChosenSource) {
    for (const SensorSource source : allCases<SensorSource>()) {
        EXPECT_TRUE(says(Panes::general({.source = source}), std::string(subtitle(source))));
    }
}

TEST(Sidebar, SelectsOneRowAndHoversOverTheOthers) {
    const auto selected = sidebarRow(Pane::general, Pane::general);
    EXPECT_EQ(selected.background.fill, Fill(RoleColor{ColorRole::accent}));
    EXPECT_EQ(selected.background.hoverFill, Fill{});
    EXPECT_TRUE(selected.accessibility.isSelected);
    const auto other = sidebarRow(Pane::about, Pane::general);
    EXPECT_EQ(other.background.fill, Fill{});
    EXPECT_EQ(other.background.hoverFill, Fill(RoleColor{ColorRole::primary, 0.06}));
    EXPECT_FALSE(other.accessibility.isSelected);
}

TEST(Sidebar, IsAsApproved) {
    expectPane("sidebar", settingsSidebar(Pane::readout, "1.2", 28));
}

class AboutPaneTest : public testing::Test {
protected:
    [[nodiscard]] ViewNode pane(std::vector<std::string> options) {
        options.insert(options.begin(), "thermopix");
        environment = std::make_unique<AppEnvironment>(options, EnvironmentVariables{}, platform);
        return Panes::about(*environment, platform.system);
    }

    FakePlatform platform;
    std::unique_ptr<AppEnvironment> environment;
};

TEST_F(AboutPaneTest, IsAsApproved) {
    expectPane("about-twelve-sensors", pane({"--uitest-fake-sensor"}));
}

TEST_F(AboutPaneTest, SaysWhyThereIsNoReading) {
    platform.thermal.state = 2;
    expectPane("about-no-sensor", pane({}));
    EXPECT_TRUE(says(Panes::about(*environment, platform.system), "Thermal state right now: Serious"));
}

TEST_F(AboutPaneTest, KeepsThePluralForOneSensor) {
    platform.hid.services = {{"CPU", 50.0}};
    EXPECT_TRUE(says(pane({}), "1 thermal sensors readable on this Mac."));
}

}  // namespace
}  // namespace thermopix
