#include "platform/linux/glib/GLibMainLoop.h"

#include <unordered_map>
#include <utility>

#include "platform/linux/glib/TimerQueue.h"

namespace thermopix {

namespace {

MainLoop::Duration monotonicNow() {
    return std::chrono::microseconds(g_get_monotonic_time());
}

}  // namespace

/// What waits to be run, and the source that runs it. Subscriptions may outlive it.
struct GLibMainLoop::Schedule : std::enable_shared_from_this<Schedule> {
    Schedule() : source(g_source_new(&functions, sizeof(Source))) {
        reinterpret_cast<Source*>(source.get())->schedule = this;
        g_source_set_static_name(source.get(), "thermopix timers");
        // The bus is served before the timers, however many of them are due.
        g_source_set_priority(source.get(), G_PRIORITY_DEFAULT + 1);
        g_source_attach(source.get(), nullptr);
    }

    Subscription start(TimerQueue::Id id, Work work) {
        works.emplace(id, std::make_shared<const Work>(std::move(work)));
        arm();
        return Subscription([weak = weak_from_this(), id] {
            if (const auto schedule = weak.lock()) {
                schedule->end(id);
            }
        });
    }

    void end(TimerQueue::Id id) {
        timers.remove(id);
        const auto ended = works.extract(id);
        arm();
    }

    /// One turn: the timers that are due when it begins.
    void serve() {
        const auto now = monotonicNow();
        while (const auto id = timers.takeDue(now)) {
            const auto work = works.at(*id);
            if (!timers.contains(*id)) {
                works.erase(*id);
            }
            (*work)();
            timers.workEnded(*id, monotonicNow());
        }
        arm();
    }

    void arm() {
        const auto wakeUp = timers.nextWakeUp();
        g_source_set_ready_time(source.get(),
                                wakeUp ? std::chrono::ceil<std::chrono::microseconds>(*wakeUp).count() : -1);
    }

    struct Source {
        GSource base;
        Schedule* schedule;
    };

    static gboolean dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) noexcept {
        const auto held = reinterpret_cast<Source*>(source)->schedule->shared_from_this();
        held->serve();
        return G_SOURCE_CONTINUE;
    }

    static inline GSourceFuncs functions{nullptr, nullptr, &dispatch, nullptr, nullptr, nullptr};

    TimerQueue timers;
    std::unordered_map<TimerQueue::Id, std::shared_ptr<const Work>> works;
    GSourceHandle source;
};

GLibMainLoop::GLibMainLoop() : schedule_(std::make_shared<Schedule>()), loop_(g_main_loop_new(nullptr, FALSE)) {}

GLibMainLoop::~GLibMainLoop() = default;

Subscription GLibMainLoop::oneShot(Duration delay, Work work) {
    return schedule_->start(schedule_->timers.addOnce(now() + delay), std::move(work));
}

Subscription GLibMainLoop::repeating(Duration first, Duration period, Duration leeway, Work work) {
    const auto start = now();
    return schedule_->start(schedule_->timers.addRepeating(start, start + first, period, leeway), std::move(work));
}

MainLoop::Duration GLibMainLoop::now() const {
    return monotonicNow();
}

void GLibMainLoop::run() {
    if (!std::exchange(quitBeforeRun_, false)) {
        g_main_loop_run(loop_.get());
    }
}

void GLibMainLoop::quit() {
    if (g_main_loop_is_running(loop_.get()) == FALSE) {
        quitBeforeRun_ = true;
        return;
    }
    g_main_loop_quit(loop_.get());
}

}  // namespace thermopix
