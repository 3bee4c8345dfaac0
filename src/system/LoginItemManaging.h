#pragma once

#include <functional>
#include <optional>
#include <string>

namespace thermopix {

/// Why a system service refused, in words.
struct ServiceError {
    std::string description;

    friend bool operator==(const ServiceError&, const ServiceError&) = default;
};

/// Opens the program at login. Main thread.
class LoginItemManaging {
public:
    virtual ~LoginItemManaging() = default;

    /// As the system judges it now.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// None on success, and where the system answers later: until then it is as it was.
    [[nodiscard]] virtual std::optional<ServiceError> setEnabled(bool enabled) = 0;

    /// Called when the system has answered later. Not in a call of `setEnabled()`.
    std::function<void()> onAnswer;
};

}  // namespace thermopix
