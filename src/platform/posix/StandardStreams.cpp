#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "system/Platform.h"

namespace thermopix {

void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free number is the stream's, since those below are taken.
        if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF && ::open("/dev/null", O_RDONLY) < 0) {
            static_cast<void>(::open("/", O_RDONLY));
        }
    }
}

}  // namespace thermopix
