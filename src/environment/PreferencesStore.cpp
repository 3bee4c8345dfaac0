#include "environment/PreferencesStore.h"

namespace thermopix {

namespace {

Preferences load(const UserDefaults& defaults) {
    const auto document = defaults.data(PreferencesStore::defaultsKey);
    return document ? decodePreferences(*document).value_or(Preferences{}) : Preferences{};
}

}  // namespace

PreferencesStore::PreferencesStore(std::shared_ptr<UserDefaults> defaults)
    : defaults_(std::move(defaults)), published_(load(*defaults_)) {}

std::unique_ptr<PreferencesStore> PreferencesStore::suite(UserDefaultsDatabases& databases, std::string_view name) {
    return std::make_unique<PreferencesStore>(databases.suiteOrStandard(name));
}

void PreferencesStore::setPreferences(const Preferences& preferences) {
    published_.send(preferences);
    persist();
}

Subscription PreferencesStore::subscribe(std::function<void(const Preferences&)> handler) {
    return published_.subscribe(std::move(handler));
}

void PreferencesStore::persist() {
    // A document that could not be stored leaves the former one; the database reports why.
    defaults_->setData(defaultsKey, encodePreferences(preferences()));
}

}  // namespace thermopix
