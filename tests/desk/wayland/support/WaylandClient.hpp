#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "Vantrel/Backends/Wayland/WaylandHandles.hpp"
#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::desk {

/// A program's connection to a private compositor. Throws when the compositor goes away.
class WaylandClient {
  public:
    using Offered = std::function<void(std::uint32_t name, std::string_view interface, std::uint32_t version)>;

    /// Connects and tells of all that is offered, then and later.
    WaylandClient(const std::filesystem::path& socket, Offered offered);
    WaylandClient(const WaylandClient&) = delete;
    WaylandClient& operator=(const WaylandClient&) = delete;

    template <typename Object>
    Object* bind(std::uint32_t name, const wl_interface& interface, std::uint32_t version) {
        return static_cast<Object*>(wl_registry_bind(registry_.get(), name, &interface, version));
    }

    /// Waits until the compositor has carried out all that was asked.
    void synchronise();
    /// Waits for the next events.
    void waitForEvents();

  private:
    struct Callbacks;

    Offered offered_;
    wayland::WaylandPointer<wl_display> display_;
    wayland::WaylandPointer<wl_registry> registry_;
};

/// A file in memory of that size, to be shared.
FileDescriptor memoryFile(std::size_t size);
/// The same with that content.
FileDescriptor memoryFile(std::string_view content);

}  // namespace vantrel::desk
