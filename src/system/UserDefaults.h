#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace thermopix {

/// A per-user store of binary values under text keys; main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The bytes under a key; none when there are none or they cannot be read.
    [[nodiscard]] virtual std::optional<std::string> data(std::string_view key) const = 0;

    /// Replaces the bytes under a key, whole or not at all: `data()` answers them at once, and the next start when they
    /// are stored. False when they never will be, and then the former bytes are still there.
    virtual bool setData(std::string_view key, std::string_view bytes) = 0;
};

/// Opens the databases of `UserDefaults`.
class UserDefaultsDatabases {
public:
    virtual ~UserDefaultsDatabases() = default;

    [[nodiscard]] virtual std::shared_ptr<UserDefaults> standard() = 0;

    /// The named suite; null when it cannot be opened, for instance because its name would leave the folder of suites.
    [[nodiscard]] virtual std::shared_ptr<UserDefaults> suite(std::string_view name) = 0;

    /// The named suite, or the standard database when the suite cannot be opened.
    [[nodiscard]] std::shared_ptr<UserDefaults> suiteOrStandard(std::string_view name) {
        auto opened = suite(name);
        return opened ? opened : standard();
    }
};

}  // namespace thermopix
