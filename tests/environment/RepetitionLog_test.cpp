#include "environment/RepetitionLog.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "fakes/RecordingLog.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

class RepetitionLogTest : public testing::Test {
protected:
    RecordingLog written_;
    std::optional<RepetitionLog> log_{written_};
};

TEST_F(RepetitionLogTest, PassesDifferentMessagesOn) {
    log_->diag("desktop", "a");
    log_->diag("desktop", "b");
    log_->diag("sensor", "b");
    log_->diag("desktop", "b");
    log_.reset();
    EXPECT_EQ(written_.lines, (Lines{"desktop: a", "desktop: b", "sensor: b", "desktop: b"}));
}

TEST_F(RepetitionLogTest, WritesAMessageThatIsRepeatedOnceAndItsCountBeforeTheNext) {
    for (int i = 0; i < 1000; ++i) {
        log_->diag("desktop", "a");
    }
    EXPECT_EQ(written_.lines, Lines{"desktop: a"});
    log_->diag("desktop", "b");
    log_->diag("desktop", "a");
    EXPECT_EQ(written_.lines, (Lines{"desktop: a", "desktop: a (repeated: 999)", "desktop: b", "desktop: a"}));
}

TEST_F(RepetitionLogTest, WritesTheCountAtTheEnd) {
    log_->diag("desktop", "a");
    log_->diag("desktop", "a");
    log_.reset();
    EXPECT_EQ(written_.lines, (Lines{"desktop: a", "desktop: a (repeated: 1)"}));
}

TEST_F(RepetitionLogTest, CountsWhatThreadsWriteTogether) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            for (int j = 0; j < 1000; ++j) {
                log_->diag("desktop", "a");
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    log_.reset();
    EXPECT_EQ(written_.lines, (Lines{"desktop: a", "desktop: a (repeated: 3999)"}));
}

}  // namespace
}  // namespace thermopix
