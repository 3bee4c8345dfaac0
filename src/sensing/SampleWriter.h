#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sensing/SensorSample.h"

namespace thermopix {

/// Overwrites a list of samples in place, so that the list and its texts keep their memory from reading to reading.
/// What was not overwritten is gone when the writer is destroyed.
class SampleWriter {
public:
    explicit SampleWriter(std::vector<SensorSample>& samples) : samples_(samples) {}
    SampleWriter(const SampleWriter&) = delete;
    SampleWriter& operator=(const SampleWriter&) = delete;
    ~SampleWriter() { samples_.erase(samples_.begin() + static_cast<std::ptrdiff_t>(count_), samples_.end()); }

    void append(std::string_view name, double celsius) {
        if (count_ == samples_.size()) {
            samples_.emplace_back();
        }
        samples_[count_].name = name;
        samples_[count_].celsius = celsius;
        ++count_;
    }

private:
    std::vector<SensorSample>& samples_;
    std::size_t count_ = 0;
};

}  // namespace thermopix
