#include "Vantrel/Backends/Wayland/Outputs.hpp"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace vantrel::wayland {

namespace {

constexpr std::uint32_t versionWithNames = 4;  // of wl_output; before that xdg-output tells them

/// How far it is from the coordinate to the range; 0 within.
double distance(double coordinate, std::int32_t from, std::int32_t length) {
    return std::max({from - coordinate, coordinate - from - length, 0.0});
}

}  // namespace

const Output& outputAt(std::span<const Output> outputs, LayoutPoint point) {
    const Output* nearest = outputs.data();
    double least = std::numeric_limits<double>::infinity();
    for (const Output& output : outputs) {
        const OutputDescription& place = output.description;
        // The right and the lower edge belong to the neighbour.
        const bool holds = point.x >= place.x && point.x - place.x < place.width && point.y >= place.y &&
                           point.y - place.y < place.height;
        const double x = distance(point.x, place.x, place.width);
        const double y = distance(point.y, place.y, place.height);
        const double away = holds ? -1 : x * x + y * y;
        if (place.width > 0 && place.height > 0 && away < least) {
            least = away;
            nearest = &output;
        }
    }
    return *nearest;
}

struct Outputs::Tracked {
    Outputs& outputs;
    std::uint32_t global;
    WaylandPointer<wl_output> handle;
    WaylandPointer<zxdg_output_v1> geometry;
    OutputDescription pending;  ///< what the events say, in force with the next `done`
    OutputDescription current;
};

struct Outputs::Callbacks {
    static Tracked& tracked(void* data) { return *static_cast<Tracked*>(data); }

    static void geometry(void* data, wl_output* /*output*/, std::int32_t /*x*/, std::int32_t /*y*/,
                         std::int32_t /*millimetresWide*/, std::int32_t /*millimetresHigh*/, std::int32_t /*subpixel*/,
                         const char* /*make*/, const char* /*model*/, std::int32_t transform) {
        tracked(data).pending.transform = transform;
    }
    static void mode(void* data, wl_output* /*output*/, std::uint32_t flags, std::int32_t width, std::int32_t height,
                     std::int32_t /*refresh*/) {
        if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
            tracked(data).pending.pixelsWide = width;
            tracked(data).pending.pixelsHigh = height;
        }
    }
    static void done(void* data, wl_output* /*output*/) {
        Tracked& self = tracked(data);
        if (self.current != self.pending) {
            self.current = self.pending;
            ++self.outputs.generation_;
        }
    }
    static void named(void* data, wl_output* /*output*/, const char* name) { tracked(data).pending.name = name; }

    static void logicalPosition(void* data, zxdg_output_v1* /*output*/, std::int32_t x, std::int32_t y) {
        tracked(data).pending.x = x;
        tracked(data).pending.y = y;
    }
    static void logicalSize(void* data, zxdg_output_v1* /*output*/, std::int32_t width, std::int32_t height) {
        tracked(data).pending.width = width;
        tracked(data).pending.height = height;
    }
    /// Only before version 3, where the output's own `done` speaks for both.
    static void logicalDone(void* data, zxdg_output_v1* /*output*/) { done(data, nullptr); }
    static void logicalName(void* data, zxdg_output_v1* /*output*/, const char* name) {
        tracked(data).pending.name = name;
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static void ordered(void* data, kde_output_order_v1* /*order*/, const char* name) {
        auto& self = *static_cast<Outputs*>(data);
        if (self.firstInNextOrder_.empty()) {
            self.firstInNextOrder_ = name;
        }
    }
    static void orderDone(void* data, kde_output_order_v1* /*order*/) {
        auto& self = *static_cast<Outputs*>(data);
        self.firstInOrder_ = std::exchange(self.firstInNextOrder_, {});
        ++self.generation_;
    }

    static constexpr kde_output_order_v1_listener order{.output = ordered, .done = orderDone};
    static constexpr wl_output_listener output{
        .geometry = geometry, .mode = mode, .done = done, .scale = unused, .name = named, .description = unused};
    static constexpr zxdg_output_v1_listener logical{.logical_position = logicalPosition,
                                                     .logical_size = logicalSize,
                                                     .done = logicalDone,
                                                     .name = logicalName,
                                                     .description = unused};
};

Outputs::Outputs(Registry& registry, zxdg_output_manager_v1& manager)
    : registry_(registry),
      manager_(manager),
      order_(registry.bindFirst<kde_output_order_v1>(kde_output_order_v1_interface, 1)) {
    if (order_) {
        kde_output_order_v1_add_listener(order_.get(), &Callbacks::order, this);
    }
    registry.setListener([this](const Registry::Global& global) { add(global); },
                         [this](std::uint32_t global) { remove(global); });
}

Outputs::~Outputs() {
    registry_.setListener([](const Registry::Global& /*global*/) {}, [](std::uint32_t /*global*/) {});
}

void Outputs::add(const Registry::Global& global) {
    if (global.interface != std::string_view(wl_output_interface.name)) {
        return;
    }
    auto handle = registry_.bind<wl_output>(global, wl_output_interface, versionWithNames);
    wl_output* const output = handle.get();
    WaylandPointer<zxdg_output_v1> geometry(zxdg_output_manager_v1_get_xdg_output(&manager_, output));
    zxdg_output_v1* const logical = geometry.get();
    tracked_.push_back(
        std::make_shared<Tracked>(Tracked{*this, global.name, std::move(handle), std::move(geometry), {}, {}}));
    wl_output_add_listener(output, &Callbacks::output, tracked_.back().get());
    zxdg_output_v1_add_listener(logical, &Callbacks::logical, tracked_.back().get());
}

void Outputs::remove(std::uint32_t global) {
    if (std::erase_if(tracked_, [global](const auto& output) { return output->global == global; }) > 0) {
        ++generation_;
    }
}

std::vector<Output> Outputs::current() const {
    std::vector<Output> outputs;
    for (const auto& output : tracked_) {
        if (output->current.width > 0 && output->current.height > 0) {
            // With all that the handle's events are told to.
            std::shared_ptr<wl_output> handle(output, output->handle.get());
            outputs.push_back({output->global, std::move(handle), output->current});
            outputs.back().description.isMain = output->current.name == firstInOrder_;
        }
    }
    return outputs;
}

}  // namespace vantrel::wayland
