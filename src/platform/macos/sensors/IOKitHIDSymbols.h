#pragma once

#include "system/HIDSymbols.h"

namespace thermopix {

/// The HID event system of a Mac, its functions found by name in the framework. Main thread.
class IOKitHIDSymbols final : public NamedHIDSymbolLoader {
public:
    [[nodiscard]] bool open(std::string_view path) override;
    [[nodiscard]] bool bind(std::string_view name, HIDSymbols& symbols) override;

private:
    void* library_ = nullptr;
};

}  // namespace thermopix
