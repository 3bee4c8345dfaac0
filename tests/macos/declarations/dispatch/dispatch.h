#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

// Under ARC, dispatch objects are Objective-C objects.
@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end

typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
typedef uint64_t dispatch_time_t;
typedef void (^dispatch_block_t)(void);

#define DISPATCH_TIME_NOW (0ULL)
#define DISPATCH_TIME_FOREVER (~0ULL)
#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)

extern "C" {

struct dispatch_source_type_s;
extern const struct dispatch_source_type_s _dispatch_source_type_timer;

dispatch_queue_t dispatch_get_main_queue(void);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
__attribute__((ns_returns_retained)) dispatch_source_t dispatch_source_create(dispatch_source_type_t type,
                                                                              uintptr_t handle, uintptr_t mask,
                                                                              dispatch_queue_t _Nullable queue);
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval, uint64_t leeway);
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t _Nullable handler);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_resume(dispatch_object_t object);
}

NS_ASSUME_NONNULL_END
