#include "system/HIDSymbols.h"

#include <utility>

namespace thermopix {

namespace {

constexpr std::string_view frameworkPath = "/System/Library/Frameworks/IOKit.framework/IOKit";

constexpr std::array<std::string_view, 6> functionNames{
    "IOHIDEventSystemClientCreate",   "IOHIDEventSystemClientSetMatching", "IOHIDEventSystemClientCopyServices",
    "IOHIDServiceClientCopyProperty", "IOHIDServiceClientCopyEvent",       "IOHIDEventGetFloatValue",
};

bool isComplete(const HIDSymbols& symbols) {
    return symbols.create && symbols.setMatching && symbols.copyServices && symbols.copyProperty && symbols.copyEvent &&
           symbols.getFloat;
}

}  // namespace

HIDSymbolResolution NamedHIDSymbolLoader::load() {
    if (!open(frameworkPath)) {
        return {std::nullopt, "dlopen(IOKit.framework)"};
    }
    HIDSymbols symbols;
    std::string_view firstMissing;
    for (const std::string_view name : functionNames) {
        if (!bind(name, symbols) && firstMissing.empty()) {
            firstMissing = name;
        }
    }
    if (!firstMissing.empty()) {
        return {std::nullopt, std::string(firstMissing)};
    }
    if (!isComplete(symbols)) {
        return {std::nullopt, "unknown symbol"};
    }
    return {std::move(symbols), {}};
}

}  // namespace thermopix
