#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__aarch64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr

#define __unused __attribute__((unused))

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_SWIFT_UI_ACTOR
#define API_AVAILABLE(...) __API_AVAILABLE_##__VA_ARGS__
#define __API_AVAILABLE_macos(version) __attribute__((availability(macos, introduced = version)))

#define NS_ENUM(type, name) \
    enum name : type name;  \
    enum name : type
#define NS_OPTIONS(type, name) \
    type name;                 \
    enum : type
#define NS_STRING_CONSTANT(type, name) extern "C" type const name

typedef long NSInteger;
typedef unsigned long NSUInteger;
