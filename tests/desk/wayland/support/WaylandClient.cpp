#include "tests/desk/wayland/support/WaylandClient.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace vantrel::desk {

struct WaylandClient::Callbacks {
    static void added(void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
                      std::uint32_t version) {
        static_cast<WaylandClient*>(data)->offered_(name, interface, version);
    }
    static void removed(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

    static constexpr wl_registry_listener registry{.global = added, .global_remove = removed};
};

WaylandClient::WaylandClient(const std::filesystem::path& socket, Offered offered)
    : offered_(std::move(offered)), display_(wl_display_connect(socket.c_str())) {
    if (!display_) {
        throw std::runtime_error("cannot connect to " + socket.native());
    }
    registry_.reset(wl_display_get_registry(display_.get()));
    wl_registry_add_listener(registry_.get(), &Callbacks::registry, this);
}

void WaylandClient::synchronise() {
    if (wl_display_roundtrip(display_.get()) < 0) {
        throw std::runtime_error("the compositor went away");
    }
}

void WaylandClient::waitForEvents() {
    if (wl_display_dispatch(display_.get()) < 0) {
        throw std::runtime_error("the compositor went away");
    }
}

FileDescriptor memoryFile(std::size_t size) {
    FileDescriptor file(memfd_create("vantrel-test", MFD_CLOEXEC));
    if (!file.isOpen() || ftruncate(file.get(), static_cast<off_t>(size)) != 0) {
        throw std::runtime_error("no memory file");
    }
    return file;
}

FileDescriptor memoryFile(std::string_view content) {
    FileDescriptor file = memoryFile(content.size());
    if (write(file.get(), content.data(), content.size()) != static_cast<ssize_t>(content.size())) {
        throw std::runtime_error("no memory file");
    }
    return file;
}

}  // namespace vantrel::desk
