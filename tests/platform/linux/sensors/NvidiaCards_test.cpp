#include "platform/linux/sensors/NvidiaCards.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <span>

#include "platform/linux/nvidia/NvidiaProtocol.h"
#include "platform/linux/sensors/NvidiaStage.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using NvidiaProtocol::Answer;
using NvidiaProtocol::Outcome;
using NvidiaProtocol::Question;

constexpr auto nothing = std::nullopt;

/// Cards whose process the test plays.
class NvidiaCardsTest : public testing::Test {
protected:
    std::unique_ptr<NvidiaProcess> start() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
        process = Descriptor(ends[1]);
        ++starts;
        return std::make_unique<NvidiaProcess>(Descriptor(ends[0]));
    }

    /// What the process is asked; none when nothing is left or its input has ended.
    std::optional<Question> takeQuestion() {
        Question question;
        const auto count = ::recv(process.get(), &question, sizeof question, MSG_DONTWAIT);
        return count == ssize_t{sizeof question} ? std::optional(question) : std::nullopt;
    }

    [[nodiscard]] bool isEnded() const {
        char byte = 0;
        return ::recv(process.get(), &byte, 1, MSG_DONTWAIT | MSG_PEEK) == 0 || errno == ECONNRESET;
    }

    void say(const Answer& answer) const { ::send(process.get(), &answer, sizeof answer, MSG_NOSIGNAL); }

    /// Answers the next question.
    void answer(std::int64_t celsius, Outcome outcome = Outcome::read) {
        const auto question = takeQuestion();
        ASSERT_TRUE(question.has_value());
        say({question->number, outcome, clock.time.count(), celsius});
    }

    void becomeReadable() {
        const auto handler = readable;
        handler();
    }

    std::optional<double> read() { return cards.read(*card, interval); }

    static constexpr auto interval = 2s;
    SetClock clock;
    RecordingLog log;
    Descriptor process{-1};
    int starts = 0;
    std::function<void()> readable;
    int late = 0;
    NvidiaCards cards{{.find = [] { return std::filesystem::path("played"); },
                       .start = [this](const auto&) { return start(); },
                       .watch =
                           [this](int, std::function<void()> handler) {
                               readable = std::move(handler);
                               return Subscription([this] { readable = nullptr; });
                           },
                       .onLate = [this] { ++late; }},
                      clock,
                      log};
    std::shared_ptr<NvidiaCards::Card> card = cards.card("0000:01:00.0");
};

TEST_F(NvidiaCardsTest, APollAsksAndTheNextOneHasTheAnswer) {
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(read(), nothing);
    EXPECT_TRUE(card->isAwaited);
    const auto question = takeQuestion();
    ASSERT_TRUE(question.has_value());
    EXPECT_STREQ(question->pciAddress.data(), "0000:01:00.0");
    EXPECT_EQ(read(), nothing);
    EXPECT_EQ(takeQuestion(), nothing) << "one question at a time";
    say({question->number, Outcome::read, clock.time.count(), 48});
    EXPECT_EQ(read(), 48.0);
    EXPECT_FALSE(card->isAwaited);
    answer(49);
    clock.time += interval;
    EXPECT_EQ(read(), 49.0);
    EXPECT_EQ(starts, 1);
}

TEST_F(NvidiaCardsTest, AnAnswerCountsFromWhenTheCardGaveItForThreeIntervals) {
    EXPECT_EQ(read(), nothing);
    answer(48);
    clock.time += interval;
    EXPECT_EQ(read(), 48.0);
    clock.time += 2 * interval;
    EXPECT_EQ(read(), 48.0);
    clock.time += 1ms;
    EXPECT_EQ(read(), nothing);
    EXPECT_TRUE(card->isAwaited) << "it has lapsed while the next is under way";
}

TEST_F(NvidiaCardsTest, ItIsToldOnceThatAnAwaitedAnswerHasCome) {
    EXPECT_EQ(read(), nothing);
    ASSERT_TRUE(readable);
    becomeReadable();
    EXPECT_EQ(late, 1);
    EXPECT_FALSE(readable);
    EXPECT_EQ(read(), nothing);
    EXPECT_TRUE(readable) << "that was another card's";
    answer(48);
    becomeReadable();
    EXPECT_EQ(read(), 48.0);
    EXPECT_FALSE(readable) << "nothing is awaited any more";
    clock.time += 4 * interval;
    EXPECT_EQ(read(), nothing);
    EXPECT_TRUE(readable);
    cards.drop(*card);
    EXPECT_FALSE(readable);
}

