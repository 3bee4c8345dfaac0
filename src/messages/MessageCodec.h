#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

/// Messages as lines of JSON: an object with one field, named after the message, that holds the message's fields. A
/// field that has its default value is left out; enumerations go by their raw values.
namespace thermopix::MessageCodec {

/// One line without its line feed. Text that is not UTF-8 has its bad bytes replaced.
[[nodiscard]] std::string line(const WindowRequest& request);
[[nodiscard]] std::string line(const WindowEvent& event);

/// None unless the line is exactly one whole message: an unknown message, field or raw value, a value of another type
/// or out of range, and a tree deeper than any window are all malformed.
[[nodiscard]] std::optional<WindowRequest> request(std::string_view line);
[[nodiscard]] std::optional<WindowEvent> event(std::string_view line);

}  // namespace thermopix::MessageCodec
