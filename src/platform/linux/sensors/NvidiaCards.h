#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Subscription.h"
#include "platform/linux/sensors/NvidiaProcess.h"
#include "sensing/LateReading.h"
#include "sensing/RestartPauses.h"
#include "system/DiagnosticLog.h"
#include "system/MonotonicClock.h"

namespace thermopix {

/// NVIDIA cards, read by a process of their own, which runs only while a card is being read: a card drops out when it
/// is asleep, and all drop out when some other sensor has been read twice without any card having been read in between,
/// which means that a whole poll wanted none. A process that fails or does not answer is ended, and started again after
/// growing pauses. Main thread.
class NvidiaCards {
public:
    using Time = std::chrono::nanoseconds;
    struct Program {
        /// None when it is not installed.
        std::function<std::optional<std::filesystem::path>()> find;
        std::function<std::unique_ptr<NvidiaProcess>(const std::filesystem::path&)> start = NvidiaProcess::start;
        /// Calls as long as something can be read from a descriptor; none where nothing is awaited.
        std::function<Subscription(int descriptor, std::function<void()> readable)> watch{};
        /// Called when the process has something to say of a card that is awaited.
        std::function<void()> onLate{};
    };

    /// How long an answer is waited for where the reader can wait.
    static constexpr Time patienceInPlace = std::chrono::seconds(3);

    struct Card {
        std::string pciAddress;
        LateReading late;
        /// Whether it is among those that are being read.
        bool isWanted = false;
        /// Whether the last reading is missing only because its answer is still to come.
        bool isAwaited = false;
    };

    /// `clock` and `log` outlive the cards.
    NvidiaCards(Program program, const MonotonicClock& clock, DiagnosticLog& log);
    NvidiaCards(const NvidiaCards&) = delete;
    NvidiaCards& operator=(const NvidiaCards&) = delete;

    /// Whether cards can be read at all: for that there must be the library and the program. It is logged once that
    /// only the program is missing.
    [[nodiscard]] bool areReadable();

    /// The card at a PCI address; it drops out with the last owner of this handle, which does not outlive this object.
    /// What is known of it already is forgotten, but a question under way is not.
    [[nodiscard]] std::shared_ptr<Card> card(const std::string& pciAddress);

    /// The last answer while that is fresh, and the next one asked for; polls come at this interval. An answer is
    /// awaited only from a process that follows no failed one.
    [[nodiscard]] std::optional<double> read(Card& card, Time interval);

    /// The answer of now.
    [[nodiscard]] std::optional<double> readInPlace(Card& card);

    /// The card must not be touched any more.
    void drop(Card& card);

    /// Another sensor is being read; `lastSeen` is that sensor's own memory, zero at first.
    void noteOtherReading(std::uint64_t& lastSeen);

private:
    /// A question that is not answered yet.
    struct Asked {
        /// Null when the card has dropped out since.
        Card* card;
        std::uint32_t number;
        Time at;
    };

    [[nodiscard]] bool isRunning() const { return process_ && process_->socket() >= 0; }
    /// Lets go of a process that was ended, once it has left the system.
    void reap();
    /// Asks unless a question about the card is under way.
    void ask(Card& card);
    [[nodiscard]] bool start();
    /// Takes the answers that are there; a process that has given none for so long has failed.
    void attend(Time patience);
    void receive();
    void awaitAnswer();
    void fail(std::string_view reason);
    void logFailure(std::string_view reason);
    void forget(Card& card);
    void end();

    Program program_;
    const MonotonicClock& clock_;
    DiagnosticLog& log_;
    std::vector<std::weak_ptr<Card>> cards_;
    /// Running, or ended and not gone yet.
    std::unique_ptr<NvidiaProcess> process_;
    RestartPauses pauses_;
    std::vector<Asked> asked_;
    std::uint32_t lastNumber_ = 0;
    /// When the process has last answered.
    Time answeredAt_{};
    /// Why the process failed, until one answers.
    std::string failure_;
    bool hasMissedProgram_ = false;
    /// While an answer is awaited.
    Subscription watch_;
    /// Counts the readings of cards.
    std::uint64_t readings_ = 1;
};

}  // namespace thermopix
