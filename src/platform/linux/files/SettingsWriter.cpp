#include "platform/linux/files/SettingsWriter.h"

#include <fmt/core.h>
#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <utility>
#include <vector>

namespace thermopix {

namespace {

struct Order {
    std::string path;
    std::string bytes;
    FormerFile former;
    /// To be tried, for the first time or again.
    bool isDue = true;
};

struct Outcome {
    std::string path;
    ReplacedSettings result;
};

/// The thread takes over the mask of the one that makes it: signals are the main thread's.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &former_);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t former_{};
};

}  // namespace

/// What both threads see. The writing one keeps it alive, should it outlast the writer.
struct SettingsWriter::Shared {
    FileOperations operations;
    SoundnessTest isSound;
    std::function<void()> raise;

    std::mutex mutex;
    /// Told of every change of what follows.
    std::condition_variable changed;
    /// Not stored yet.
    std::vector<Order> orders;
    /// Not heard yet.
    std::vector<Outcome> outcomes;
    bool isEnding = false;
    bool isOver = false;

    void add(Order order) {
        std::erase_if(orders, [&](const Order& earlier) {
            const bool isOfThisFile = earlier.path == order.path;
            if (isOfThisFile && earlier.former == FormerFile::keptBeside) {
                order.former = earlier.former;
            }
            return isOfThisFile;
        });
        orders.push_back(std::move(order));
        changed.notify_all();
    }

    void makeAllDue() {
        for (auto& order : orders) {
            order.isDue = true;
        }
        changed.notify_all();
    }

    [[nodiscard]] std::vector<Order>::iterator nextDue() {
        return std::find_if(orders.begin(), orders.end(), [](const Order& order) { return order.isDue; });
    }

    /// The thread's life: tries what is due, until the end has come and nothing is.
    void run() {
        std::unique_lock hold(mutex);
        for (;;) {
            changed.wait(hold, [this] { return isEnding || nextDue() != orders.end(); });
            const auto next = nextDue();
            if (next == orders.end()) {
                break;
            }
            next->isDue = false;
            const Order order = *next;
            hold.unlock();
            auto result = store(order);
            hold.lock();
            settle(order, std::move(result));
        }
        isOver = true;
        changed.notify_all();
    }

    [[nodiscard]] ReplacedSettings store(const Order& order) const {
        const auto stored = readSettingsFile(order.path);
        if (stored.bytes == order.bytes) {
            return {};
        }
        const bool isLost = stored.error || (stored.bytes && !isSound(nameOf(order.path), *stored.bytes));
        return replaceSettingsFile(order.path, order.bytes, isLost ? FormerFile::keptBeside : order.former, operations);
    }

    void settle(const Order& order, ReplacedSettings result) {
        if (!result.error) {
            // A newer order may have come meanwhile.
            std::erase_if(orders, [&](const Order& waiting) {
                return waiting.path == order.path && waiting.bytes == order.bytes;
            });
            for (auto& waiting : orders) {
                if (waiting.path == order.path) {
                    waiting.former = FormerFile::replaced;
                }
            }
        }
        outcomes.push_back({order.path, std::move(result)});
        if (!isEnding) {
            raise();
        }
    }

    [[nodiscard]] static std::string_view nameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }
};

SettingsWriter::SettingsWriter(Services services, FileOperations operations)
    : services_(std::move(services)), shared_(std::make_shared<Shared>()) {
    shared_->operations = std::move(operations);
    shared_->isSound = services_.isSound;
}

SettingsWriter::~SettingsWriter() {
    retry_.cancel();
    wakeUp_.cancel();
    if (!thread_.joinable()) {
        return;
    }
    std::unique_lock hold(shared_->mutex);
    shared_->isEnding = true;
    shared_->makeAllDue();
    const bool isOver = shared_->changed.wait_for(hold, services_.endPatience, [this] { return shared_->isOver; });
    const auto orders = shared_->orders;
    hold.unlock();
    report();
    if (isOver) {
        thread_.join();
        return;
    }
    thread_.detach();
    for (const auto& order : orders) {
        complain("save", order.path, "the disk does not answer");
    }
}

void SettingsWriter::write(const std::string& path, std::string_view bytes, FormerFile former) {
    {
        const std::lock_guard hold(shared_->mutex);
        shared_->add({path, std::string(bytes), former});
    }
    if (!thread_.joinable()) {
        start();
    }
}

bool SettingsWriter::isSound(std::string_view name, std::string_view bytes) const {
    return services_.isSound(name, bytes);
}

void SettingsWriter::complain(std::string_view action, const std::string& path, std::string_view cause) {
    auto complaint = fmt::format("cannot {} {}: {}", action, path, cause);
    if (!complaints_.contains(complaint)) {
        services_.log.diag("settings", complaint);
        complaints_.insert(std::move(complaint));
    }
}

void SettingsWriter::start() {
    auto wakeUp = services_.makeWakeUp([this] { hear(); });
    shared_->raise = std::move(wakeUp.raise);
    wakeUp_ = std::move(wakeUp.registration);
    const BlockedSignals blocked;
    try {
        thread_ = std::thread([shared = shared_] { shared->run(); });
    } catch (const std::system_error& error) {
        complain("start", "the writer of settings", error.code().message());
        tellAndRetry(error.code());
    }
}

void SettingsWriter::hear() {
    const auto error = report();
    bool isAllStored = false;
    {
        const std::lock_guard hold(shared_->mutex);
        isAllStored = shared_->orders.empty();
    }
    if (isAllStored) {
        isTroubleTold_ = false;
        complaints_.clear();
        retry_.cancel();
    } else if (error) {
        tellAndRetry(error);
    }
}

void SettingsWriter::tellAndRetry(const std::error_code& cause) {
    if (!std::exchange(isTroubleTold_, true)) {
        services_.onTrouble(cause.message());
    }
    if (!retry_.isActive()) {
        retry_ = services_.mainLoop().oneShot(StorageLimits::retryPause, [this] { retry(); });
    }
}

void SettingsWriter::retry() {
    retry_.cancel();
    {
        const std::lock_guard hold(shared_->mutex);
        shared_->makeAllDue();
    }
    if (!thread_.joinable()) {
        start();
    }
}

std::error_code SettingsWriter::report() {
    std::vector<Outcome> outcomes;
    {
        const std::lock_guard hold(shared_->mutex);
        outcomes.swap(shared_->outcomes);
    }
    std::error_code last;
    for (const auto& [path, result] : outcomes) {
        if (!result.kept.empty()) {
            services_.log.diag("settings", fmt::format("kept {}, which could not be read, as {}", path, result.kept));
        }
        if (result.error) {
            complain("save", path, result.error.message());
            last = result.error;
        }
    }
    return last;
}

}  // namespace thermopix
