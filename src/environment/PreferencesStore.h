#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/Published.h"
#include "environment/Preferences.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// Holds the current settings, tells subscribers of every change and then persists it. Main thread.
class PreferencesStore {
public:
    /// A layout that cannot be read as this one gets another key.
    static constexpr std::string_view defaultsKey = "preferences.v1";

    /// Loads the stored record, or takes the defaults; writes nothing.
    explicit PreferencesStore(std::shared_ptr<UserDefaults> defaults);

    /// A store over the named suite, or over the standard database when the suite cannot be opened.
    [[nodiscard]] static std::unique_ptr<PreferencesStore> suite(UserDefaultsDatabases& databases,
                                                                 std::string_view name);

    [[nodiscard]] const Preferences& preferences() const { return published_.value(); }

    /// Subscribers hear of the new record first, while `preferences()` still answers the old one.
    void setPreferences(const Preferences& preferences);

    /// One field changed, told and persisted: `store.set(&Preferences::showInDock, true)`.
    template <typename Field>
    void set(Field Preferences::*field, std::type_identity_t<Field> value) {
        Preferences changed = preferences();
        changed.*field = std::move(value);
        setPreferences(changed);
    }

    /// Delivers the current record at once and every later one.
    Subscription subscribe(std::function<void(const Preferences&)> handler);

    /// Delivers what `project` makes of the record, at once and whenever it differs from the last delivered.
    template <typename Projection, typename Handler>
    Subscription subscribeDistinct(Projection project, Handler handler) {
        using Value = std::decay_t<decltype(project(std::declval<const Preferences&>()))>;
        return subscribe([project = std::move(project), handler = std::move(handler),
                          last = std::optional<Value>()](const Preferences& record) mutable {
            Value value = project(record);
            if (!last || !(*last == value)) {
                last = value;
                handler(value);
            }
        });
    }

private:
    void persist();

    std::shared_ptr<UserDefaults> defaults_;
    Published<Preferences> published_;
};

}  // namespace thermopix
