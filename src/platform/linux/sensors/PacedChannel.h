#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SensorPolling.h"
#include "sensing/LateReading.h"
#include "sensing/ReadPace.h"

namespace thermopix {

/// A channel that is read in place while it answers at once, and beside the polls while it does not; then a reading is
/// the last one, for as long as that is fresh. Main thread.
class PacedChannel final : public SensorChannel {
public:
    /// `polling` outlives the channel; `pace` is what is known of the sensor already.
    PacedChannel(std::shared_ptr<SensorChannel> channel, SensorPolling& polling, ReadPace pace = {});

    /// Degrees Celsius; none when the sensor fails or sleeps, and while its answer is awaited.
    [[nodiscard]] std::optional<double> read() override;

    [[nodiscard]] bool isAwaited() const override { return isAwaited_; }

    /// Whether the sensor is being read beside the polls now.
    [[nodiscard]] bool isUnderWay() const { return request_ != nullptr; }

    [[nodiscard]] ReadPace pace() const { return pace_; }

private:
    [[nodiscard]] std::optional<double> readUnhindered();
    [[nodiscard]] std::optional<double> readInPlace();
    void ask();
    void collect(SensorPolling::Duration patience);

    std::shared_ptr<SensorChannel> channel_;
    SensorPolling& polling_;
    ReadPace pace_;
    LateReading late_;
    std::shared_ptr<SensorReader::Request> request_;
    bool isAwaited_ = false;
};

/// Opens the files of one listing of sensors after another as paced channels. Main thread.
class PacedChannels {
public:
    /// Both outlive the channels.
    PacedChannels(FileAccess& access, SensorPolling& polling) : access_(access), polling_(polling) {}

    /// The channel as it was before while it is being read, else opened anew at the pace that it had; null when it
    /// cannot be opened.
    [[nodiscard]] std::shared_ptr<PacedChannel> open(const SensorDevice& device, const SensorDevice::Channel& channel);

    /// Gives up what is known of channels that nobody holds.
    void forgetClosed();

private:
    FileAccess& access_;
    SensorPolling& polling_;
    /// By the file that they read.
    std::map<std::filesystem::path, std::weak_ptr<PacedChannel>> channels_;
};

}  // namespace thermopix
