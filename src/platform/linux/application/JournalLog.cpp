#include "platform/linux/application/JournalLog.h"

#include <glib.h>

#include <array>

#include "environment/AppInfo.h"

namespace thermopix {

namespace {

GLogField textField(const char* key, std::string_view value) {
    return {key, value.data(), static_cast<gssize>(value.size())};
}

}  // namespace

void JournalLog::write(std::string_view category, std::string_view message) {
    const std::array fields{
        textField("MESSAGE", message),
        textField("PRIORITY", "5"),
        textField("SYSLOG_IDENTIFIER", "thermopix"),
        textField("GLIB_DOMAIN", AppInfo::identifier),
        textField("THERMOPIX_CATEGORY", category),
    };
    g_log_writer_journald(G_LOG_LEVEL_MESSAGE, fields.data(), fields.size(), nullptr);
}

}  // namespace thermopix
