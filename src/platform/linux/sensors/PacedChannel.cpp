#include "platform/linux/sensors/PacedChannel.h"

#include <utility>

namespace thermopix {

PacedChannel::PacedChannel(std::shared_ptr<SensorChannel> channel, SensorPolling& polling, ReadPace pace)
    : channel_(std::move(channel)), polling_(polling), pace_(pace) {}

std::optional<double> PacedChannel::read() {
    if (polling_.reader() == nullptr) {
        return channel_->read();
    }
    const auto celsius = readUnhindered();
    if (!celsius && !request_ && channel_->isGone()) {
        polling_.noteGone();
    }
    return celsius;
}

std::optional<double> PacedChannel::readUnhindered() {
    if (request_) {
        collect(SensorPolling::Duration::zero());
    }
    if (!request_ && pace_.answers() == ReadPace::Answers::atOnce) {
        return readInPlace();
    }
    if (!request_) {
        ask();
    }
    const auto now = polling_.now();
    isAwaited_ = late_.isAwaited(now, polling_.interval());
    if (isAwaited_) {
        polling_.awaitAnswer(*request_);
    }
    return late_.celsius(now, polling_.interval());
}

std::optional<double> PacedChannel::readInPlace() {
    isAwaited_ = false;
    const auto began = polling_.now();
    const auto celsius = channel_->read();
    pace_.record(polling_.now() - began);
    return celsius;
}

void PacedChannel::ask() {
    const auto began = polling_.now();
    late_.ask(began);
    request_ = polling_.reader()->ask(channel_);
    if (pace_.answers() == ReadPace::Answers::untried && polling_.patience() > SensorPolling::Duration::zero()) {
        collect(polling_.patience());
        polling_.spendPatience(polling_.now() - began);
    }
}

void PacedChannel::collect(SensorPolling::Duration patience) {
    if (const auto answer = polling_.reader()->collect(*request_, patience)) {
        pace_.record(answer->took);
        late_.answer(answer->at, answer->celsius);
        request_.reset();
    }
}

std::shared_ptr<PacedChannel> PacedChannels::open(const SensorDevice& device, const SensorDevice::Channel& channel) {
    auto& entry = channels_[channel.input];
    auto known = entry.lock();
    if (known && known->isUnderWay()) {
        return known;
    }
    auto file = std::make_shared<SysfsChannel>(access_, device, channel);
    if (!file->isOpen()) {
        return nullptr;
    }
    auto paced = std::make_shared<PacedChannel>(std::move(file), polling_, known ? known->pace() : ReadPace());
    entry = paced;
    return paced;
}

void PacedChannels::forgetClosed() {
    std::erase_if(channels_, [](const auto& entry) { return entry.second.expired(); });
}

}  // namespace thermopix
