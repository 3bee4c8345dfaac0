#include "environment/PreferencesStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/MemoryUserDefaults.h"

namespace thermopix {
namespace {

class PreferencesStoreTest : public testing::Test {
protected:
    [[nodiscard]] std::optional<std::string> stored() const { return defaults->data("preferences.v1"); }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
};

TEST_F(PreferencesStoreTest, EmptyDatabaseYieldsTheDefaultsAndStaysEmpty) {
    const PreferencesStore store(defaults);
    EXPECT_EQ(store.preferences(), Preferences{});
    EXPECT_EQ(defaults->writeCount, 0);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(PreferencesStoreTest, LoadsTheStoredRecordFieldByField) {
    defaults->setData("preferences.v1",
                      R"({"style":"segment","pet":"dragon","refreshInterval":3,"unit":"fahrenheit"})");
    const PreferencesStore store(defaults);
    Preferences expected;
    expected.style = PixelStyle::segment;
    expected.unit = TemperatureUnit::fahrenheit;
    EXPECT_EQ(store.preferences(), expected);
}

TEST_F(PreferencesStoreTest, UnreadableDocumentStaysUntilTheFirstChange) {
    for (const std::string document : {"[1,2]", "not JSON", ""}) {
        defaults->setData("preferences.v1", document);
        PreferencesStore store(defaults);
        EXPECT_EQ(store.preferences(), Preferences{}) << document;
        EXPECT_EQ(stored(), document);

        store.set(&Preferences::showInDock, true);
        Preferences expected;
        expected.showInDock = true;
        EXPECT_EQ(stored(), encodePreferences(expected));
    }
}

TEST_F(PreferencesStoreTest, SettingOneFieldWritesTheWholeRecordOnce) {
    PreferencesStore store(defaults);
    store.set(&Preferences::showInDock, true);
    EXPECT_EQ(defaults->writeCount, 1);
    EXPECT_EQ(stored(),
              R"({"unit":"celsius","style":"arcade","size":"compact","pet":"cat","source":"cpu","refreshInterval":2,)"
              R"("showsUnitLetter":false,"openAtLogin":false,"showPreferencesOnLaunch":false,"showInDock":true,)"
              R"("checkForUpdatesAutomatically":true})");
}

TEST_F(PreferencesStoreTest, ChangesReachTheNextStore) {
    PreferencesStore first(defaults);
    first.set(&Preferences::pet, PixelPet::ghost);
    first.set(&Preferences::refreshInterval, RefreshInterval::tenSeconds);
    EXPECT_EQ(PreferencesStore(defaults).preferences(), first.preferences());
}

TEST_F(PreferencesStoreTest, SubscribersHearBeforeTheRecordIsReplacedAndStored) {
    PreferencesStore store(defaults);
    struct Heard {
        PixelPet next;
        PixelPet current;
        std::int64_t writes;
        bool operator==(const Heard&) const = default;
    };
    std::vector<Heard> heard;
    const auto subscription = store.subscribe([&](const Preferences& record) {
        heard.push_back({record.pet, store.preferences().pet, defaults->writeCount});
    });
    store.set(&Preferences::pet, PixelPet::none);
    EXPECT_EQ(heard, (std::vector<Heard>{{PixelPet::cat, PixelPet::cat, 0}, {PixelPet::none, PixelPet::cat, 0}}));
    EXPECT_EQ(store.preferences().pet, PixelPet::none);
    EXPECT_EQ(defaults->writeCount, 1);
}

TEST_F(PreferencesStoreTest, EqualRecordIsStillAChange) {
    PreferencesStore store(defaults);
    int heard = 0;
    const auto subscription = store.subscribe([&](const Preferences&) { ++heard; });
    store.setPreferences(store.preferences());
    EXPECT_EQ(heard, 2);
    EXPECT_EQ(defaults->writeCount, 1);
}

TEST_F(PreferencesStoreTest, DistinctSubscriberHearsOnlyChangesOfItsField) {
    PreferencesStore store(defaults);
    std::vector<bool> heard;
    const auto subscription = store.subscribeDistinct([](const Preferences& record) { return record.showInDock; },
                                                      [&](bool shows) { heard.push_back(shows); });
    store.set(&Preferences::pet, PixelPet::none);
    store.set(&Preferences::showInDock, true);
    store.set(&Preferences::showInDock, true);
    store.set(&Preferences::showInDock, false);
    EXPECT_EQ(heard, (std::vector<bool>{false, true, false}));
}

TEST_F(PreferencesStoreTest, RecordInUseIsTheOneStoredWhenASubscriberWritesToo) {
    PreferencesStore store(defaults);
    bool armed = false;
    const auto subscription = store.subscribe([&](const Preferences&) {
        if (std::exchange(armed, false)) {
            store.set(&Preferences::showsUnitLetter, true);
        }
    });
    armed = true;
    store.set(&Preferences::showInDock, true);
    EXPECT_EQ(stored(), encodePreferences(store.preferences()));
    EXPECT_TRUE(store.preferences().showInDock);
}

TEST_F(PreferencesStoreTest, FailedWriteKeepsTheFormerDocumentAndTheNewRecord) {
    PreferencesStore store(defaults);
    store.set(&Preferences::pet, PixelPet::mac);
    const auto former = stored();
    defaults->failsWrites = true;
    store.set(&Preferences::pet, PixelPet::none);
    EXPECT_EQ(stored(), former);
    EXPECT_EQ(store.preferences().pet, PixelPet::none);
}

TEST(PreferencesStoreSuite, LivesApartFromTheStandardDatabase) {
    MemoryUserDefaultsDatabases databases;
    const auto store = PreferencesStore::suite(databases, "trial");
    store->set(&Preferences::pet, PixelPet::mac);
    EXPECT_TRUE(databases.suites.at("trial")->data("preferences.v1"));
    EXPECT_FALSE(databases.standardDefaults->data("preferences.v1"));
}

TEST(PreferencesStoreSuite, FallsBackToTheStandardDatabase) {
    MemoryUserDefaultsDatabases databases;
    databases.unopenableSuite = "trial";
    const auto store = PreferencesStore::suite(databases, "trial");
    store->set(&Preferences::pet, PixelPet::mac);
    EXPECT_TRUE(databases.standardDefaults->data("preferences.v1"));
}

}  // namespace
}  // namespace thermopix
