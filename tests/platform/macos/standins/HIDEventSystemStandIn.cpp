#include "platform/macos/standins/HIDEventSystemStandIn.h"

#include <cstddef>
#include <cstdint>

#include "platform/macos/standins/CoreFoundationStandIn.h"

namespace thermopix::HIDEventSystemStandIn {

namespace {

// Services belong to the system; a copy of the list holds them once more. Each stands for its place in the machine.
std::vector<CFTypeRef> published;

const Service& serviceOf(const void* handle) {
    return machine().services.at(static_cast<std::size_t>(CoreFoundationStandIn::value(handle)));
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
        published.push_back(CoreFoundationStandIn::makeOther(static_cast<double>(published.size())));
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
    return celsius ? const_cast<void*>(CoreFoundationStandIn::makeOther(*celsius)) : nullptr;
}

double IOHIDEventGetFloatValue(void* event, std::int32_t field) {
    machine().fieldsAskedFor.push_back(field);
    return CoreFoundationStandIn::value(event);
}
}

}  // namespace thermopix::HIDEventSystemStandIn
