#include "tests/desk/program/ApplicationOnBus.hpp"

#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr const char* name = "org.vantrel.Vantrel";
constexpr const char* path = "/org/vantrel/Vantrel";
constexpr const char* interface = "org.freedesktop.Application";
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

GVariant* openArguments(const std::vector<std::string>& urls) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    for (const std::string& url : urls) {
        g_variant_builder_add(&list, "s", url.c_str());
    }
    return g_variant_new("(asa{sv})", &list, nullptr);
}

}  // namespace

std::string ApplicationOnBus::owner() {
    const GVariantPointer answer = bus_.call(busName, busPath, busName, "GetNameOwner", g_variant_new("(s)", name));
    if (!answer) {
        return {};
    }
    return textOf(GVariantPointer(g_variant_get_child_value(answer.get(), 0)));
}

pid_t ApplicationOnBus::process() {
    const GVariantPointer answer =
        bus_.call(busName, busPath, busName, "GetConnectionUnixProcessID", g_variant_new("(s)", name));
    guint32 process = 0;
    if (answer) {
        g_variant_get(answer.get(), "(u)", &process);
    }
    return static_cast<pid_t>(process);
}

void ApplicationOnBus::setActivationEnvironment(const Environment& environment) {
    GVariantBuilder variables;
    g_variant_builder_init(&variables, G_VARIANT_TYPE("a{ss}"));
    for (const std::string& entry : environment.entries()) {
        const auto equals = entry.find('=');
        g_variant_builder_add(&variables, "{ss}", entry.substr(0, equals).c_str(), entry.substr(equals + 1).c_str());
    }
    if (!bus_.call(busName, busPath, busName, "UpdateActivationEnvironment", g_variant_new("(a{ss})", &variables))) {
        throw std::runtime_error("the private bus does not take an environment");
    }
}

std::string ApplicationOnBus::open(const std::vector<std::string>& urls) {
    return call("Open", openArguments(urls));
}

std::string ApplicationOnBus::activate() {
    return call("Activate", g_variant_new("(a{sv})", nullptr));
}

std::string ApplicationOnBus::activateAction(const std::string& actionName) {
    return call("ActivateAction", g_variant_new("(sava{sv})", actionName.c_str(), nullptr, nullptr));
}

std::string ApplicationOnBus::call(const char* method, GVariant* arguments) {
    GError* rawError = nullptr;
    const GVariantPointer answer(g_dbus_connection_call_sync(bus_.get(), name, path, interface, method, arguments,
                                                             nullptr, G_DBUS_CALL_FLAGS_NONE, callDeadline, nullptr,
                                                             &rawError));
    const GErrorPointer error(rawError);
    if (!error) {
        return {};
    }
    const GCharPointer errorName(g_dbus_error_get_remote_error(error.get()));
    return errorName ? errorName.get() : error->message;
}

void ApplicationOnBus::openManyTimes(const std::string& url, int times) {
    constexpr int flushEvery = 1000;
    for (int time = 1; time <= times; ++time) {
        const GObjectPointer<GDBusMessage> message(g_dbus_message_new_method_call(name, path, interface, "Open"));
        g_dbus_message_set_flags(message.get(), G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
        g_dbus_message_set_body(message.get(), openArguments({url}));
        g_dbus_connection_send_message(bus_.get(), message.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
        if (time % flushEvery == 0) {
            g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
        }
    }
    g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
}

}  // namespace vantrel::desk
