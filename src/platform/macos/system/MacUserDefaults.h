#pragma once

#include "system/UserDefaults.h"

namespace thermopix {

class MacUserDefaultsDatabases final : public UserDefaultsDatabases {
public:
    [[nodiscard]] std::shared_ptr<UserDefaults> standard() override;
    [[nodiscard]] std::shared_ptr<UserDefaults> suite(std::string_view name) override;
};

}  // namespace thermopix
