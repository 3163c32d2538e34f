#include "tests/desk/status/BusClient.hpp"

#include <stdexcept>
#include <thread>

namespace vantrel::desk {

BusClient::BusClient(const std::string& address)
    : connection_(g_dbus_connection_new_for_address_sync(
          address.c_str(),
          static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
          nullptr, nullptr, nullptr)) {
    if (!connection_) {
        throw std::runtime_error("the private bus does not let a test in");
    }
}

BusClient::~BusClient() {
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

GVariantPointer BusClient::call(const std::string& destination, const std::string& path, const std::string& interface,
                                const std::string& method, GVariant* arguments) {
    struct Answer {
        bool hasCome = false;
        GVariantPointer value;
    } answer;
    g_dbus_connection_call(
        get(), destination.c_str(), path.c_str(), interface.c_str(), method.c_str(), arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, callDeadline, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            auto& waiting = *static_cast<Answer*>(data);
            waiting.value.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            waiting.hasCome = true;
        },
        &answer);
    // The bus's own time limit ends the wait.
    while (!answer.hasCome) {
        g_main_context_iteration(nullptr, TRUE);
    }
    return std::move(answer.value);
}

GVariantPointer BusClient::property(const std::string& destination, const std::string& path,
                                    const std::string& interface, const std::string& name) {
    const GVariantPointer answer = call(destination, path, "org.freedesktop.DBus.Properties", "Get",
                                        g_variant_new("(ss)", interface.c_str(), name.c_str()));
    if (!answer) {
        return nullptr;
    }
    const GVariantPointer boxed(g_variant_get_child_value(answer.get(), 0));
    return GVariantPointer(g_variant_get_variant(boxed.get()));
}

void BusClient::ownName(const std::string& name) {
    constexpr guint32 allowAndReplace = 1 | 2;  // of RequestName's flags
    constexpr guint32 primaryOwner = 1;
    const GVariantPointer answer = call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                        "RequestName", g_variant_new("(su)", name.c_str(), allowAndReplace));
    guint32 outcome = 0;
    if (answer) {
        g_variant_get(answer.get(), "(u)", &outcome);
    }
    if (outcome != primaryOwner) {
        throw std::runtime_error("the private bus does not give the name " + name);
    }
}

void BusClient::releaseName(const std::string& name) {
    call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReleaseName",
         g_variant_new("(s)", name.c_str()));
}

bool waitOnBus(const std::function<bool()>& condition, Duration deadline) {
    return waitUntil(
        [&] {
            while (g_main_context_iteration(nullptr, FALSE)) {
            }
            return condition();
        },
        deadline);
}

std::string textOf(const GVariantPointer& value) {
    const bool isText = value && (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING) ||
                                  g_variant_is_of_type(value.get(), G_VARIANT_TYPE_OBJECT_PATH));
    return isText ? g_variant_get_string(value.get(), nullptr) : std::string();
}

}  // namespace vantrel::desk
