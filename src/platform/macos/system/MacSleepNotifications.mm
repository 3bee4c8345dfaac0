#include "platform/macos/system/MacSleepNotifications.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

namespace thermopix {

namespace {

NSNotificationName nameOf(SleepNotification notification) {
    switch (notification) {
        case SleepNotification::willSleep:
            return NSWorkspaceWillSleepNotification;
        case SleepNotification::screensDidSleep:
            return NSWorkspaceScreensDidSleepNotification;
        case SleepNotification::didWake:
            return NSWorkspaceDidWakeNotification;
        case SleepNotification::screensDidWake:
            break;
    }
    return NSWorkspaceScreensDidWakeNotification;
}

}  // namespace

Subscription MacSleepNotifications::observe(SleepNotification notification, std::function<void()> handler) {
    // The workspace has a centre of its own; the default one never hears of sleep.
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    const auto held = std::make_shared<const std::function<void()>>(std::move(handler));
    id<NSObject> token = [center addObserverForName:nameOf(notification)
                                             object:nil
                                              queue:NSOperationQueue.mainQueue
                                         usingBlock:^(NSNotification*) {
                                           (*held)();
                                         }];
    return Subscription([center, token] { [center removeObserver:token]; });
}

}  // namespace thermopix
