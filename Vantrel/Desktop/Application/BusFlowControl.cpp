#include "Vantrel/Desktop/Application/BusFlowControl.hpp"

namespace vantrel::desktop {

namespace {

/// So many messages may wait for the loop. Each takes a place while it does. What stands for a place in the queue of
/// free ones is of no account: the queue itself does, which is a pointer at hand.
constexpr int places = 16;

/// Something in the loop may itself wait for the bus thread (a library that makes a blocking call), so this thread must
/// not wait for the loop for ever.
constexpr guint64 longestWait = 20 * G_TIME_SPAN_MILLISECOND;

void release(gpointer freePlaces) {
    g_async_queue_unref(static_cast<GAsyncQueue*>(freePlaces));
}

gboolean giveBackPlace(gpointer freePlaces) {
    g_async_queue_push(static_cast<GAsyncQueue*>(freePlaces), freePlaces);
    return G_SOURCE_REMOVE;
}

/// Answers come in the number of our own calls.
bool isFromOthersAccord(GDBusMessage* message) {
    const GDBusMessageType type = g_dbus_message_get_message_type(message);
    return type == G_DBUS_MESSAGE_TYPE_METHOD_CALL || type == G_DBUS_MESSAGE_TYPE_SIGNAL;
}

/// Runs on the bus thread.
GDBusMessage* waitForPlace(GDBusConnection* /*bus*/, GDBusMessage* message, gboolean isIncoming, gpointer data) {
    auto* const freePlaces = static_cast<GAsyncQueue*>(data);
    if (isIncoming != FALSE && isFromOthersAccord(message) &&
        g_async_queue_timeout_pop(freePlaces, longestWait) != nullptr) {
        // Of the messages' own priority, so served among them.
        g_idle_add_full(G_PRIORITY_DEFAULT, &giveBackPlace, g_async_queue_ref(freePlaces), &release);
    }
    return message;
}

}  // namespace

void controlBusFlow(GDBusConnection* bus) {
    GAsyncQueue* const freePlaces = g_async_queue_new();
    for (int made = 0; made < places; ++made) {
        g_async_queue_push(freePlaces, freePlaces);
    }
    g_dbus_connection_add_filter(bus, &waitForPlace, freePlaces, &release);
}

}  // namespace vantrel::desktop
