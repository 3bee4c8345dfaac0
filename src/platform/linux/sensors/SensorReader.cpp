#include "platform/linux/sensors/SensorReader.h"

#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace thermopix {

class SensorReader::Request {
public:
    explicit Request(std::shared_ptr<SensorChannel> asked) : channel(std::move(asked)) {}

    std::shared_ptr<SensorChannel> channel;
    /// Guarded by the reader's mutex.
    std::optional<Answer> answer;
};

namespace {

/// Starts a thread that takes no signals, which are the main thread's; false where the system gives none.
template <typename Work>
bool startQuietly(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    bool hasStarted = true;
    try {
        std::thread(std::move(work)).detach();
    } catch (const std::system_error&) {
        hasStarted = false;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return hasStarted;
}

}  // namespace

/// What the reader shares with its threads, which outlive it while they are stuck.
struct SensorReader::State : std::enable_shared_from_this<State> {
    explicit State(const MonotonicClock& readersClock) : clock(readersClock) {}

    /// A thread more where requests wait and every thread is in a long read. Under the mutex.
    void attend() {
        const auto now = clock.now();
        const auto hasReadFor = [&](Duration time) {
            return [now, time](const Duration& since) { return now - since > time; };
        };
        const auto stuck = std::count_if(readingSince.begin(), readingSince.end(), hasReadFor(stuckAfter));
        if (queue.empty() || !std::all_of(readingSince.begin(), readingSince.end(), hasReadFor(longRead)) ||
            static_cast<std::ptrdiff_t>(readingSince.size()) - stuck >= mostThreads) {
            return;
        }
        const auto self = readingSince.insert(readingSince.end(), now);
        if (!startQuietly([state = shared_from_this(), self] { state->serve(self); })) {
            readingSince.erase(self);
        }
    }

    void serve(std::list<Duration>::iterator self) {
        std::unique_lock lock(mutex);
        while (!queue.empty()) {
            const auto request = std::move(queue.front());
            queue.pop_front();
            const auto began = clock.now();
            *self = began;
            lock.unlock();
            const auto celsius = request->channel->read();
            request->channel.reset();
            lock.lock();
            if (isOver) {
                return;
            }
            const auto ended = clock.now();
            request->answer = Answer{celsius, ended - began, ended};
            answered.notify_all();
            if (const auto call = std::exchange(heard, nullptr)) {
                call();
            }
        }
        readingSince.erase(self);
    }

    const MonotonicClock& clock;
    std::mutex mutex;
    std::condition_variable answered;
    std::function<void()> heard;
    std::deque<std::shared_ptr<Request>> queue;
    /// Of each thread, when its read began.
    std::list<Duration> readingSince;
    bool isOver = false;
};

SensorReader::SensorReader(const MonotonicClock& clock) : state_(std::make_shared<State>(clock)) {}

SensorReader::~SensorReader() {
    const std::lock_guard lock(state_->mutex);
    state_->isOver = true;
    state_->queue.clear();
}

std::shared_ptr<SensorReader::Request> SensorReader::ask(std::shared_ptr<SensorChannel> channel) {
    auto request = std::make_shared<Request>(std::move(channel));
    const std::lock_guard lock(state_->mutex);
    state_->queue.push_back(request);
    state_->attend();
    return request;
}

std::optional<SensorReader::Answer> SensorReader::collect(const Request& request, Duration patience) {
    std::unique_lock lock(state_->mutex);
    if (!state_->answered.wait_for(lock, patience, [&] { return request.answer.has_value(); })) {
        state_->attend();
    }
    return request.answer;
}

void SensorReader::notify(const Request& request, std::function<void()> heard) {
    const std::lock_guard lock(state_->mutex);
    if (request.answer) {
        heard();
    } else {
        state_->heard = std::move(heard);
    }
}

}  // namespace thermopix
