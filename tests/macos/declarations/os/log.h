#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@protocol OS_os_log <NSObject>
@end
typedef NSObject<OS_os_log>* os_log_t;

typedef uint8_t os_log_type_t;
enum : os_log_type_t { OS_LOG_TYPE_DEFAULT = 0x00 };

extern "C" {
__attribute__((ns_returns_retained)) os_log_t os_log_create(const char* subsystem, const char* category);

// A macro in the system; a function here, so that the format is checked.
void os_log_with_type(os_log_t log, os_log_type_t type, const char* format, ...) __attribute__((format(os_log, 3, 4)));
}

#define os_log(log, ...) os_log_with_type(log, OS_LOG_TYPE_DEFAULT, __VA_ARGS__)

NS_ASSUME_NONNULL_END
