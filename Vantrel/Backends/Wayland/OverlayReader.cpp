#include "Vantrel/Backends/Wayland/OverlayReader.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::wayland {

namespace {

/// How long the compositor may keep silent after it has handled everything: it will not tell then.
constexpr std::chrono::milliseconds silence{10};

constexpr std::uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                   ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;

/// One transparent pixel; none where there is no memory.
WaylandPointer<wl_buffer> makePixel(wl_shm& shm) {
    constexpr std::int32_t bytes = 4;
    const FileDescriptor memory(memfd_create("vantrel-pixel", MFD_CLOEXEC));
    if (!memory.isOpen() || ftruncate(memory.get(), bytes) != 0) {
        return nullptr;
    }
    const WaylandPointer<wl_shm_pool> pool(wl_shm_create_pool(&shm, memory.get(), bytes));
    return WaylandPointer<wl_buffer>(wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, bytes, WL_SHM_FORMAT_ARGB8888));
}

}  // namespace

/// A surface over an output. It comes as soon as the compositor says how large it is to be.
class OverlayReader::Surface {
  public:
    Surface(const Tools& tools, wl_buffer* content, wl_output* output)
        : content_(content),
          surface_(wl_compositor_create_surface(&tools.compositor)),
          viewport_(wp_viewporter_get_viewport(&tools.viewporter, surface_.get())),
          layer_(zwlr_layer_shell_v1_get_layer_surface(&tools.layerShell, surface_.get(), output,
                                                       ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "vantrel")) {
        static constexpr zwlr_layer_surface_v1_listener listener{.configure = configured, .closed = closed};
        zwlr_layer_surface_v1_add_listener(layer_.get(), &listener, this);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    /// Over all of the output, also over panels.
    void cover() {
        zwlr_layer_surface_v1_set_anchor(layer_.get(), allEdges);
        zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), -1);
        wl_surface_commit(surface_.get());
    }

    [[nodiscard]] wl_surface* get() const { return surface_.get(); }
    /// Whether it is there, or will never be because its output is gone.
    [[nodiscard]] bool isDecided() const { return isDecided_; }

  private:
    static void configured(void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
                           std::uint32_t height) {
        auto& self = *static_cast<Surface*>(data);
        zwlr_layer_surface_v1_ack_configure(layer, serial);
        // Later ones repeat the size; all the surface is for is being there.
        if (self.isDecided_ || width == 0 || height == 0) {
            return;
        }
        wp_viewport_set_destination(self.viewport_.get(), static_cast<std::int32_t>(width),
                                    static_cast<std::int32_t>(height));
        wl_surface_attach(self.get(), self.content_, 0, 0);
        wl_surface_damage_buffer(self.get(), 0, 0, 1, 1);
        wl_surface_commit(self.get());
        self.isDecided_ = true;
    }

    static void closed(void* data, zwlr_layer_surface_v1* /*layer*/) { static_cast<Surface*>(data)->isDecided_ = true; }

    wl_buffer* content_;
    WaylandPointer<wl_surface> surface_;
    WaylandPointer<wp_viewport> viewport_;
    WaylandPointer<zwlr_layer_surface_v1> layer_;
    bool isDecided_ = false;
};

OverlayReader::OverlayReader(WaylandConnection& connection, const Tools& tools, Seat& seat, VirtualPointers& pointers,
                             LookAgain lookAgain)
    : connection_(connection),
      tools_(tools),
      seat_(seat),
      pointers_(pointers),
      lookAgain_(std::move(lookAgain)),
      transparent_(makePixel(tools.shm)) {}

bool OverlayReader::ensurePointer(Clock::time_point deadline) {
    if (seat_.hasPointer()) {
        return true;
    }
    pointers_.provideDevice();
    return connection_.waitFor([this] { return seat_.hasPointer(); }, deadline);
}

std::optional<LayoutPoint> OverlayReader::read(std::span<const Output> outputs, Clock::time_point deadline) {
    if (!transparent_ || !ensurePointer(deadline)) {
        return std::nullopt;
    }
    seat_.forgetEntry();
    std::vector<std::unique_ptr<Surface>> surfaces;
    for (const Output& output : outputs) {
        surfaces.push_back(std::make_unique<Surface>(tools_, transparent_.get(), output.handle.get()));
        surfaces.back()->cover();
    }
    const auto isEntered = [this] { return seat_.entry().surface != nullptr; };
    const bool allCame = connection_.waitFor(
        [&] {
            return isEntered() || std::all_of(surfaces.begin(), surfaces.end(),
                                              [](const auto& surface) { return surface->isDecided(); });
        },
        deadline);
    // Not longer than needed: the compositor may paint what has come before it handles the rest.
    if (allCame && !isEntered() && connection_.synchronize(deadline, isEntered) && !isEntered()) {
        lookAgain_();
        connection_.waitFor(isEntered, std::min(deadline, Clock::now() + silence));
    }
    std::optional<LayoutPoint> place;
    for (std::size_t index = 0; index < surfaces.size(); ++index) {
        if (surfaces[index]->get() == seat_.entry().surface) {
            const OutputDescription& output = outputs[index].description;
            const LayoutPoint& onSurface = seat_.entry().onSurface;
            place = LayoutPoint{output.x + onSurface.x, output.y + onSurface.y};
        }
    }
    seat_.forgetEntry();
    surfaces.clear();
    connection_.flush();
    afterwards_ = LoopSource::whenIdle([this] { lookAfterwards(silence); });
    return place;
}

void OverlayReader::lookAfterwards(std::chrono::milliseconds patience) {
    if (connection_.synchronize(Clock::now() + silence)) {
        lookAgain_();
        connection_.flush();
        return;
    }
    // The compositor is busy, or stopped: until it has looked, the program beneath knows of no pointer.
    afterwards_ = LoopSource::after(patience, [this, patience] { lookAfterwards(2 * patience); });
}

}  // namespace vantrel::wayland
