#include "tests/desk/settings/AccessibilityBus.hpp"

#include <cstdint>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr const char* registry = "org.a11y.atspi.Registry";
constexpr const char* rootPath = "/org/a11y/atspi/accessible/root";
constexpr std::uint32_t labelledBy = 2;  // of AT-SPI's relations

std::string addressOf(BusClient& sessionBus) {
    std::string address;
    waitOnBus([&] {
        const GVariantPointer answer =
            sessionBus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr);
        if (answer) {
            address = textOf(GVariantPointer(g_variant_get_child_value(answer.get(), 0)));
        }
        return !address.empty();
    });
    if (address.empty()) {
        throw std::runtime_error("no accessibility bus (at-spi2-core) could be started");
    }
    return address;
}

AccessibleObject objectIn(GVariant* reference) {
    const char* busName = nullptr;
    const char* path = nullptr;
    g_variant_get(reference, "(&s&o)", &busName, &path);
    return {.busName = busName, .path = path};
}

}  // namespace

AccessibilityBus::AccessibilityBus(const std::string& sessionBusAddress, const Environment& environment) {
    ChildProcessOptions options;
    options.arguments = {"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"};
    options.environment = environment;
    launcher_ = std::make_unique<ChildProcess>(options);
    BusClient sessionBus(sessionBusAddress);
    bus_ = std::make_unique<BusClient>(addressOf(sessionBus));
    // An application tells only what somebody asked to hear.
    for (const char* const event : {"object:property-change", "object:state-changed"}) {
        // Starts the registry.
        const GVariantPointer answer(g_dbus_connection_call_sync(
            bus_->get(), registry, "/org/a11y/atspi/registry", registry, "RegisterEvent",
            g_variant_new("(sass)", event, nullptr, ""), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        if (!answer) {
            throw std::runtime_error("the accessibility registry does not answer");
        }
    }
    subscription_ = g_dbus_connection_signal_subscribe(
        bus_->get(), nullptr, "org.a11y.atspi.Event.Object", nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char* sender, const char* path, const char*, const char* signal, GVariant* arguments,
           gpointer data) {
            auto& self = *static_cast<AccessibilityBus*>(data);
            const GVariantPointer detail(g_variant_get_child_value(arguments, 0));
            self.events_.push_back(
                {.source = {.busName = sender, .path = path}, .kind = std::string(signal) + ":" + textOf(detail)});
        },
        this, nullptr);
}

AccessibilityBus::~AccessibilityBus() {
    g_dbus_connection_signal_unsubscribe(bus_->get(), subscription_);
}

GVariantPointer AccessibilityBus::call(const AccessibleObject& object, const std::string& interface,
                                       const std::string& method, GVariant* arguments) {
    return bus_->call(object.busName, object.path, interface, method, arguments);
}

std::vector<AccessibleObject> AccessibilityBus::children(const AccessibleObject& object) {
    const GVariantPointer answer = call(object, accessible, "GetChildren", nullptr);
    std::vector<AccessibleObject> found;
    if (!answer) {
        return found;
    }
    const GVariantPointer list(g_variant_get_child_value(answer.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        found.push_back(objectIn(GVariantPointer(g_variant_get_child_value(list.get(), index)).get()));
    }
    return found;
}

std::optional<AccessibleObject> AccessibilityBus::findBelow(const AccessibleObject& object, const std::string& role,
                                                            const std::string& wantedName) {
    for (const AccessibleObject& child : children(object)) {
        if (this->role(child) == role && name(child) == wantedName) {
            return child;
        }
        if (auto found = findBelow(child, role, wantedName)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<AccessibleObject> AccessibilityBus::find(const std::string& application, const std::string& role,
                                                       const std::string& wantedName) {
    for (const AccessibleObject& child : children({.busName = registry, .path = rootPath})) {
        if (name(child) == application) {
            return findBelow(child, role, wantedName);
        }
    }
    return std::nullopt;
}

std::string AccessibilityBus::name(const AccessibleObject& object) {
    return textOf(bus_->property(object.busName, object.path, accessible, "Name"));
}

std::string AccessibilityBus::role(const AccessibleObject& object) {
    const GVariantPointer answer = call(object, accessible, "GetRoleName", nullptr);
    return answer ? textOf(GVariantPointer(g_variant_get_child_value(answer.get(), 0))) : std::string();
}

bool AccessibilityBus::hasState(const AccessibleObject& object, unsigned state) {
    const GVariantPointer answer = call(object, accessible, "GetState", nullptr);
    if (!answer) {
        return false;
    }
    const GVariantPointer words(g_variant_get_child_value(answer.get(), 0));
    const GVariantPointer word(g_variant_get_child_value(words.get(), state / 32));
    return (g_variant_get_uint32(word.get()) & (1U << (state % 32))) != 0;
}

std::vector<std::string> AccessibilityBus::labels(const AccessibleObject& object) {
    std::vector<std::string> names;
    const GVariantPointer answer = call(object, accessible, "GetRelationSet", nullptr);
    if (!answer) {
        return names;
    }
    const GVariantPointer relations(g_variant_get_child_value(answer.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(relations.get()); ++index) {
        const GVariantPointer relation(g_variant_get_child_value(relations.get(), index));
        const GVariantPointer kind(g_variant_get_child_value(relation.get(), 0));
        const GVariantPointer targets(g_variant_get_child_value(relation.get(), 1));
        for (gsize target = 0; target < g_variant_n_children(targets.get()); ++target) {
            const GVariantPointer reference(g_variant_get_child_value(targets.get(), target));
            if (g_variant_get_uint32(kind.get()) == labelledBy) {
                names.push_back(name(objectIn(reference.get())));
            }
        }
    }
    return names;
}

bool AccessibilityBus::press(const AccessibleObject& object) {
    return call(object, "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", 0)) != nullptr;
}

}  // namespace vantrel::desk
