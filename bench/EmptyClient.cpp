// The least that a resident program on the session bus can be: it connects, owns a name and waits.
// Prints when it owned the name, in microseconds of the monotonic clock.

#include <gio/gio.h>

#include <cstdio>

int main() {
    const guint owner = g_bus_own_name(
        G_BUS_TYPE_SESSION, "org.example.EmptyClient", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr,
        [](GDBusConnection*, const gchar*, gpointer) {
            std::printf("owned %" G_GINT64_FORMAT "\n", g_get_monotonic_time());
            std::fflush(stdout);
        },
        nullptr, nullptr, nullptr);
    GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
    g_bus_unown_name(owner);
}
