#include "Vantrel/Desktop/Application/BusApplication.hpp"

#include <memory>
#include <string_view>
#include <utility>

namespace vantrel::desktop {

namespace {

constexpr const char* busName = "org.vantrel.Vantrel";
constexpr const char* applicationPath = "/org/vantrel/Vantrel";
constexpr const char* introspection = R"(
<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
    <method name="Open">
      <arg name="uris" type="as" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg name="action_name" type="s" direction="in"/>
      <arg name="parameter" type="av" direction="in"/>
      <arg name="platform_data" type="a{sv}" direction="in"/>
    </method>
  </interface>
</node>)";

struct NodeInfoReleaser {
    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};

URLQueue::Reader readerOf(GVariantPointer list) {
    // Turns the message's hundred thousand values into one block, and lets them go.
    g_variant_get_data(list.get());
    const gsize count = g_variant_n_children(list.get());
    return [list = std::shared_ptr<GVariant>(std::move(list)), count, next = gsize{0}](std::string& url) mutable {
        if (next == count) {
            return false;
        }
        const GVariantPointer child(g_variant_get_child_value(list.get(), next++));
        gsize length = 0;
        const gchar* const text = g_variant_get_string(child.get(), &length);
        url.assign(text, length);
        return true;
    };
}

}  // namespace

BusApplication::BusApplication(GDBusConnection* bus, Events events)
    : bus_(shareObject(bus)), events_(std::move(events)), cancellable_(g_cancellable_new()) {
    // The object first: what started the program by its name is delivered as soon as the name is there.
    registerObject();
    requestName();
}

BusApplication::~BusApplication() {
    g_cancellable_cancel(cancellable_.get());
    if (registration_ != 0) {
        g_dbus_connection_unregister_object(bus_.get(), registration_);
    }
}

void BusApplication::registerObject() {
    static const GDBusInterfaceVTable functions{&handleCall, nullptr, nullptr, {}};
    const std::unique_ptr<GDBusNodeInfo, NodeInfoReleaser> info(g_dbus_node_info_new_for_xml(introspection, nullptr));
    registration_ = g_dbus_connection_register_object(bus_.get(), applicationPath, info->interfaces[0], &functions,
                                                      this, nullptr, nullptr);
}

void BusApplication::requestName() {
    // Without flags: the name is not given up to others, and if another agent has it, this one waits for it.
    constexpr guint32 flags = 0;
    g_dbus_connection_call(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "RequestName", g_variant_new("(su)", busName, flags), G_VARIANT_TYPE("(u)"),
                           G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(), &nameRequested, this);
}

void BusApplication::nameRequested(GObject* bus, GAsyncResult* result, gpointer data) {
    GError* rawError = nullptr;
    GVariant* const reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &rawError);
    const GErrorPointer error(rawError);
    if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE) {
        return;  // this object is gone
    }
    // A bus that refuses the name is no reason to complain: hot keys work all the same.
    static_cast<BusApplication*>(data)->isNameRequested_ = true;
    if (reply != nullptr) {
        g_variant_unref(reply);
    }
}

void BusApplication::handleCall(GDBusConnection* /*bus*/, const gchar* /*sender*/, const gchar* /*objectPath*/,
                                const gchar* /*interface*/, const gchar* method, GVariant* arguments,
                                GDBusMethodInvocation* invocation, gpointer data) {
    auto& self = *static_cast<BusApplication*>(data);
    const std::string_view name = method;
    if (name == "ActivateAction") {
        g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "No such action");
        return;
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
    if (name == "Open") {
        self.open(arguments);
    } else {
        self.activate();
    }
}

void BusApplication::activate() {
    // The call that made the bus start the program comes before the answer to the request for the name. It is the
    // start, not a further one.
    if (isNameRequested_) {
        events_.reopen();
    }
}

void BusApplication::open(GVariant* arguments) {
    events_.open(readerOf(GVariantPointer(g_variant_get_child_value(arguments, 0))));
}

}  // namespace vantrel::desktop
