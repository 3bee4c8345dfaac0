#include "platform/linux/glib/GLibSignals.h"

#include <glib-unix.h>

#include <memory>
#include <utility>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

Subscription observeUnixSignal(int signal, std::function<void()> handler) {
    using Handler = std::function<void()>;
    auto source = std::shared_ptr<GSource>(GSourceHandle(g_unix_signal_source_new(signal)));
    g_source_set_callback(
        source.get(),
        [](gpointer data) noexcept -> gboolean {
            (*static_cast<Handler*>(data))();
            return G_SOURCE_CONTINUE;
        },
        new Handler(std::move(handler)), [](gpointer data) { delete static_cast<Handler*>(data); });
    g_source_attach(source.get(), nullptr);
    return Subscription([source]() mutable { source.reset(); });
}

void withholdUnixSignal(int signal) {
    // GLib keeps its own handler installed while there is a source of the signal, attached or not.
    static auto& kept = *new std::vector<GSourceHandle>;
    kept.emplace_back(g_unix_signal_source_new(signal));
}

}  // namespace thermopix
