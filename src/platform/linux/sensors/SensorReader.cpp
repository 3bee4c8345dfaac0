#include "platform/linux/sensors/SensorReader.h"

#include <pthread.h>

#include <condition_variable>
#include <csignal>
#include <deque>
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

/// What the reader shares with its threads, which outlive it while they are stuck.
struct SensorReader::State {
    /// A thread that serves the queue. One that is stuck is replaced, and serves no more.
    using Server = unsigned;

    explicit State(const MonotonicClock& readersClock) : clock(readersClock) {}

    void serve(Server self) {
        std::unique_lock lock(mutex);
        while (self == server && !queue.empty()) {
            const auto request = std::move(queue.front());
            queue.pop_front();
            const auto began = clock.now();
            readingSince = began;
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
        if (self == server) {
            isServed = false;
        }
    }

    const MonotonicClock& clock;
    std::mutex mutex;
    std::condition_variable answered;
    std::function<void()> heard;
    std::deque<std::shared_ptr<Request>> queue;
    Server server = 0;
    bool isServed = false;
    bool isOver = false;
    Duration readingSince{};
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
    const auto now = state_->clock.now();
    if (!state_->isServed || now - state_->readingSince > stuckAfter) {
        state_->readingSince = now;
        state_->isServed = startQuietly([state = state_, self = ++state_->server] { state->serve(self); });
    }
    return request;
}

std::optional<SensorReader::Answer> SensorReader::collect(const Request& request, Duration patience) {
    std::unique_lock lock(state_->mutex);
    state_->answered.wait_for(lock, patience, [&] { return request.answer.has_value(); });
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
