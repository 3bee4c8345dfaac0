#include "platform/macos/standins/HIDEventSystemStandIn.h"

#include <cstddef>
#include <cstdint>
#include <map>

#include "platform/macos/standins/CoreFoundationStandIn.h"

namespace thermopix::HIDEventSystemStandIn {

namespace {

// Services belong to the system; a copy of the list holds them once more.
std::vector<CFTypeRef> published;
std::map<const void*, double> levels;

const Service& serviceOf(const void* handle) {
    for (std::size_t i = 0; i < published.size(); ++i) {
        if (published[i] == handle) {
            return machine().services.at(i);
        }
    }
    static const Service none;
    return none;
}

}  // namespace

Machine& machine() {
    static Machine described;
    return described;
}

void shutDown() {
    for (CFTypeRef service : published) {
        CFRelease(service);
    }
    published.clear();
    levels.clear();
    machine() = {};
}

extern "C" {

void* IOHIDEventSystemClientCreate(CFAllocatorRef allocator) {
    const bool isDefault = allocator == kCFAllocatorDefault;
    return isDefault && machine().hasClient ? const_cast<void*>(CoreFoundationStandIn::makeOther()) : nullptr;
}

void IOHIDEventSystemClientSetMatching(void*, CFDictionaryRef matching) {
    machine().matching = CoreFoundationStandIn::entries(matching);
}

CFArrayRef IOHIDEventSystemClientCopyServices(void*) {
    if (!machine().hasServices) {
        return nullptr;
    }
    while (published.size() < machine().services.size()) {
        published.push_back(CoreFoundationStandIn::makeOther());
    }
    return CoreFoundationStandIn::makeArray(published);
}

CFTypeRef IOHIDServiceClientCopyProperty(void* service, CFStringRef key) {
    const auto& product = serviceOf(service).product;
    if (CoreFoundationStandIn::text(key) != "Product" || !product) {
        return nullptr;
    }
    const auto* name = std::get_if<std::string>(&*product);
    return name != nullptr ? static_cast<CFTypeRef>(CoreFoundationStandIn::makeString(*name))
                           : CoreFoundationStandIn::makeOther();
}

void* IOHIDServiceClientCopyEvent(void* service, std::int64_t type, std::int32_t options, std::int64_t timestamp) {
    machine().eventsAskedFor.push_back({type, options, timestamp});
    const auto celsius = serviceOf(service).celsius;
    if (!celsius) {
        return nullptr;
    }
    void* event = const_cast<void*>(CoreFoundationStandIn::makeOther());
    levels[event] = *celsius;
    return event;
}

double IOHIDEventGetFloatValue(void* event, std::int32_t field) {
    machine().fieldsAskedFor.push_back(field);
    return levels.at(event);
}
}

}  // namespace thermopix::HIDEventSystemStandIn
