#include "Vantrel/Backends/Gnome/ShellExtension.hpp"

#include <memory>
#include <string_view>
#include <utility>

#include "Vantrel/Backends/Gnome/ExtensionState.hpp"

namespace vantrel::gnome {

namespace {

constexpr const char* agentName = "org.vantrel.GnomeAgent";
constexpr const char* service = "org.vantrel.Shell";
constexpr const char* path = "/org/vantrel/Shell";
constexpr const char* interface = "org.vantrel.Shell1";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
/// Of the interface; the extension's agentService.js has the other end.
constexpr guint32 knownVersion = 1;

/// For answers at the start, when the shell may have much to do.
constexpr std::chrono::seconds patience{2};

backend::BusMethod busMethod(const char* name) {
    return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", name};
}

GVariant* versionProperty() {
    return g_variant_new("(ss)", interface, "Version");
}

}  // namespace

struct ShellExtension::Callbacks {
    /// The question to one that has just come.
    struct Reading {
        ShellExtension& extension;
        std::string owner;
    };

    static void appeared(GDBusConnection* bus, const char* /*name*/, const char* owner, gpointer data) {
        auto& self = *static_cast<ShellExtension*>(data);
        if (self.owner_ == owner) {
            return;
        }
        self.forget();
        self.reading_.reset(g_cancellable_new());
        g_dbus_connection_call(bus, owner, path, propertiesInterface, "Get", versionProperty(), G_VARIANT_TYPE("(v)"),
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, self.reading_.get(), &versionRead,
                               std::make_unique<Reading>(Reading{self, owner}).release());
    }

    static void versionRead(GObject* bus, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Reading> reading(static_cast<Reading*>(data));
        GError* error = nullptr;
        const GVariantPointer answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        const GErrorPointer failure(error);
        // Cancelled: the extension object may be gone.
        if (answer) {
            reading->extension.take(reading->owner, answer.get());
        }
    }

    static void vanished(GDBusConnection* /*bus*/, const char* /*name*/, gpointer data) {
        static_cast<ShellExtension*>(data)->forget();
    }

