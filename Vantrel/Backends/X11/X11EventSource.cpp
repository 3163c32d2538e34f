#include "Vantrel/Backends/X11/X11EventSource.hpp"

#include <utility>

namespace vantrel::x11 {

X11EventSource::X11EventSource(X11Connection& connection, std::function<void()> turnBegan,
                               std::function<void()> connectionLost)
    : connection_(connection),
      turnBegan_(std::move(turnBegan)),
      connectionLost_(std::move(connectionLost)),
      source_(LoopSource::whenever([this] { return isReady(); }, [this] { serve(); }, {.priority = G_PRIORITY_HIGH},
                                   xcb_get_file_descriptor(connection.get()))) {}

bool X11EventSource::isReady() {
    turnBegan_();
    xcb_flush(connection_.get());
    // An event that was read while somebody waited for a reply leaves the descriptor silent.
    connection_.takeQueued();
    return connection_.hasPendingEvents() || connection_.isLost();
}

void X11EventSource::serve() {
    connection_.drain();
    connection_.dispatchPending();
    if (connection_.isLost()) {
        source_.reset();
        connectionLost_();
    }
}

}  // namespace vantrel::x11
