#include "Vantrel/Backends/Wayland/Registry.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::wayland {

struct Registry::Callbacks {
    static void added(void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
                      std::uint32_t version) {
        auto& self = *static_cast<Registry*>(data);
        self.globals_.push_back({name, interface, version});
        if (self.added_) {
            self.added_(self.globals_.back());
        }
    }

    static void removed(void* data, wl_registry* /*registry*/, std::uint32_t name) {
        auto& self = *static_cast<Registry*>(data);
        std::erase_if(self.globals_, [name](const Global& global) { return global.name == name; });
        if (self.removed_) {
            self.removed_(name);
        }
    }

    static constexpr wl_registry_listener listener{.global = added, .global_remove = removed};
};

Registry::Registry(WaylandConnection& connection) : registry_(wl_display_get_registry(connection.get())) {
    wl_registry_add_listener(registry_.get(), &Callbacks::listener, this);
}

const Registry::Global* Registry::find(const wl_interface& interface) const {
    const auto found = std::find_if(globals_.begin(), globals_.end(),
                                    [&](const Global& global) { return global.interface == interface.name; });
    return found == globals_.end() ? nullptr : &*found;
}

bool Registry::offers(const wl_interface& interface, std::uint32_t version) const {
    const Global* const global = find(interface);
    return global != nullptr && global->version >= version;
}

void Registry::setListener(Added added, Removed removed) {
    added_ = std::move(added);
    removed_ = std::move(removed);
    for (const Global& global : globals_) {
        added_(global);
    }
}

}  // namespace vantrel::wayland
