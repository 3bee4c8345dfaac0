#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// The HID event system of a machine that a test describes, as a library of its own that is opened by its path.
namespace thermopix::HIDEventSystemStandIn {

struct NoText {};

struct Service {
    std::optional<std::variant<std::string, NoText>> product;
    std::optional<double> celsius;
};

struct Machine {
    bool hasClient = true;
    bool hasServices = true;
    std::vector<Service> services;
    /// What the client was last asked to match.
    std::vector<std::pair<std::string, int>> matching;
    /// What was asked for with each event: type, options, timestamp.
    std::vector<std::vector<long>> eventsAskedFor;
    std::vector<int> fieldsAskedFor;
};

[[nodiscard]] Machine& machine();

/// Gives back what the system itself holds.
void shutDown();

}  // namespace thermopix::HIDEventSystemStandIn
