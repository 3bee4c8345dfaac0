#include "platform/linux/files/FileUserDefaults.h"

#include <fmt/core.h>

#include <utility>

#include "platform/linux/files/SettingsFile.h"
#include "system/StorageLimits.h"

namespace thermopix {

std::optional<std::string> FileUserDefaults::data(std::string_view key) const {
    return isStorable(key) ? value(key).bytes : std::nullopt;
}

bool FileUserDefaults::setData(std::string_view key, std::string_view bytes) {
    if (!isStorable(key) || bytes.size() > StorageLimits::largestFile) {
        return false;
    }
    Value& value = this->value(key);
    if (value.bytes == bytes) {
        return true;
    }
    value.bytes = std::string(bytes);
    if (value.isUnreadable && isLaunching_) {
        return true;
    }
    const bool wasUnreadable = std::exchange(value.isUnreadable, false);
    writer_->write(path(key), bytes, wasUnreadable ? FormerFile::keptBeside : FormerFile::replaced);
    return true;
}

bool FileUserDefaults::isStorable(std::string_view key) const {
    return !folder_.empty() && isPlainFileName(key) && !isTemporaryName(key);
}

std::string FileUserDefaults::path(std::string_view key) const {
    return fmt::format("{}{}{}", folder_, folder_.ends_with('/') ? "" : "/", key);
}

FileUserDefaults::Value& FileUserDefaults::value(std::string_view key) const {
    const auto known = values_.find(key);
    return known == values_.end() ? values_.emplace(key, load(key)).first->second : known->second;
}

FileUserDefaults::Value FileUserDefaults::load(std::string_view key) const {
    const auto file = path(key);
    auto [bytes, error] = readSettingsFile(file);
    const bool isUnsound = bytes && !writer_->isSound(key, *bytes);
    if (error || isUnsound) {
        const auto cause = error ? error.message() : std::string("Not a settings record");
        writer_->complain("read", file, cause + "; it stays as it is until a setting is changed");
        return {std::nullopt, true};
    }
    return {std::move(bytes), false};
}

}  // namespace thermopix
