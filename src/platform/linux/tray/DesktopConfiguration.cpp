#include "platform/linux/tray/DesktopConfiguration.h"

#include <fmt/format.h>

#include <optional>
#include <string>

#include "base/Unicode.h"
#include "platform/linux/files/SettingsFile.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {
namespace {

constexpr const char* group = "Desktop";

class Reader {
public:
    Reader(const std::filesystem::path& file, DiagnosticLog& log) : file_(file), log_(log) {
        const auto stored = readSettingsFile(file);
        if (stored.error) {
            complain(stored.error.message());
        } else if (stored.bytes) {
            load(*stored.bytes);
        }
    }

    /// Sets `value` to what the key says, if `parse` understands it.
    template <typename Value, typename Parse>
    void read(const char* key, Value& value, Parse parse) const {
        if (!isReadable_ || g_key_file_has_key(keys_.get(), group, key, nullptr) == FALSE) {
            return;
        }
        GErrorSlot error;
        const GStringHandle text(g_key_file_get_string(keys_.get(), group, key, error.out()));
        if (text == nullptr) {
            complain(error.message());
            return;
        }
        g_strchomp(text.get());
        if (const auto parsed = parse(lowercased(text.get()))) {
            value = *parsed;
        } else {
            complain(fmt::format("{} cannot be \"{}\"; ignored", key, text.get()));
        }
    }

private:
    void load(const std::string& text) {
        GErrorSlot error;
        isReadable_ =
            g_key_file_load_from_data(keys_.get(), text.data(), text.size(), G_KEY_FILE_NONE, error.out()) != FALSE;
        if (!isReadable_) {
            complain(error.message());
        }
    }
    void complain(std::string_view what) const { log_.diag("desktop", fmt::format("{}: {}", file_.string(), what)); }

    const std::filesystem::path& file_;
    DiagnosticLog& log_;
    GKeyFileHandle keys_{g_key_file_new()};
    bool isReadable_ = false;
};

}  // namespace

TrayChoices readDesktopConfiguration(const std::filesystem::path& file, DiagnosticLog& log) {
    TrayChoices choices;
    const Reader reader(file, log);
    reader.read("Place", choices.place, [](const std::string& text) { return fromRawValue<TrayPlace>(text); });
    reader.read("Shape", choices.shape, [](const std::string& text) { return fromRawValue<TrayShapeChoice>(text); });
    reader.read("Ink", choices.ink, [](const std::string& text) { return trayInkChoice(text); });
    return choices;
}

}  // namespace thermopix
