#include "menubar/StatusMenuController.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "menubar/MenuText.h"
#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

class StatusMenuControllerTest : public testing::Test {
protected:
    FakePlatform platform;
    /// The scripted sensor answers, and the updater counts.
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor", "--uitest-defaults-suite", "menu"};
    AppEnvironment environment{arguments, {}, platform};
    Lines told;
    StatusMenuController controller{environment,
                                    {
                                        .openPreferences = [this] { told.emplace_back("open preferences"); },
                                        .showAbout = [this] { told.emplace_back("show about"); },
                                        .terminate = [this] { told.emplace_back("terminate"); },
                                    }};

    FakeTemperatureSensor& sensor() { return dynamic_cast<FakeTemperatureSensor&>(environment.sensor()); }

    [[nodiscard]] const MenuItem& item(std::string_view title) const {
        for (const auto& candidate : controller.menu().items) {
            if (candidate.title == title) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no item " << title;
        return controller.menu().items.front();
    }

    [[nodiscard]] Lines informationLines() const {
        auto lines = menuText(controller.menu());
        lines.resize(3);
        return lines;
    }

    [[nodiscard]] Lines markedTitles() const {
        Lines titles;
        for (const auto& candidate : controller.menu().items) {
            if (candidate.isOn) {
                titles.push_back(candidate.title);
            }
        }
        return titles;
    }

    /// A poll that reads this many processor sensors.
    void pollSamples(std::size_t count) {
        sensor().samples.clear();
        for (std::size_t i = 0; i < count; ++i) {
            sensor().samples.push_back({"pACC MTR Temp Sensor" + std::to_string(i + 1), 50.0});
        }
        static_cast<void>(environment.monitor().poll(SensorSource::cpu, TemperatureUnit::celsius));
        ASSERT_EQ(environment.monitor().lastSamples().size(), count);
    }
};

Display reading(std::int64_t value, PetMood mood = PetMood::content, TemperatureUnit unit = TemperatureUnit::celsius) {
    Display display;
    display.value = value;
    display.mood = mood;
    display.unit = unit;
    return display;
}

TEST_F(StatusMenuControllerTest, TheMenuIsBuiltOfTwentyFiveItems) {
    EXPECT_EQ(controller.menu().items.size(), 25U);
    EXPECT_EQ(controller.menu().title, "");
    EXPECT_EQ(menuText(controller.menu()), (Lines{
                                               "\"—\" {headline} (disabled)",
                                               "\"Reading sensors…\" {caption} (disabled)",
                                               "\"\" {caption} (disabled)",
                                               "----",
                                               "== Pet (disabled)",
                                               "No pet #menu.pet.none =none -> selectPet",
                                               "Cat #menu.pet.cat =cat -> selectPet",
                                               "Westie #menu.pet.westie =westie -> selectPet",
                                               "Mac #menu.pet.mac =mac -> selectPet",
                                               "Ghost #menu.pet.ghost =ghost -> selectPet",
                                               "----",
                                               "== Unit (disabled)",
                                               "Celsius #menu.unit.celsius =celsius -> selectUnit",
                                               "Fahrenheit #menu.unit.fahrenheit =fahrenheit -> selectUnit",
                                               "----",
                                               "== Style (disabled)",
                                               "Arcade #menu.style.arcade =arcade -> selectStyle",
                                               "Micro #menu.style.micro =micro -> selectStyle",
                                               "Segment #menu.style.segment =segment -> selectStyle",
                                               "Dot Matrix #menu.style.dotMatrix =dotMatrix -> selectStyle",
                                               "----",
                                               "Settings… <gearshape> Command+, -> openPreferencesItem",
                                               "Check for Updates… <arrow.triangle.2.circlepath> -> checkForUpdates",
                                               "About Thermopix <info.circle> -> showAbout",
                                               "Quit Thermopix Command+q -> quit",
                                           }));
}

TEST_F(StatusMenuControllerTest, APetsReadingHasItsMoodWordItsMoodLineAndTheSensors) {
    environment.store().set(&Preferences::pet, PixelPet::cat);
    pollSamples(2);
    controller.update(reading(97, PetMood::scorching));
    EXPECT_EQ(informationLines(), (Lines{
                                      "\"Burning — 97°C\" {headline} (disabled)",
                                      "\"Everything is fine. Everything is FINE.\" {caption} (disabled)",
                                      "\"CPU · hottest of 2 sensors · thermal state nominal\" {caption} (disabled)",
                                  }));
}

TEST_F(StatusMenuControllerTest, EveryMoodHasAWordAndALine) {
    environment.store().set(&Preferences::pet, PixelPet::ghost);
    for (const PetMood mood : allCases<PetMood>()) {
        controller.update(reading(57, mood));
        EXPECT_EQ(controller.menu().items[0].title, std::string(title(mood)) + " — 57°C");
        EXPECT_EQ(controller.menu().items[1].title, caption(mood));
    }
}

TEST_F(StatusMenuControllerTest, WithoutAPetTheReadingStandsAloneAndTheSensorLineIsNotRepeated) {
    environment.store().set(&Preferences::pet, PixelPet::none);
    pollSamples(1);
    controller.update(reading(57));
    EXPECT_EQ(informationLines(),
              (Lines{
                  "\"57°C\" {headline} (disabled)",
                  "\"CPU · hottest of 1 sensor · thermal state nominal\" {caption} (disabled)",
                  "\"CPU · hottest of 1 sensor · thermal state nominal\" {caption} (disabled) (hidden)",
              }));
}

TEST_F(StatusMenuControllerTest, TheSensorLineComesBackWithThePet) {
    environment.store().set(&Preferences::pet, PixelPet::none);
    controller.update(reading(57));
    environment.store().set(&Preferences::pet, PixelPet::mac);
    controller.update(reading(57));
    EXPECT_FALSE(controller.menu().items[2].isHidden);
}

TEST_F(StatusMenuControllerTest, WithoutASensorAndAPetTheMenuSaysSo) {
    environment.store().set(&Preferences::pet, PixelPet::none);
    sensor().available = false;
    controller.update(Display{});
    EXPECT_EQ(informationLines(), (Lines{
                                      "\"No reading\" {headline} (disabled)",
                                      "\"No readable thermal sensor on this Mac\" {caption} (disabled)",
                                      "\"No readable thermal sensor on this Mac\" {caption} (disabled) (hidden)",
                                  }));
}

TEST_F(StatusMenuControllerTest, APetKeepsItsMoodLineWithoutAReading) {
    environment.store().set(&Preferences::pet, PixelPet::cat);
    Display display;
    display.mood = PetMood::scorching;
    display.pressure = ThermalPressure::serious;
    controller.update(display);
    EXPECT_EQ(informationLines(), (Lines{
                                      "\"No reading\" {headline} (disabled)",
                                      "\"Everything is fine. Everything is FINE.\" {caption} (disabled)",
                                      "\"No sensor matched · thermal state serious\" {caption} (disabled)",
                                  }));
}

TEST_F(StatusMenuControllerTest, TheUnitLetterIsShownWhateverTheSettingSays) {
    environment.store().set(&Preferences::pet, PixelPet::none);
    environment.store().set(&Preferences::showsUnitLetter, false);
    controller.update(reading(135, PetMood::content, TemperatureUnit::fahrenheit));
    EXPECT_EQ(controller.menu().items[0].title, "135°F");
    controller.update(reading(-5));
    EXPECT_EQ(controller.menu().items[0].title, "-5°C");
}

TEST(StatusMenuDetailText, NamesTheSourceTheNumberOfSensorsAndTheThermalState) {
    const auto text = [](SensorSource source, std::size_t count, ThermalPressure pressure) {
        auto display = reading(50);
        display.pressure = pressure;
        return StatusMenuController::detailText(source, display, count, true);
    };
    EXPECT_EQ(text(SensorSource::cpu, 1, ThermalPressure::nominal),
              "CPU · hottest of 1 sensor · thermal state nominal");
    EXPECT_EQ(text(SensorSource::gpu, 2, ThermalPressure::fair), "GPU · hottest of 2 sensors · thermal state fair");
    EXPECT_EQ(text(SensorSource::soc, 0, ThermalPressure::serious),
              "SoC · hottest of 0 sensors · thermal state serious");
    EXPECT_EQ(text(SensorSource::battery, 3, ThermalPressure::critical),
              "Battery · hottest of 3 sensors · thermal state critical");
    EXPECT_EQ(text(SensorSource::storage, 12, ThermalPressure::nominal),
              "Storage · hottest of 12 sensors · thermal state nominal");
    EXPECT_EQ(text(SensorSource::hottest, 101, ThermalPressure::nominal),
              "Hottest sensor · hottest of 101 sensors · thermal state nominal");
}

TEST(StatusMenuDetailText, WithoutAValueTheSensorsAvailabilityDecides) {
    Display display;
    display.pressure = ThermalPressure::critical;
    EXPECT_EQ(StatusMenuController::detailText(SensorSource::gpu, display, 0, true),
              "No sensor matched · thermal state critical");
    EXPECT_EQ(StatusMenuController::detailText(SensorSource::gpu, display, 4, false),
              "No readable thermal sensor on this Mac");
}

TEST(StatusMenuDetailText, AHeldValueIsDescribedEvenWhenTheSensorHasGone) {
    EXPECT_EQ(StatusMenuController::detailText(SensorSource::cpu, reading(50), 0, false),
              "CPU · hottest of 0 sensors · thermal state nominal");
}

TEST_F(StatusMenuControllerTest, TheDetailTextFollowsTheStoredSource) {
    pollSamples(2);
    environment.store().set(&Preferences::source, SensorSource::gpu);
    EXPECT_EQ(controller.detailText(reading(50)), "GPU · hottest of 2 sensors · thermal state nominal");
}

TEST_F(StatusMenuControllerTest, NothingIsMarkedBeforeTheMenuOpens) {
    EXPECT_EQ(markedTitles(), Lines{});
    controller.update(reading(50));
    EXPECT_EQ(markedTitles(), Lines{});
}

TEST_F(StatusMenuControllerTest, OpeningMarksTheCurrentChoicesAndOnlyThose) {
    controller.menuWillOpen();
    EXPECT_EQ(markedTitles(), (Lines{"Cat", "Celsius", "Arcade"}));
    environment.store().set(&Preferences::unit, TemperatureUnit::fahrenheit);
    environment.store().set(&Preferences::pet, PixelPet::none);
    environment.store().set(&Preferences::style, PixelStyle::dotMatrix);
    EXPECT_EQ(markedTitles(), (Lines{"Cat", "Celsius", "Arcade"})) << "Marks follow at the next opening";
    controller.menuWillOpen();
    EXPECT_EQ(markedTitles(), (Lines{"No pet", "Fahrenheit", "Dot Matrix"}));
}

TEST_F(StatusMenuControllerTest, OpeningChangesNothingButMarks) {
    controller.update(reading(61));
    const auto polls = sensor().sampleCallCount;
    auto expected = controller.menu();
    controller.menuWillOpen();
    for (auto& entry : expected.items) {
        entry.isOn = entry.title == "Cat" || entry.title == "Celsius" || entry.title == "Arcade";
    }
    EXPECT_EQ(controller.menu(), expected);
    EXPECT_EQ(sensor().sampleCallCount, polls) << "The reading is not polled anew";
}

TEST_F(StatusMenuControllerTest, ChoosingWritesOneSetting) {
    auto expected = environment.preferences();
    controller.perform(item("Westie"));
    expected.pet = PixelPet::westie;
    EXPECT_EQ(environment.preferences(), expected);
    controller.perform(item("Fahrenheit"));
    expected.unit = TemperatureUnit::fahrenheit;
    EXPECT_EQ(environment.preferences(), expected);
    controller.perform(item("Segment"));
    expected.style = PixelStyle::segment;
    EXPECT_EQ(environment.preferences(), expected);
    EXPECT_EQ(platform.databases.suites.at("menu")->writeCount, 3);
}

TEST_F(StatusMenuControllerTest, EveryChoiceCanBeMadeAndIsThenTheOneMarked) {
    for (const auto& choice : std::vector<MenuItem>(controller.menu().items)) {
        if (!choice.representedValue) {
            continue;
        }
        controller.perform(choice);
        controller.menuWillOpen();
        EXPECT_TRUE(item(choice.title).isOn) << choice.title;
        EXPECT_EQ(markedTitles().size(), 3U);
    }
}

TEST_F(StatusMenuControllerTest, AValueThatIsNoCaseIsIgnored) {
    const auto before = environment.preferences();
    for (const auto action : {MenuAction::selectPet, MenuAction::selectUnit, MenuAction::selectStyle}) {
        for (const auto& value : {std::optional<std::string>(), std::optional<std::string>(""),
                                  std::optional<std::string>("dragon"), std::optional<std::string>("Cat")}) {
            auto bogus = item("Cat");
            bogus.action = action;
            bogus.representedValue = value;
            controller.perform(bogus);
        }
    }
    EXPECT_EQ(environment.preferences(), before);
    EXPECT_EQ(platform.databases.suites.at("menu")->writeCount, 0);
}

TEST_F(StatusMenuControllerTest, TheLastFourItemsLeadElsewhere) {
    controller.perform(item("Settings…"));
    EXPECT_EQ(told, Lines{"open preferences"});
    controller.perform(item("Check for Updates…"));
    EXPECT_EQ(platform.updater, nullptr) << "The scripted updater stands in for the platform's";
    EXPECT_EQ(dynamic_cast<FakeUpdater&>(environment.updater()).checkForUpdatesCallCount, 1);
    controller.perform(item("About Thermopix"));
    controller.perform(item("Quit Thermopix"));
    EXPECT_EQ(told, (Lines{"open preferences", "show about", "terminate"}));
}

TEST_F(StatusMenuControllerTest, ItemsThatDoNothingAreIgnored) {
    const auto before = environment.preferences();
    controller.perform(controller.menu().items[0]);
    controller.perform(controller.menu().items[3]);
    controller.perform(controller.menu().items[4]);
    EXPECT_EQ(environment.preferences(), before);
    EXPECT_EQ(told, Lines{});
}

TEST_F(StatusMenuControllerTest, AnObserverGetsTheMenuAtOnceAndThenOnlyWhenItChanged) {
    std::vector<Menu> seen;
    auto observer = controller.observe([&](const Menu& menu) { seen.push_back(menu); });
    ASSERT_EQ(seen.size(), 1U);
    controller.update(reading(50));
    controller.update(reading(50));
    EXPECT_EQ(seen.size(), 2U);
    controller.menuWillOpen();
    controller.menuWillOpen();
    EXPECT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen.back(), controller.menu());
    observer.cancel();
    controller.update(reading(51));
    EXPECT_EQ(seen.size(), 3U);
}

}  // namespace
}  // namespace thermopix
