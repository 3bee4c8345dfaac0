#include "platform/macos/sensors/IOKitHIDSymbols.h"

#include <CoreFoundation/CoreFoundation.h>
#include <dlfcn.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <utility>

#include "platform/macos/sensors/CoreFoundationHandle.h"

namespace thermopix {

namespace {

using StringHandle = CoreFoundationHandle<CFStringRef>;
using NumberHandle = CoreFoundationHandle<CFNumberRef>;
using DictionaryHandle = CoreFoundationHandle<CFDictionaryRef>;
using ArrayHandle = CoreFoundationHandle<CFArrayRef>;
using ValueHandle = CoreFoundationHandle<CFTypeRef>;

// The framework publishes no header for them.
using CreateFunction = void* (*)(CFAllocatorRef allocator);
using SetMatchingFunction = void (*)(void* client, CFDictionaryRef matching);
using CopyServicesFunction = CFArrayRef (*)(void* client);
using CopyPropertyFunction = CFTypeRef (*)(void* service, CFStringRef key);
using CopyEventFunction = void* (*)(void* service, std::int64_t type, std::int32_t options, std::int64_t timestamp);
using GetFloatFunction = double (*)(void* event, std::int32_t field);

HIDObject owned(void* object) {
    return {object, [](void* held) { CFRelease(held); }};
}

StringHandle makeString(std::string_view text) {
    return StringHandle(
        CFStringCreateWithCString(kCFAllocatorDefault, std::string(text).c_str(), kCFStringEncodingUTF8));
}

DictionaryHandle makeMatching(const std::array<HIDMatching, 2>& matching) {
    std::array<StringHandle, 2> keyHandles;
    std::array<NumberHandle, 2> valueHandles;
    std::array<const void*, 2> keys{};
    std::array<const void*, 2> values{};
    for (std::size_t i = 0; i < matching.size(); ++i) {
        keyHandles[i] = makeString(matching[i].key);
        valueHandles[i] = NumberHandle(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &matching[i].value));
        if (!keyHandles[i] || !valueHandles[i]) {
            return {};
        }
        keys[i] = keyHandles[i].get();
        values[i] = valueHandles[i].get();
    }
    return DictionaryHandle(CFDictionaryCreate(kCFAllocatorDefault, keys.data(), values.data(),
                                               static_cast<CFIndex>(matching.size()), &kCFTypeDictionaryKeyCallBacks,
                                               &kCFTypeDictionaryValueCallBacks));
}

std::string textOf(CFStringRef string) {
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    std::string text(static_cast<std::size_t>(size), '\0');
    if (CFStringGetCString(string, text.data(), size, kCFStringEncodingUTF8) == 0) {
        return {};
    }
    text.resize(std::strlen(text.c_str()));
    return text;
}

void setMatching(SetMatchingFunction function, void* client, const std::array<HIDMatching, 2>& matching) {
    if (const DictionaryHandle dictionary = makeMatching(matching)) {
        function(client, dictionary.get());
    }
}

std::optional<std::vector<HIDObject>> copyServices(CopyServicesFunction function, void* client) {
    const ArrayHandle array(function(client));
    if (!array) {
        return std::nullopt;
    }
    const CFIndex count = CFArrayGetCount(array.get());
    std::vector<HIDObject> services;
    services.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i) {
        // The array owns its services; each that is to outlive it is retained.
        services.push_back(owned(const_cast<void*>(CFRetain(CFArrayGetValueAtIndex(array.get(), i)))));
    }
    return services;
}

std::optional<HIDProperty> copyProperty(CopyPropertyFunction function, void* service, std::string_view key) {
    const StringHandle name = makeString(key);
    const ValueHandle value(name ? function(service, name.get()) : nullptr);
    if (!value) {
        return std::nullopt;
    }
    if (CFGetTypeID(value.get()) != CFStringGetTypeID()) {
        return OtherHIDProperty{};
    }
    return textOf(static_cast<CFStringRef>(value.get()));
}

}  // namespace

bool IOKitHIDSymbols::open(std::string_view path) {
    library_ = dlopen(std::string(path).c_str(), RTLD_LAZY);
    return library_ != nullptr;
}

bool IOKitHIDSymbols::bind(std::string_view name, HIDSymbols& symbols) {
    void* const found = library_ != nullptr ? dlsym(library_, std::string(name).c_str()) : nullptr;
    if (found == nullptr) {
        return false;
    }
    if (name == "IOHIDEventSystemClientCreate") {
        symbols.create = [create = reinterpret_cast<CreateFunction>(found)] {
            return owned(create(kCFAllocatorDefault));
        };
    } else if (name == "IOHIDEventSystemClientSetMatching") {
        symbols.setMatching = std::bind_front(setMatching, reinterpret_cast<SetMatchingFunction>(found));
    } else if (name == "IOHIDEventSystemClientCopyServices") {
        symbols.copyServices = std::bind_front(copyServices, reinterpret_cast<CopyServicesFunction>(found));
    } else if (name == "IOHIDServiceClientCopyProperty") {
        symbols.copyProperty = std::bind_front(copyProperty, reinterpret_cast<CopyPropertyFunction>(found));
    } else if (name == "IOHIDServiceClientCopyEvent") {
        symbols.copyEvent = [copy = reinterpret_cast<CopyEventFunction>(found)](auto... arguments) {
            return owned(copy(arguments...));
        };
    } else if (name == "IOHIDEventGetFloatValue") {
        symbols.getFloat = reinterpret_cast<GetFloatFunction>(found);
    } else {
        return false;
    }
    return true;
}

}  // namespace thermopix
