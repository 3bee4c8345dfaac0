#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/files/SettingsWriter.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// A folder with one file a key. Each file is read once; what is set later is told at once and written by the writer.
/// A file that cannot be read stays as it is during the launch, which no user has asked to write anything. Main thread.
class FileUserDefaults final : public UserDefaults {
public:
    /// An empty path holds nothing.
    FileUserDefaults(std::string folder, std::shared_ptr<SettingsWriter> writer)
        : folder_(std::move(folder)), writer_(std::move(writer)) {}

    /// Also none for a key that is no plain file name.
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override;

    /// False for such a key, and for bytes that are too many.
    bool setData(std::string_view key, std::string_view bytes) override;

    /// From now on it is the user who changes something.
    void endLaunch() { isLaunching_ = false; }

private:
    struct Value {
        std::optional<std::string> bytes;
        /// Its file is there, and could not be read.
        bool isUnreadable = false;
    };

    [[nodiscard]] bool isStorable(std::string_view key) const;
    [[nodiscard]] std::string path(std::string_view key) const;
    [[nodiscard]] Value& value(std::string_view key) const;
    [[nodiscard]] Value load(std::string_view key) const;

    std::string folder_;
    std::shared_ptr<SettingsWriter> writer_;
    mutable std::map<std::string, Value, std::less<>> values_;
    bool isLaunching_ = true;
};

}  // namespace thermopix
