#include "platform/linux/glib/GLibDescriptors.h"

#include <glib-unix.h>

#include <memory>
#include <utility>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

Subscription observeReadable(int descriptor, std::function<void()> handler) {
    using Handler = std::function<void()>;
    auto source = std::shared_ptr<GSource>(GSourceHandle(g_unix_fd_source_new(descriptor, G_IO_IN)));
    const GUnixFDSourceFunc ready = [](gint, GIOCondition, gpointer data) noexcept -> gboolean {
        (*static_cast<Handler*>(data))();
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source.get(), G_SOURCE_FUNC(ready), new Handler(std::move(handler)),
                          [](gpointer data) { delete static_cast<Handler*>(data); });
    g_source_attach(source.get(), nullptr);
    return Subscription([source]() mutable { source.reset(); });
}

}  // namespace thermopix
