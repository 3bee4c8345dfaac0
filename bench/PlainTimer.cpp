// thermopix_bench_plain_timer SECONDS FILE...: a GLib timer that reads each file from its start, and nothing else.

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <vector>

int main(int argc, char** argv) {
    if (argc < 3) {
        return EXIT_FAILURE;
    }
    std::vector<int> descriptors;
    for (int i = 2; i < argc; ++i) {
        descriptors.push_back(open(argv[i], O_RDONLY | O_CLOEXEC));
        if (descriptors.back() < 0) {
            return EXIT_FAILURE;
        }
    }
    g_timeout_add(
        static_cast<guint>(std::atoi(argv[1])) * 1000,
        [](gpointer data) -> gboolean {
            for (const int descriptor : *static_cast<const std::vector<int>*>(data)) {
                std::array<char, 32> buffer;
                if (pread(descriptor, buffer.data(), buffer.size(), 0) < 0) {
                    std::abort();
                }
            }
            return G_SOURCE_CONTINUE;
        },
        &descriptors);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