TEST_F(NvidiaCardsTest, ACardWithoutATemperatureIsNotAwaited) {
    EXPECT_EQ(read(), nothing);
    answer(0, Outcome::notRead);
    EXPECT_EQ(read(), nothing);
    EXPECT_FALSE(card->isAwaited);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(NvidiaCardsTest, AProcessThatDoesNotAnswerIsEndedAndTriedAgainAfterGrowingPauses) {
    NvidiaCards::Time pause = RestartPauses::shortest;
    for (int attempt = 1; attempt <= 4; ++attempt) {
        EXPECT_EQ(read(), nothing);
        EXPECT_EQ(starts, attempt);
        EXPECT_EQ(card->isAwaited, attempt == 1);
        clock.time += LateReading::longestWait - 1ms;
        EXPECT_EQ(read(), nothing);
        EXPECT_TRUE(takeQuestion().has_value());
        EXPECT_FALSE(isEnded());
        clock.time += 1ms;
        EXPECT_EQ(read(), nothing);
        EXPECT_FALSE(card->isAwaited);
        EXPECT_TRUE(isEnded());
        clock.time += pause - 1ms;
        EXPECT_EQ(read(), nothing);
        EXPECT_EQ(starts, attempt);
        clock.time += 1ms;
        pause *= 2;
    }
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors does not answer: NVIDIA cards are not read"});
}

TEST_F(NvidiaCardsTest, ALateAnswerIsTakenWhileTheProcessIsTrusted) {
    EXPECT_EQ(read(), nothing);
    clock.time += LateReading::longestWait - 1ms;
    answer(48);
    EXPECT_EQ(read(), 48.0);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(NvidiaCardsTest, WhatIsNoAnswerEndsTheProcess) {
    const auto failsAfter = [&](const std::function<void(const Question&)>& speak) {
        clock.time += RestartPauses::longest;
        EXPECT_EQ(read(), nothing);
        const auto question = takeQuestion();
        speak(question.value());
        EXPECT_EQ(read(), nothing);
        return isEnded() && log.lines.back().find("no answer") != std::string::npos;
    };
    EXPECT_TRUE(failsAfter([&](const auto&) { ::send(process.get(), "55", 2, 0); }));
    EXPECT_TRUE(failsAfter([&](const auto&) {
        const std::array<char, 100> tooMuch{};
        ::send(process.get(), tooMuch.data(), tooMuch.size(), 0);
    }));
    EXPECT_TRUE(failsAfter([&](const auto& question) { say({question.number + 1, Outcome::read, 0, 55}); }));
    EXPECT_TRUE(failsAfter([&](const auto& question) {
        say({question.number, Outcome::read, 0, 55});
        say({question.number, Outcome::read, 0, 55});
    }));
}

TEST_F(NvidiaCardsTest, AFailureIsLoggedAgainOnlyAfterAnAnswer) {
    const auto crash = [&] {
        clock.time += RestartPauses::longest;
        EXPECT_EQ(read(), nothing);
        process = Descriptor(-1);
        EXPECT_EQ(read(), nothing);
    };
    crash();
    crash();
    EXPECT_EQ(log.lines, Lines{"sensor: thermopix-nvidia-sensors has ended: NVIDIA cards are not read"});
    clock.time += RestartPauses::longest;
    EXPECT_EQ(read(), nothing);
    answer(50);
    EXPECT_EQ(read(), 50.0);
    process = Descriptor(-1);
    EXPECT_EQ(read(), nothing) << "what it said before is not shown for it";
    EXPECT_EQ(log.lines.size(), 2U);
}

TEST_F(NvidiaCardsTest, TheTimeThatAnAnswerClaimsIsHeldBetweenItsQuestionAndNow) {
    for (const auto claimed : {std::chrono::nanoseconds::min(), std::chrono::nanoseconds::max()}) {
        const auto asked = clock.time;
        EXPECT_EQ(read(), nothing);
        say({takeQuestion().value().number, Outcome::read, claimed.count(), 48});
        EXPECT_EQ(read(), 48.0);
        clock.time = asked + 3 * interval;
        EXPECT_EQ(read(), 48.0);
        clock.time += 1ms;
        EXPECT_EQ(read(), nothing);
        answer(0, Outcome::notRead);
        EXPECT_EQ(read(), nothing);
        answer(0, Outcome::notRead);
        cards.drop(*card);
    }
}

TEST_F(NvidiaCardsTest, EachOfTwoCardsGetsItsOwnAnswerAndThePausesOfOneAreTheOthers) {
    const auto other = cards.card("0000:02:00.0");
    EXPECT_EQ(read(), nothing);
    EXPECT_EQ(cards.read(*other, interval), nothing);
    answer(48);
    answer(60);
    EXPECT_EQ(read(), 48.0);
    EXPECT_EQ(cards.read(*other, interval), 60.0);
    EXPECT_EQ(starts, 1);
    cards.drop(*card);
    EXPECT_FALSE(isEnded());
    cards.drop(*other);
    while (takeQuestion()) {
    }
    EXPECT_TRUE(isEnded());
}

TEST_F(NvidiaCardsTest, AnAnswerAboutACardThatHasDroppedOutIsNotShownLater) {
    const auto other = cards.card("0000:02:00.0");
    EXPECT_EQ(read(), nothing);
    EXPECT_EQ(cards.read(*other, interval), nothing);
    cards.drop(*card);
    answer(48);
    answer(60);
    EXPECT_EQ(read(), nothing);
    EXPECT_TRUE(card->isAwaited);
    answer(49);
    EXPECT_EQ(read(), 49.0);
}

TEST_F(NvidiaCardsTest, DiscoveringTheCardsAnewForgetsTheirReadingsAndKeepsTheirQuestions) {
    EXPECT_EQ(read(), nothing);
    answer(48);
    EXPECT_EQ(read(), 48.0);
    clock.time += 1s;
    auto again = cards.card("0000:01:00.0");
    EXPECT_EQ(again, card);
    EXPECT_EQ(read(), 48.0) << "a question is under way";
    answer(50);
    EXPECT_EQ(read(), 50.0);
    answer(0, Outcome::notRead);
    cards.drop(*card);
    again = cards.card("0000:01:00.0");
    EXPECT_EQ(read(), nothing);
    EXPECT_EQ(starts, 2);
}

TEST_F(NvidiaCardsTest, AReadInPlaceIsNeverOfBefore) {
    EXPECT_EQ(read(), nothing);
    answer(48);
    EXPECT_EQ(read(), 48.0);
    answer(50);
    EXPECT_EQ(read(), 50.0);
    process = Descriptor(-1);
    EXPECT_EQ(cards.readInPlace(*card), nothing);
}

}  // namespace
}  // namespace thermopix
