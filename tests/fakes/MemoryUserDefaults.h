#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "system/UserDefaults.h"

namespace thermopix {

class MemoryUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override {
        const auto entry = values.find(key);
        return entry == values.end() ? std::nullopt : std::optional(entry->second);
    }

    bool setData(std::string_view key, std::string_view bytes) override {
        if (failsWrites) {
            return false;
        }
        ++writeCount;
        values.insert_or_assign(std::string(key), std::string(bytes));
        return true;
    }

    std::map<std::string, std::string, std::less<>> values;
    std::int64_t writeCount = 0;
    bool failsWrites = false;
};

/// Opens every suite except the names that a test forbids.
class MemoryUserDefaultsDatabases final : public UserDefaultsDatabases {
public:
    [[nodiscard]] std::shared_ptr<UserDefaults> standard() override { return standardDefaults; }

    [[nodiscard]] std::shared_ptr<UserDefaults> suite(std::string_view name) override {
        if (name == unopenableSuite) {
            return nullptr;
        }
        auto& entry = suites[std::string(name)];
        if (!entry) {
            entry = std::make_shared<MemoryUserDefaults>();
        }
        return entry;
    }

    std::shared_ptr<MemoryUserDefaults> standardDefaults = std::make_shared<MemoryUserDefaults>();
    std::map<std::string, std::shared_ptr<MemoryUserDefaults>, std::less<>> suites;
    std::string unopenableSuite;
};

}  // namespace thermopix
