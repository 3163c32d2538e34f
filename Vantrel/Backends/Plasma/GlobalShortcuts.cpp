#include "Vantrel/Backends/Plasma/GlobalShortcuts.hpp"

#include <string_view>
#include <utility>

namespace vantrel::plasma {

namespace {

constexpr const char* service = "org.kde.kglobalaccel";
constexpr const char* servicePath = "/kglobalaccel";
constexpr const char* serviceInterface = "org.kde.KGlobalAccel";
constexpr const char* componentInterface = "org.kde.kglobalaccel.Component";
constexpr const char* component = "vantrel";
constexpr const char* componentPath = "/component/vantrel";
constexpr const char* componentTitle = "Vantrel";
/// The keys are in force, and not what was stored before.
constexpr guint32 setPresentWithoutAutoloading = 2 | 4;

GVariant* identifier(const std::string& action, const std::string& title) {
    const char* const parts[] = {component, action.c_str(), componentTitle, title.c_str(), nullptr};
    return g_variant_new_strv(parts, -1);
}

/// Each as a sequence of one key, as KGlobalAccel counts: four keys, of which 0 is none.
GVariant* sequences(const std::vector<QtKey>& keys) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(ai)"));
    for (const QtKey key : keys) {
        const gint32 sequence[] = {key, 0, 0, 0};
        g_variant_builder_add(
            &list, "(@ai)",
            g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, sequence, std::size(sequence), sizeof(key)));
    }
    return g_variant_builder_end(&list);
}

/// How many of the sequences that were asked for are in force.
std::size_t inForce(GVariant* answer) {
    std::size_t count = 0;
    const GVariantPointer list(g_variant_get_child_value(answer, 0));
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const GVariantPointer sequence(g_variant_get_child_value(list.get(), index));
        const GVariantPointer keys(g_variant_get_child_value(sequence.get(), 0));
        gint32 first = 0;
        if (g_variant_n_children(keys.get()) > 0) {
            g_variant_get_child(keys.get(), 0, "i", &first);
        }
        count += first != 0 ? 1 : 0;
    }
    return count;
}

}  // namespace

struct GlobalShortcuts::Callbacks {
    static void signalled(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                          const char* /*interface*/, const char* signal, GVariant* arguments, gpointer data) {
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssx)")) == FALSE) {
            return;
        }
        const char* action = nullptr;
        g_variant_get_child(arguments, 1, "&s", &action);
        const Events& events = static_cast<GlobalShortcuts*>(data)->events_;
        if (signal == std::string_view("globalShortcutPressed")) {
            events.pressed(action);
        } else if (signal == std::string_view("globalShortcutReleased")) {
            events.released(action);
        }
    }

    static void appeared(GDBusConnection* /*bus*/, const char* /*name*/, const char* owner, gpointer data) {
        auto& self = *static_cast<GlobalShortcuts*>(data);
        const std::string former = std::exchange(self.owner_, owner);
        if (!former.empty() && former != owner) {
            self.events_.replaced();
        }
    }
};

GlobalShortcuts::GlobalShortcuts(GObjectPointer<GDBusConnection> bus, Events events)
    : bus_(std::move(bus)),
      events_(std::move(events)),
      presses_(g_dbus_connection_signal_subscribe(bus_.get(), service, componentInterface, nullptr, componentPath,
                                                  nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &Callbacks::signalled, this,
                                                  nullptr)),
      watch_(g_bus_watch_name_on_connection(bus_.get(), service, G_BUS_NAME_WATCHER_FLAGS_NONE, &Callbacks::appeared,
                                            nullptr, this, nullptr)) {}

GlobalShortcuts::~GlobalShortcuts() {
    g_bus_unwatch_name(watch_);
    g_dbus_connection_signal_unsubscribe(bus_.get(), presses_);
}

GVariantPointer GlobalShortcuts::ask(const char* method, GVariant* arguments, const char* answerType,
                                     Clock::time_point deadline) {
    return backend::callUntil(deadline, bus_.get(), {service, servicePath, serviceInterface, method}, arguments,
                              answerType);
}

GlobalShortcuts::Outcome GlobalShortcuts::acquire(const std::string& action, const std::string& title,
                                                  const std::vector<QtKey>& keys, Clock::time_point deadline) {
    // KWin 6.7 would give a key that is taken all the same, and never tell of its press.
    for (const QtKey key : keys) {
        const auto answer = ask("isGlobalShortcutAvailable", g_variant_new("(is)", key, component), "(b)", deadline);
        gboolean isAvailable = FALSE;
        if (!answer) {
            return Outcome::noAnswer;
        }
        g_variant_get(answer.get(), "(b)", &isAvailable);
        if (isAvailable == FALSE) {
            return Outcome::taken;
        }
    }
    if (!ask("doRegister", g_variant_new("(@as)", identifier(action, title)), "()", deadline)) {
        return Outcome::noAnswer;
    }
    const auto answer =
        ask("setShortcutKeys",
            g_variant_new("(@as@a(ai)u)", identifier(action, title), sequences(keys), setPresentWithoutAutoloading),
            "(a(ai))", deadline);
    if (answer && inForce(answer.get()) == keys.size()) {
        return Outcome::done;
    }
    release(action, deadline);
    return answer ? Outcome::taken : Outcome::noAnswer;
}

std::string GlobalShortcuts::ownerOf(const std::vector<QtKey>& keys, Clock::time_point deadline) {
    for (const QtKey key : keys) {
        const auto answer = ask("getGlobalShortcutsByKey", g_variant_new("(i)", key), "(a(ssssssaiai))", deadline);
        if (answer == nullptr) {
            break;
        }
        const GVariantPointer owners(g_variant_get_child_value(answer.get(), 0));
        if (g_variant_n_children(owners.get()) > 0) {
            const GVariantPointer first(g_variant_get_child_value(owners.get(), 0));
            const char* action = nullptr;
            const char* program = nullptr;
            g_variant_get_child(first.get(), 1, "&s", &action);
            g_variant_get_child(first.get(), 3, "&s", &program);
            return std::string("\"") + action + "\" of " + program;
        }
    }
    return {};
}

void GlobalShortcuts::release(const std::string& action, Clock::time_point deadline) {
    static_cast<void>(ask("unregister", g_variant_new("(ss)", component, action.c_str()), "(b)", deadline));
}

void GlobalShortcuts::releaseLeftovers(Clock::time_point deadline) {
    const auto answer = backend::callUntil(
        deadline, bus_.get(), {service, componentPath, componentInterface, "shortcutNames"}, nullptr, "(as)");
    if (!answer) {
        return;
    }
    const GVariantPointer names(g_variant_get_child_value(answer.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(names.get()); ++index) {
        const char* name = nullptr;
        g_variant_get_child(names.get(), index, "&s", &name);
        release(name, deadline);
    }
}

}  // namespace vantrel::plasma
