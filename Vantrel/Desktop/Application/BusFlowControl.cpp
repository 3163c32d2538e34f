#include "Vantrel/Desktop/Application/BusFlowControl.hpp"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace vantrel::desktop {

namespace {

/// So many messages may wait for the loop.
constexpr int mostUnserved = 16;

/// Something in the loop may itself wait for the bus thread (a library that makes a blocking call), which must not wait
/// for the loop for ever.
constexpr std::chrono::milliseconds longestWait{250};

/// Answers come in the number of our own calls.
bool isFromOthersAccord(GDBusMessage* message) {
    const GDBusMessageType type = g_dbus_message_get_message_type(message);
    return type == G_DBUS_MESSAGE_TYPE_METHOD_CALL || type == G_DBUS_MESSAGE_TYPE_SIGNAL;
}

}  // namespace

/// What the bus thread and the loop share.
class BusFlowControl::Flow {
  public:
    /// Counts a message. Whether it is the first that must wait. Bus thread only.
    bool isFullAfterAnother() {
        if (++unserved_ <= mostUnserved) {
            return false;
        }
        unserved_ = 1;
        return true;
    }

    void waitForLoop() {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, longestWait, [this] { return isServed_ || isOpen_; });
        isServed_ = false;
    }

    /// The loop has served all that came before.
    void served() {
        const std::lock_guard lock(mutex_);
        isServed_ = true;
        changed_.notify_one();
    }

    /// Nothing waits any more.
    void open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        changed_.notify_one();
    }

  private:
    int unserved_ = 0;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isServed_ = false;
    bool isOpen_ = false;
};

BusFlowControl::BusFlowControl(GDBusConnection* bus) : bus_(shareObject(bus)), flow_(std::make_shared<Flow>()) {
    auto shared = std::make_unique<std::shared_ptr<Flow>>(flow_);
    filter_ = g_dbus_connection_add_filter(bus, &filter, shared.release(), &release);
}

BusFlowControl::~BusFlowControl() {
    flow_->open();
    g_dbus_connection_remove_filter(bus_.get(), filter_);
}

GDBusMessage* BusFlowControl::filter(GDBusConnection* /*bus*/, GDBusMessage* message, gboolean isIncoming,
                                     gpointer data) {
    const auto& flow = *static_cast<std::shared_ptr<Flow>*>(data);
    if (isIncoming != FALSE && isFromOthersAccord(message) && flow->isFullAfterAnother()) {
        // Of the messages' own priority and made after them, so it is served after them.
        g_idle_add_full(G_PRIORITY_DEFAULT, &loopIsHere, std::make_unique<std::shared_ptr<Flow>>(flow).release(),
                        &release);
        flow->waitForLoop();
    }
    return message;
}

gboolean BusFlowControl::loopIsHere(gpointer data) {
    (*static_cast<std::shared_ptr<Flow>*>(data))->served();
    return G_SOURCE_REMOVE;
}

void BusFlowControl::release(gpointer data) {
    const std::unique_ptr<std::shared_ptr<Flow>> flow(static_cast<std::shared_ptr<Flow>*>(data));
}

}  // namespace vantrel::desktop
