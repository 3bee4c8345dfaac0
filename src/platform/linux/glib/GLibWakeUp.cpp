#include "platform/linux/glib/GLibWakeUp.h"

#include <memory>
#include <utility>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

using Work = std::function<void()>;

constexpr gint64 never = -1;

gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data) {
    // Before the work: what is raised meanwhile is served in another turn.
    g_source_set_ready_time(source, never);
    return callback(data);
}

GSourceFuncs functions{nullptr, nullptr, &dispatch, nullptr, nullptr, nullptr};

}  // namespace

WakeUp makeWakeUp(std::function<void()> work) {
    GSource* const made = g_source_new(&functions, sizeof(GSource));
    g_source_set_static_name(made, "thermopix wake-up");
    g_source_set_callback(
        made,
        [](gpointer data) noexcept -> gboolean {
            (*static_cast<Work*>(data))();
            return G_SOURCE_CONTINUE;
        },
        new Work(std::move(work)), [](gpointer data) { delete static_cast<Work*>(data); });
    g_source_attach(made, nullptr);
    const std::shared_ptr<GSource> source(made, &g_source_unref);
    return {[source] { g_source_set_ready_time(source.get(), 0); },
            Subscription([source] { g_source_destroy(source.get()); })};
}

}  // namespace thermopix
