#pragma once

#include <memory>
#include <span>
#include <vector>

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"
#include "Vantrel/Backends/Wayland/Registry.hpp"

namespace vantrel::wayland {

/// An output with its handle, which can be sent to as long as it is held, also when the output has gone: events are
/// handled in every wait, and so between the reading of the outputs and their use.
struct Output {
    std::uint32_t global = 0;
    std::shared_ptr<wl_output> handle{};
    OutputDescription description{};
};

/// The output that holds the point, else the nearest one. There is one at least.
const Output& outputAt(std::span<const Output> outputs, LayoutPoint point);

/// The outputs of a compositor, kept by its events; the main one where it offers KDE's order of outputs.
class Outputs {
  public:
    /// The manager and the registry outlive this object.
    Outputs(Registry& registry, zxdg_output_manager_v1& manager);
    ~Outputs();
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;

    /// The outputs that are there, as far as they are known.
    [[nodiscard]] std::vector<Output> current() const;

    /// Grows with each change.
    [[nodiscard]] unsigned generation() const { return generation_; }

  private:
    struct Tracked;
    struct Callbacks;

    void add(const Registry::Global& global);
    void remove(std::uint32_t global);

    Registry& registry_;
    zxdg_output_manager_v1& manager_;
    std::vector<std::shared_ptr<Tracked>> tracked_;
    WaylandPointer<kde_output_order_v1> order_;  ///< where the compositor has one
    std::string firstInOrder_;
    std::string firstInNextOrder_;  ///< in force with `done`
    unsigned generation_ = 0;
};

}  // namespace vantrel::wayland
