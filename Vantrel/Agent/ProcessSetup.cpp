#include "Vantrel/Agent/ProcessSetup.hpp"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace vantrel {

namespace {

/// Without this the connection to the X server would get the number of a closed standard stream, and messages would be
/// written into it.
void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) >= 0) {
            continue;
        }
        // The lowest free number, which is this one.
        if (open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY) < 0) {
            return;
        }
    }
}

}  // namespace

void setUpProcess() {
    openStandardDescriptors();
    // A heap for each thread would cost more than the few threads of the libraries gain by it.
    mallopt(M_ARENA_MAX, 1);
    // A server that goes away while it is written to is an error of that call.
    std::signal(SIGPIPE, SIG_IGN);
    // A starter may have blocked them, which a program inherits.
    sigset_t endings;
    sigemptyset(&endings);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&endings, signal);
    }
    sigprocmask(SIG_UNBLOCK, &endings, nullptr);
}

}  // namespace vantrel
