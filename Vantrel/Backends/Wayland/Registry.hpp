#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"

namespace vantrel::wayland {

/// What a compositor offers.
class Registry {
  public:
    struct Global {
        std::uint32_t name = 0;
        std::string interface;
        std::uint32_t version = 0;
    };
    using Added = std::function<void(const Global& global)>;
    using Removed = std::function<void(std::uint32_t name)>;

    /// Asks for the globals; they are there after a round trip.
    explicit Registry(WaylandConnection& connection);
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    /// Whether it offers the interface in that version or a later one.
    [[nodiscard]] bool offers(const wl_interface& interface, std::uint32_t version) const;

    /// The first global of the interface, in the version that is offered or `mostVersion`, whichever is less; null when
    /// there is none.
    template <typename Object>
    [[nodiscard]] WaylandPointer<Object> bindFirst(const wl_interface& interface, std::uint32_t mostVersion) const {
        const Global* const global = find(interface);
        return global == nullptr ? nullptr : bind<Object>(*global, interface, mostVersion);
    }

    template <typename Object>
    [[nodiscard]] WaylandPointer<Object> bind(const Global& global, const wl_interface& interface,
                                              std::uint32_t mostVersion) const {
        return WaylandPointer<Object>(static_cast<Object*>(
            wl_registry_bind(registry_.get(), global.name, &interface, std::min(global.version, mostVersion))));
    }

    /// Tells of the globals that are there and of those that come and go. The listener binds and notes, and calls
    /// nobody.
    void setListener(Added added, Removed removed);

  private:
    struct Callbacks;
    [[nodiscard]] const Global* find(const wl_interface& interface) const;

    WaylandPointer<wl_registry> registry_;
    std::vector<Global> globals_;
    Added added_;
    Removed removed_;
};

}  // namespace vantrel::wayland
