#include "platform/macos/system/MacMainLoop.h"

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "platform/macos/system/MacMonotonicClock.h"

namespace thermopix {

namespace {

// What the work leaves to be released goes at once: the event loop's own pool waits for the next event, which may be
// hours away for a program in the menu bar.
void run(const MainLoop::Work& work) {
    @autoreleasepool {
        work();
    }
}

Subscription startTimer(MainLoop::Duration first, std::uint64_t interval, std::uint64_t leeway, MainLoop::Work work) {
    dispatch_source_t timer = dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, dispatch_get_main_queue());
    dispatch_source_set_timer(timer, dispatch_time(DISPATCH_TIME_NOW, first.count()), interval, leeway);
    const auto held = std::make_shared<const MainLoop::Work>(std::move(work));
    dispatch_source_set_event_handler(timer, ^{
      run(*held);
    });
    dispatch_resume(timer);
    return Subscription([timer] { dispatch_source_cancel(timer); });
}

}  // namespace

Subscription MacMainLoop::oneShot(Duration delay, Work work) {
    return startTimer(delay, DISPATCH_TIME_FOREVER, 0, std::move(work));
}

Subscription MacMainLoop::repeating(Duration first, Duration period, Duration leeway, Work work) {
    return startTimer(first, static_cast<std::uint64_t>(period.count()), static_cast<std::uint64_t>(leeway.count()),
                      std::move(work));
}

MainLoop::Duration MacMainLoop::now() const {
    return MacMonotonicClock().now();
}

}  // namespace thermopix