    static void signalled(GDBusConnection* /*bus*/, const char* sender, const char* /*path*/, const char* /*interface*/,
                          const char* signal, GVariant* arguments, gpointer data) {
        const auto& self = *static_cast<ShellExtension*>(data);
        if (self.owner_ != sender) {
            return;
        }
        const std::string_view name(signal);
        const auto isOf = [&](const char* type) {
            return g_variant_is_of_type(arguments, G_VARIANT_TYPE(type)) != FALSE;
        };
        if (name == "Pressed" && isOf("(udd)")) {
            guint32 number = 0;
            wayland::LayoutPoint place;
            g_variant_get(arguments, "(udd)", &number, &place.x, &place.y);
            self.events_.pressed(number, place);
        } else if (name == "RowChosen" && isOf("(u)")) {
            guint32 row = 0;
            g_variant_get(arguments, "(u)", &row);
            self.events_.rowChosen(row);
        } else if (name == "Key" && isOf("(uub)")) {
            CapturedKey key;
            gboolean isPressed = FALSE;
            g_variant_get(arguments, "(uub)", &key.keycode, &key.state, &isPressed);
            key.isPressed = isPressed != FALSE;
            self.events_.key(key);
        } else if (name == "CaptureEnded") {
            self.events_.captureEnded();
        }
    }
};

ShellExtension::ShellExtension(GObjectPointer<GDBusConnection> bus) : bus_(std::move(bus)) {}

ShellExtension::~ShellExtension() {
    if (reading_) {
        g_cancellable_cancel(reading_.get());
    }
    if (watch_ != 0) {
        g_bus_unwatch_name(watch_);
        g_dbus_connection_signal_unsubscribe(bus_.get(), signals_);
    }
}

bool ShellExtension::open(Events events) {
    events_ = std::move(events);
    const auto deadline = Clock::now() + patience;
    constexpr guint32 withoutQueueing = 4;
    constexpr guint32 primaryOwner = 1;
    guint32 outcome = 0;
    if (const auto answer = backend::callUntil(deadline, bus_.get(), busMethod("RequestName"),
                                               g_variant_new("(su)", agentName, withoutQueueing), "(u)")) {
        g_variant_get(answer.get(), "(u)", &outcome);
    }
    if (outcome != primaryOwner) {
        return false;
    }
    const auto owner =
        backend::callUntil(deadline, bus_.get(), busMethod("GetNameOwner"), g_variant_new("(s)", service), "(s)");
    if (owner) {
        const char* name = nullptr;
        g_variant_get(owner.get(), "(&s)", &name);
        if (const auto version = backend::callUntil(deadline, bus_.get(), {name, path, propertiesInterface, "Get"},
                                                    versionProperty(), "(v)")) {
            take(name, version.get());
        }
    }
    signals_ = g_dbus_connection_signal_subscribe(bus_.get(), service, interface, nullptr, path, nullptr,
                                                  G_DBUS_SIGNAL_FLAGS_NONE, &Callbacks::signalled, this, nullptr);
    watch_ = g_bus_watch_name_on_connection(bus_.get(), service, G_BUS_NAME_WATCHER_FLAGS_NONE, &Callbacks::appeared,
                                            &Callbacks::vanished, this, nullptr);
    return true;
}

void ShellExtension::take(std::string owner, GVariant* version) {
    const GVariantPointer boxed(g_variant_get_child_value(version, 0));
    const GVariantPointer number(g_variant_get_variant(boxed.get()));
    isOtherVersion_ = g_variant_is_of_type(number.get(), G_VARIANT_TYPE_UINT32) == FALSE ||
                      g_variant_get_uint32(number.get()) != knownVersion;
    if (!isOtherVersion_) {
        owner_ = std::move(owner);
        events_.presenceChanged();
    }
}

void ShellExtension::forget() {
    if (reading_) {
        g_cancellable_cancel(reading_.get());
        reading_.reset();
    }
    isOtherVersion_ = false;
    if (!std::exchange(owner_, {}).empty()) {
        events_.presenceChanged();
    }
}

std::string ShellExtension::whyMissing() const {
    if (isOtherVersion_) {
        return "Vantrel's extension in GNOME is of another version: log out and in once";
    }
    constexpr const char* shell = "org.gnome.Shell";
    constexpr const char* shellPath = "/org/gnome/Shell";
    constexpr const char* extensions = "org.gnome.Shell.Extensions";
    const auto deadline = Clock::now() + patience;
    const auto information =
        backend::callUntil(deadline, bus_.get(), {shell, shellPath, extensions, "GetExtensionInfo"},
                           g_variant_new("(s)", extensionIdentifier), "(a{sv})");
    std::string version;
    if (const auto answer = backend::callUntil(deadline, bus_.get(), {shell, shellPath, propertiesInterface, "Get"},
                                               g_variant_new("(ss)", extensions, "ShellVersion"), "(v)")) {
        const GVariantPointer boxed(g_variant_get_child_value(answer.get(), 0));
        const GVariantPointer text(g_variant_get_variant(boxed.get()));
        if (g_variant_is_of_type(text.get(), G_VARIANT_TYPE_STRING) != FALSE) {
            version = g_variant_get_string(text.get(), nullptr);
        }
    }
    return whyExtensionIsMissing(information.get(), isExtensionInstalled(), version);
}

GVariantPointer ShellExtension::ask(const char* method, GVariant* arguments, const char* answerType,
                                    Clock::time_point deadline) {
    const GVariantPointer owned(arguments == nullptr ? nullptr : g_variant_ref_sink(arguments));
    return isPresent() ? backend::callUntil(deadline, bus_.get(), {owner_.c_str(), path, interface, method}, arguments,
                                            answerType)
                       : nullptr;
}

void ShellExtension::tell(const char* method, GVariant* arguments) {
    const GVariantPointer owned(arguments == nullptr ? nullptr : g_variant_ref_sink(arguments));
    if (isPresent()) {
        g_dbus_connection_call(bus_.get(), owner_.c_str(), path, interface, method, arguments, nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    }
}

}  // namespace vantrel::gnome
