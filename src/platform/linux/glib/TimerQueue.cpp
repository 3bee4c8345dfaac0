#include "platform/linux/glib/TimerQueue.h"

#include <algorithm>

#include "base/Fatal.h"

namespace thermopix {

TimerQueue::Id TimerQueue::add(Timer timer) {
    timer.id = Id{++lastId_};
    timers_.push_back(timer);
    return timer.id;
}

TimerQueue::Id TimerQueue::addOnce(Duration deadline) {
    return add({Id{}, deadline, deadline, Duration::zero(), Duration::zero()});
}

TimerQueue::Id TimerQueue::addRepeating(Duration now, Duration first, Duration period, Duration leeway) {
    require(period > Duration::zero(), "a repeating timer needs a period");
    require(leeway >= Duration::zero(), "a leeway is not negative");
    return add({Id{}, first, first <= now ? first : first + leeway, period, leeway});
}

void TimerQueue::remove(Id id) {
    std::erase_if(timers_, [id](const Timer& timer) { return timer.id == id; });
}

bool TimerQueue::contains(Id id) const {
    return std::any_of(timers_.begin(), timers_.end(), [id](const Timer& timer) { return timer.id == id; });
}

std::optional<TimerQueue::Duration> TimerQueue::nextWakeUp() const {
    const auto next = std::min_element(timers_.begin(), timers_.end(),
                                       [](const Timer& a, const Timer& b) { return a.latest < b.latest; });
    return next == timers_.end() ? std::nullopt : std::optional(next->latest);
}

std::optional<TimerQueue::Id> TimerQueue::takeDue(Duration now) {
    const auto next = std::min_element(timers_.begin(), timers_.end(),
                                       [](const Timer& a, const Timer& b) { return a.deadline < b.deadline; });
    if (next == timers_.end() || next->deadline > now) {
        return std::nullopt;
    }
    const Id id = next->id;
    if (next->period == Duration::zero()) {
        timers_.erase(next);
    } else {
        next->deadline += next->period * ((now - next->deadline) / next->period + 1);
        next->latest = next->deadline + next->leeway;
    }
    return id;
}

void TimerQueue::workEnded(Id id, Duration now) {
    const auto timer = std::find_if(timers_.begin(), timers_.end(), [id](const Timer& t) { return t.id == id; });
    if (timer != timers_.end() && timer->period != Duration::zero() && timer->deadline <= now) {
        timer->deadline = now + timer->period;
        timer->latest = timer->deadline + timer->leeway;
    }
}

}  // namespace thermopix
