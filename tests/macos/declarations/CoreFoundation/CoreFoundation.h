#pragma once

#include <stdint.h>

#if defined(__OBJC__)
#define CF_BRIDGED_TYPE(name) __attribute__((objc_bridge(name)))
#define CF_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define CF_NONNULL_END _Pragma("clang assume_nonnull end")
#define CF_NULLABLE _Nullable
#else
#define CF_BRIDGED_TYPE(name)
#define CF_NONNULL_BEGIN
#define CF_NONNULL_END
#define CF_NULLABLE
#endif

extern "C" {

CF_NONNULL_BEGIN

typedef double CGFloat;
typedef unsigned char Boolean;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef uint32_t CFStringEncoding;
typedef CFIndex CFNumberType;

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber* CFNumberRef;
typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;

/// Opaque here: only their addresses are passed on.
typedef struct {
    CFIndex version;
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
} CFDictionaryValueCallBacks;

enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };
enum : CFNumberType { kCFNumberSInt32Type = 3 };

extern const CFAllocatorRef CF_NULLABLE kCFAllocatorDefault;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

CFTypeRef CFRetain(CFTypeRef cf);
void CFRelease(CFTypeRef cf);
CFTypeID CFGetTypeID(CFTypeRef cf);

CFTypeID CFStringGetTypeID(void);
CFStringRef CF_NULLABLE CFStringCreateWithCString(CFAllocatorRef CF_NULLABLE allocator, const char* text,
                                                  CFStringEncoding encoding);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);

CFNumberRef CF_NULLABLE CFNumberCreate(CFAllocatorRef CF_NULLABLE allocator, CFNumberType type, const void* value);

CFIndex CFArrayGetCount(CFArrayRef array);
const void* CF_NULLABLE CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

CFDictionaryRef CF_NULLABLE CFDictionaryCreate(CFAllocatorRef CF_NULLABLE allocator,
                                               const void* CF_NULLABLE* CF_NULLABLE keys,
                                               const void* CF_NULLABLE* CF_NULLABLE values, CFIndex count,
                                               const CFDictionaryKeyCallBacks* CF_NULLABLE keyCallBacks,
                                               const CFDictionaryValueCallBacks* CF_NULLABLE valueCallBacks);

CF_NONNULL_END
}
