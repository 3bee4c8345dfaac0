#include "platform/linux/notifications/AddressOpener.h"

#include <fmt/core.h>
#include <gio/gio.h>

#include <memory>
#include <utility>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

using Told = std::function<void(bool)>;

struct Opening {
    std::string address;
    DiagnosticLog& log;
};

void finishFinding(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Told> told(static_cast<Told*>(data));
    GErrorSlot error;
    const GObjectHandle<GAppInfo> program(g_app_info_get_default_for_uri_scheme_finish(result, error.out()));
    if (!error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
        (*told)(program != nullptr);
    }
}

void finishOpening(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Opening> opening(static_cast<Opening*>(data));
    GErrorSlot error;
    if (g_app_info_launch_default_for_uri_finish(result, error.out()) == FALSE) {
        opening->log.diag("notification", fmt::format("cannot open {}: {}", opening->address, error.message()));
    }
}

}  // namespace

Subscription findOpener(const std::string& address, Told told) {
    const std::shared_ptr<GCancellable> cancellable(g_cancellable_new(), &g_object_unref);
    g_app_info_get_default_for_uri_scheme_async(address.substr(0, address.find(':')).c_str(), cancellable.get(),
                                                &finishFinding, new Told(std::move(told)));
    return Subscription([cancellable] { g_cancellable_cancel(cancellable.get()); });
}

void openAddress(const std::string& address, const std::string& activationToken, DiagnosticLog& log) {
    const GObjectHandle<GAppLaunchContext> context(g_app_launch_context_new());
    if (!activationToken.empty()) {
        g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", activationToken.c_str());
        g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", activationToken.c_str());
    }
    g_app_info_launch_default_for_uri_async(address.c_str(), context.get(), nullptr, &finishOpening,
                                            new Opening{address, log});
}

}  // namespace thermopix
