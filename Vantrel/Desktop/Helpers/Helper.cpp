#include "Vantrel/Desktop/Helpers/Helper.hpp"

#include <glib-unix.h>

#include <utility>

namespace vantrel::desktop {

namespace {

/// A program that talks without end must not keep the rest of the loop waiting.
constexpr int mostMessagesInATurn = 16;

void removeSource(guint& source) {
    if (source != 0) {
        g_source_remove(std::exchange(source, 0));
    }
}

}  // namespace

Helper::Helper(Start start, Events events) : start_(std::move(start)), events_(std::move(events)) {}

Helper::~Helper() {
    end();
}

bool Helper::start() {
    keep();
    if (isRunning()) {
        return true;
    }
    end();
    channel_ = start_();
    if (isRunning()) {
        channelSource_ = g_unix_fd_add(channel_.descriptor(), G_IO_IN, readable, this);
    }
    return isRunning();
}

void Helper::send(const Message& message) {
    if (isRunning() && !channel_.send(message)) {
        noteEnd();
    }
}

void Helper::endAfter(unsigned seconds) {
    keep();
    if (isRunning()) {
        lingerSource_ = g_timeout_add_seconds(seconds, lingeredEnough, this);
    }
}

void Helper::keep() {
    removeSource(lingerSource_);
}

void Helper::end() {
    keep();
    removeSource(channelSource_);
    channel_ = Channel();
}

gboolean Helper::readable(gint /*descriptor*/, GIOCondition /*condition*/, gpointer data) {
    static_cast<Helper*>(data)->receive();
    return G_SOURCE_CONTINUE;
}

void Helper::receive() {
    for (int count = 0; count < mostMessagesInATurn; ++count) {
        const auto message = channel_.receive();
        if (!message) {
            break;
        }
        events_.received(*message);
    }
    if (channelSource_ != 0 && !isRunning()) {
        noteEnd();
    }
}

void Helper::noteEnd() {
    const std::string otherVersion = channel_.otherVersion();
    end();
    events_.ended(otherVersion);
}

gboolean Helper::lingeredEnough(gpointer data) {
    auto& helper = *static_cast<Helper*>(data);
    helper.lingerSource_ = 0;
    helper.end();
    return G_SOURCE_REMOVE;
}

}  // namespace vantrel::desktop
