#include "Vantrel/Desktop/StatusItem/WatcherRegistration.hpp"

#include <chrono>
#include <string_view>
#include <utility>

namespace vantrel::desktop {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr std::chrono::seconds firstRetryDelay{1};  // doubled each time
constexpr unsigned mostRefusals = 7;  // the last retry comes after 64 s; a new host or watcher starts afresh

BusMethod watcherMethod(const char* name) {
    return {watcherName, watcherPath, watcherName, name};
}

}  // namespace

/// The bus's C callbacks; `data` is the registration.
struct WatcherRegistration::BusCallbacks {
    static WatcherRegistration& self(gpointer data) { return *static_cast<WatcherRegistration*>(data); }

    static void appeared(GDBusConnection*, const gchar*, const gchar* owner, gpointer data) {
        self(data).watcherAppeared(owner);
    }

    static void vanished(GDBusConnection*, const gchar*, gpointer data) { self(data).watcherVanished(); }

    static void signalled(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GVariant*,
                          gpointer data) {
        const std::string_view signal(name);
        if (signal == "StatusNotifierHostRegistered" || signal == "StatusNotifierHostUnregistered") {
            self(data).hostsChanged();
        }
    }
};

WatcherRegistration::WatcherRegistration(GDBusConnection* bus, std::string service, std::function<void()> changed)
    : bus_(shareObject(bus)), service_(std::move(service)), changed_(std::move(changed)) {
    hostSignals_ =
        g_dbus_connection_signal_subscribe(bus, watcherName, watcherName, nullptr, watcherPath, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, &BusCallbacks::signalled, this, nullptr);
    watchedName_ = g_bus_watch_name_on_connection(bus, watcherName, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                                  &BusCallbacks::appeared, &BusCallbacks::vanished, this, nullptr);
}

WatcherRegistration::~WatcherRegistration() {
    g_bus_unwatch_name(watchedName_);
    g_dbus_connection_signal_unsubscribe(bus_.get(), hostSignals_);
}

void WatcherRegistration::watcherAppeared(const std::string& owner) {
    watcherVanished();
    calls_ = std::make_unique<BusCalls>(bus_.get());
    askForProcess(owner);
    askForHost();
    registerItem();
}

void WatcherRegistration::watcherVanished() {
    calls_.reset();
    retry_.reset();
    refusals_ = 0;
    program_ = {};
    if (isRegistered_ || hasHost_) {
        isRegistered_ = false;
        hasHost_ = false;
        changed_();
    }
}

void WatcherRegistration::hostsChanged() {
    if (!calls_) {
        return;
    }
    askForHost();
    if (!isRegistered_) {
        retry_.reset();
        refusals_ = 0;
        registerItem();
    }
}

void WatcherRegistration::registerItem() {
    calls_->call(watcherMethod("RegisterStatusNotifierItem"), g_variant_new("(s)", service_.c_str()),
                 [this](const GVariant* answer) {
                     if (answer == nullptr) {
                         scheduleRetry();
                         return;
                     }
                     isRegistered_ = true;
                     changed_();
                 });
}

void WatcherRegistration::scheduleRetry() {
    if (refusals_ == mostRefusals || retry_.isSet()) {
        return;
    }
    retry_ = LoopSource::after(firstRetryDelay * (1U << refusals_), [this] { registerItem(); });
    ++refusals_;
}

void WatcherRegistration::askForHost() {
    calls_->call({watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get"},
                 g_variant_new("(ss)", watcherName, "IsStatusNotifierHostRegistered"), [this](GVariant* answer) {
                     // Some watchers do not say; those that take registrations without a host do.
                     gboolean registered = TRUE;
                     if (answer != nullptr && g_variant_is_of_type(answer, G_VARIANT_TYPE("(v)"))) {
                         GVariant* rawValue = nullptr;
                         g_variant_get(answer, "(v)", &rawValue);
                         const GVariantPointer value(rawValue);
                         registered = !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) ||
                                      g_variant_get_boolean(value.get());
                     }
                     hasHost_ = registered != FALSE;
                     changed_();
                 });
}

void WatcherRegistration::askForProcess(const std::string& owner) {
    calls_->call(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetConnectionUnixProcessID"},
        g_variant_new("(s)", owner.c_str()), [this](GVariant* answer) {
            if (answer == nullptr || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)"))) {
                return;
            }
            guint32 process = 0;
            g_variant_get(answer, "(u)", &process);
            program_ = panelProgram(processName(process));
            changed_();
        });
}

}  // namespace vantrel::desktop
