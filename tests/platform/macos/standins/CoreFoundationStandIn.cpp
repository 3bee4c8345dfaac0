#include "platform/macos/standins/CoreFoundationStandIn.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>

namespace {

enum class Kind : CFTypeID { string = 7, number, array, dictionary, other };

struct Object {
    Kind kind = Kind::other;
    int references = 1;
    std::string text;
    double value = 0;
    /// The items of an array; of a dictionary each key and its value.
    std::vector<CFTypeRef> items;
};

std::unordered_map<CFTypeRef, std::unique_ptr<Object>> objects;
int excessReleases = 0;

Object& make(Kind kind) {
    auto object = std::make_unique<Object>();
    object->kind = kind;
    Object& made = *object;
    objects.emplace(&made, std::move(object));
    return made;
}

Object& object(CFTypeRef reference) {
    return *objects.at(reference);
}

}  // namespace

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};

CFTypeRef CFRetain(CFTypeRef cf) {
    ++object(cf).references;
    return cf;
}

void CFRelease(CFTypeRef cf) {
    const auto found = objects.find(cf);
    if (found == objects.end()) {
        ++excessReleases;
        return;
    }
    if (--found->second->references > 0) {
        return;
    }
    const auto gone = std::move(found->second);
    objects.erase(found);
    for (CFTypeRef each : gone->items) {
        CFRelease(each);
    }
}

CFTypeID CFGetTypeID(CFTypeRef cf) {
    return static_cast<CFTypeID>(object(cf).kind);
}

CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(Kind::string);
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding) {
    return thermopix::CoreFoundationStandIn::makeString(text);
}

// A string's length is in UTF-16 units, of which this one pretends to have one a byte.
CFIndex CFStringGetLength(CFStringRef string) {
    return static_cast<CFIndex>(object(string).text.size());
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) {
    return length * 3;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding) {
    const std::string& text = object(string).text;
    if (static_cast<CFIndex>(text.size()) >= size) {
        return 0;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return 1;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    if (type != kCFNumberSInt32Type) {
        return nullptr;
    }
    Object& made = make(Kind::number);
    made.value = *static_cast<const std::int32_t*>(value);
    return reinterpret_cast<CFNumberRef>(&made);
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>(object(array).items.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return object(array).items.at(static_cast<std::size_t>(index));
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks || valueCallBacks != &kCFTypeDictionaryValueCallBacks) {
        return nullptr;
    }
    Object& made = make(Kind::dictionary);
    for (CFIndex i = 0; i < count; ++i) {
        made.items.push_back(CFRetain(keys[i]));
        made.items.push_back(CFRetain(values[i]));
    }
    return reinterpret_cast<CFDictionaryRef>(&made);
}

namespace thermopix::CoreFoundationStandIn {

CFStringRef makeString(std::string text) {
    Object& made = make(Kind::string);
    made.text = std::move(text);
    return reinterpret_cast<CFStringRef>(&made);
}

CFTypeRef makeOther(double value) {
    Object& made = make(Kind::other);
    made.value = value;
    return &made;
}

CFArrayRef makeArray(const std::vector<CFTypeRef>& items) {
    Object& made = make(Kind::array);
    for (CFTypeRef item : items) {
        made.items.push_back(CFRetain(item));
    }
    return reinterpret_cast<CFArrayRef>(&made);
}

const std::string& text(CFStringRef string) {
    return object(string).text;
}

double value(CFTypeRef other) {
    return object(other).value;
}

std::vector<std::pair<std::string, int>> entries(CFDictionaryRef dictionary) {
    const auto& items = object(dictionary).items;
    std::vector<std::pair<std::string, int>> found;
    for (std::size_t i = 0; i < items.size(); i += 2) {
        found.emplace_back(object(items[i]).text, static_cast<int>(object(items[i + 1]).value));
    }
    return found;
}

int liveObjects() {
    return static_cast<int>(objects.size());
}

int overReleases() {
    return excessReleases;
}

void forget() {
    objects.clear();
    excessReleases = 0;
}

}  // namespace thermopix::CoreFoundationStandIn
