#include "helpers/messages/Wayland/Outputs.hpp"

#include <cmath>
#include <utility>

namespace vantrel::overlay {

namespace {

struct Description {
    int pixelsWide = 0;  ///< before the output is turned
    int pixelsHigh = 0;
    bool isTurned = false;  ///< its width and height are exchanged
    int roundedScale = 1;
    int width = 0;
    int height = 0;

    bool operator==(const Description&) const = default;
};

/// wl_output has it rounded up. How many pixels there are for how many points says it exactly, for every compositor;
/// but for the points' own rounding, which steps of a 120th (as compositors have them) take away.
double scaleOf(const Description& output) {
    const int pixels = output.isTurned ? output.pixelsHigh : output.pixelsWide;
    if (pixels <= 0 || output.width <= 0) {
        return output.roundedScale;
    }
    constexpr double steps = 120;
    return std::round(steps * pixels / output.width) / steps;
}

}  // namespace

struct Outputs::Tracked {
    Outputs& outputs;
    std::uint32_t global;
    Handle<wl_output> handle;
    Handle<zxdg_output_v1> logical;
    Description pending;  ///< what the events say, in force with the next `done`
    Description current;
};

struct Outputs::Callbacks {
    static Description& pending(void* data) { return static_cast<Tracked*>(data)->pending; }

    static void geometry(void* data, wl_output* /*output*/, std::int32_t /*x*/, std::int32_t /*y*/,
                         std::int32_t /*millimetresWide*/, std::int32_t /*millimetresHigh*/, std::int32_t /*subpixel*/,
                         const char* /*make*/, const char* /*model*/, std::int32_t transform) {
        // The quarter turns, also of what is flipped, have the odd numbers.
        pending(data).isTurned = transform % 2 != 0;
    }
    static void mode(void* data, wl_output* /*output*/, std::uint32_t flags, std::int32_t width, std::int32_t height,
                     std::int32_t /*refresh*/) {
        if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
            pending(data).pixelsWide = width;
            pending(data).pixelsHigh = height;
        }
    }
    static void scale(void* data, wl_output* /*output*/, std::int32_t factor) { pending(data).roundedScale = factor; }
    static void logicalSize(void* data, zxdg_output_v1* /*output*/, std::int32_t width, std::int32_t height) {
        pending(data).width = width;
        pending(data).height = height;
    }
    static void done(void* data, wl_output* /*output*/) {
        auto& output = *static_cast<Tracked*>(data);
        if (output.current != output.pending) {
            output.current = output.pending;
            ++output.outputs.generation_;
        }
    }
    /// Only before version 3, where the output's own `done` speaks for both.
    static void logicalDone(void* data, zxdg_output_v1* /*output*/) { done(data, nullptr); }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_output_listener outputListener{
        .geometry = geometry, .mode = mode, .done = done, .scale = scale, .name = unused, .description = unused};
    static constexpr zxdg_output_v1_listener logical{.logical_position = unused,
                                                     .logical_size = logicalSize,
                                                     .done = logicalDone,
                                                     .name = unused,
                                                     .description = unused};
};

Outputs::Outputs() = default;
Outputs::~Outputs() = default;

void Outputs::add(std::uint32_t global, Handle<wl_output> handle, zxdg_output_manager_v1& manager) {
    Handle<zxdg_output_v1> logical(zxdg_output_manager_v1_get_xdg_output(&manager, handle.get()));
    tracked_.push_back(
        std::make_unique<Tracked>(Tracked{*this, global, std::move(handle), std::move(logical), {}, {}}));
    Tracked& added = *tracked_.back();
    wl_output_add_listener(added.handle.get(), &Callbacks::outputListener, &added);
    zxdg_output_v1_add_listener(added.logical.get(), &Callbacks::logical, &added);
}

void Outputs::remove(std::uint32_t global) {
    if (std::erase_if(tracked_, [global](const auto& output) { return output->global == global; }) > 0) {
        ++generation_;
    }
}

std::vector<Output> Outputs::current() const {
    std::vector<Output> outputs;
    for (const auto& output : tracked_) {
        const Description& known = output->current;
        if (known.width > 0 && known.height > 0) {
            outputs.push_back({.global = output->global,
                               .handle = output->handle.get(),
                               .bounds = {.x = 0, .y = 0, .width = known.width, .height = known.height},
                               .scale = scaleOf(known)});
        }
    }
    return outputs;
}

}  // namespace vantrel::overlay
