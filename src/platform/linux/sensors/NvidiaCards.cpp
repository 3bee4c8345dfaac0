#include "platform/linux/sensors/NvidiaCards.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/linux/nvidia/NvidiaProtocol.h"
#include "platform/linux/sensors/LibrarySearch.h"

namespace thermopix {

namespace {

using NvidiaProtocol::Answer;
using NvidiaProtocol::Outcome;
using NvidiaProtocol::Question;

}  // namespace

NvidiaCards::NvidiaCards(Program program, const MonotonicClock& clock, DiagnosticLog& log)
    : program_(std::move(program)), clock_(clock), log_(log) {}

bool NvidiaCards::areReadable() {
    if (!isLoadable(NvidiaProtocol::library)) {
        return false;
    }
    const bool isInstalled = program_.find().has_value();
    if (!isInstalled && !std::exchange(hasMissedProgram_, true)) {
        logFailure("is not installed");
    }
    return isInstalled;
}

std::shared_ptr<NvidiaCards::Card> NvidiaCards::card(const std::string& pciAddress) {
    std::erase_if(cards_, [](const auto& card) { return card.expired(); });
    for (const auto& known : cards_) {
        if (auto card = known.lock(); card->pciAddress == pciAddress) {
            if (!card->late.isUnderWay()) {
                card->late = {};
            }
            return card;
        }
    }
    std::shared_ptr<Card> card(new Card{.pciAddress = pciAddress, .late = {}}, [this](Card* dropped) {
        drop(*dropped);
        delete dropped;
    });
    cards_.push_back(card);
    return card;
}

std::optional<double> NvidiaCards::read(Card& card, Time interval) {
    ++readings_;
    attend(LateReading::longestWait);
    card.isWanted = true;
    ask(card);
    const auto now = clock_.now();
    card.isAwaited = failure_.empty() && card.late.isAwaited(now, interval);
    if (card.isAwaited) {
        awaitAnswer();
    }
    return card.late.celsius(now, interval);
}

std::optional<double> NvidiaCards::readInPlace(Card& card) {
    ++readings_;
    card.isWanted = true;
    card.late = {};
    ask(card);
    while (card.late.isUnderWay()) {
        pollfd socket{.fd = process_->socket(), .events = POLLIN, .revents = 0};
        const auto left = std::max(patienceInPlace - (clock_.now() - asked_.front().at), Time::zero());
        ::poll(&socket, 1, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count()));
        attend(patienceInPlace);
    }
    return card.late.celsius(clock_.now(), patienceInPlace);
}

void NvidiaCards::drop(Card& card) {
    reap();
    forget(card);
    const bool isAnyWanted = std::any_of(cards_.begin(), cards_.end(), [](const auto& other) {
        const auto held = other.lock();
        return held && held->isWanted;
    });
    if (!isAnyWanted) {
        end();
    }
}

void NvidiaCards::noteOtherReading(std::uint64_t& lastSeen) {
    reap();
    if (lastSeen == readings_ && isRunning()) {
        end();
    }
    lastSeen = readings_;
}

void NvidiaCards::reap() {
    if (process_ && !isRunning() && process_->isGone()) {
        process_.reset();
    }
}

void NvidiaCards::ask(Card& card) {
    if (card.late.isUnderWay() || (!isRunning() && !start())) {
        return;
    }
    Question question{.number = ++lastNumber_};
    card.pciAddress.copy(question.pciAddress.data(), question.pciAddress.size() - 1);
    const auto now = clock_.now();
    card.late.ask(now);
    asked_.push_back({&card, question.number, now});
    if (::send(process_->socket(), &question, sizeof question, MSG_DONTWAIT | MSG_NOSIGNAL) < 0) {
        fail("has ended");
    }
}

bool NvidiaCards::start() {
    reap();
    const auto now = clock_.now();
    if (process_ || !pauses_.allowStart(now)) {
        return false;
    }
    pauses_.started(now);
    const auto program = program_.find();
    process_ = program ? program_.start(*program) : nullptr;
    if (!process_) {
        fail("cannot be started");
    }
    return process_ != nullptr;
}

void NvidiaCards::attend(Time patience) {
    if (!isRunning()) {
        return;
    }
    receive();
    if (isRunning() && !asked_.empty() && clock_.now() - std::max(asked_.front().at, answeredAt_) >= patience) {
        fail("does not answer");
    }
}

void NvidiaCards::receive() {
    Answer answer;
    ssize_t count = 0;
    while ((count = ::recv(process_->socket(), &answer, sizeof answer, MSG_DONTWAIT | MSG_TRUNC)) > 0) {
        if (count != ssize_t{sizeof answer} || asked_.empty() || answer.number != asked_.front().number) {
            fail("sent what is no answer");
            return;
        }
        if (answer.outcome == Outcome::libraryMissing || answer.outcome == Outcome::libraryFails) {
            fail(answer.outcome == Outcome::libraryMissing ? "finds no library" : "cannot initialise the library");
            return;
        }
        const auto asked = asked_.front();
        asked_.erase(asked_.begin());
        failure_.clear();
        answeredAt_ = clock_.now();
        if (asked.card != nullptr) {
            asked.card->late.answer(
                std::clamp(Time(answer.nanoseconds), asked.at, answeredAt_),
                answer.outcome == Outcome::read ? std::optional(static_cast<double>(answer.celsius)) : std::nullopt);
        }
    }
    if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        fail("has ended");
    }
}

void NvidiaCards::awaitAnswer() {
    if (program_.watch && !watch_.isActive()) {
        watch_ = program_.watch(process_->socket(), [this] {
            watch_.cancel();
            program_.onLate();
        });
    }
}

void NvidiaCards::fail(std::string_view reason) {
    pauses_.failed(clock_.now());
    end();
    if (failure_ != reason) {
        failure_ = reason;
        logFailure(reason);
    }
}

void NvidiaCards::logFailure(std::string_view reason) {
    log_.diag("sensor", fmt::format("{} {}: NVIDIA cards are not read", NvidiaProtocol::executable, reason));
}

void NvidiaCards::forget(Card& card) {
    card.isWanted = false;
    card.isAwaited = false;
    card.late = {};
    for (auto& asked : asked_) {
        if (asked.card == &card) {
            asked.card = nullptr;
        }
    }
}

void NvidiaCards::end() {
    for (const auto& known : cards_) {
        if (const auto card = known.lock()) {
            forget(*card);
        }
    }
    asked_.clear();
    watch_.cancel();
    if (isRunning()) {
        process_->end();
    }
}

}  // namespace thermopix
