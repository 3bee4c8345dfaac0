#pragma once

#include <chrono>

namespace thermopix {

/// How promptly a sensor answers, judged by how long its reads took. It is slow when the first read was, or two of any
/// three in a row; it is quick again after ten quick reads.
class ReadPace {
public:
    using Duration = std::chrono::nanoseconds;
    enum class Answers { untried, atOnce, slowly };

    /// The longest read that counts as quick.
    static constexpr Duration quickest = std::chrono::milliseconds(20);
    static constexpr int quickReadsToRecover = 10;

    void record(Duration took) {
        const bool isSlow = took > quickest;
        recent_ = (recent_ << 1U | (isSlow ? 1U : 0U)) & 7U;
        switch (answers_) {
            case Answers::untried:
                answers_ = isSlow ? Answers::slowly : Answers::atOnce;
                break;
            case Answers::atOnce:
                if (isSlow && recent_ != 1U) {
                    answers_ = Answers::slowly;
                    quickInARow_ = 0;
                }
                break;
            case Answers::slowly:
                quickInARow_ = isSlow ? 0 : quickInARow_ + 1;
                if (quickInARow_ == quickReadsToRecover) {
                    answers_ = Answers::atOnce;
                }
                break;
        }
    }

    [[nodiscard]] Answers answers() const { return answers_; }

private:
    Answers answers_ = Answers::untried;
    /// The last three reads, the newest in the lowest bit; set for a slow one.
    unsigned recent_ = 0;
    int quickInARow_ = 0;
};

}  // namespace thermopix
