#include "platform/linux/updates/PageOpener.h"

#include <fmt/core.h>
#include <gio/gio.h>

#include <memory>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

struct Opening {
    std::string page;
    DiagnosticLog& log;
};

void finish(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
    GErrorSlot error;
    if (g_app_info_launch_default_for_uri_finish(result, error.out()) == FALSE) {
        opening->log.diag("update", fmt::format("cannot open {}: {}", opening->page, error.message()));
    }
}

}  // namespace

void openPage(const std::string& page, const std::string& activationToken, DiagnosticLog& log) {
    const GObjectHandle<GAppLaunchContext> context(g_app_launch_context_new());
    if (!activationToken.empty()) {
        g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", activationToken.c_str());
        g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", activationToken.c_str());
    }
    g_app_info_launch_default_for_uri_async(page.c_str(), context.get(), nullptr, &finish, new Opening{page, log});
}

}  // namespace thermopix
