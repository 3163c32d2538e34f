#include "Vantrel/Platform/Desktop/TerminationSignals.hpp"

#include <glib-unix.h>

#include <csignal>
#include <initializer_list>
#include <utility>

namespace vantrel::desktop {

namespace {

gboolean callReceived(gpointer data) {
    (*static_cast<std::function<void()>*>(data))();
    return G_SOURCE_CONTINUE;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> received) : received_(std::move(received)) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SourceHandle source(g_unix_signal_source_new(signal));
        g_source_set_callback(source.get(), &callReceived, &received_, nullptr);
        g_source_attach(source.get(), nullptr);
        sources_.push_back(std::move(source));
    }
}

}  // namespace vantrel::desktop
