#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "helpers/messages/Rect.hpp"
#include "helpers/messages/Wayland/Handles.hpp"

namespace vantrel::overlay {

/// A display of the compositor.
struct Output {
    std::uint32_t global = 0;  ///< its number for as long as it is there
    wl_output* handle = nullptr;
    Rect bounds;       ///< in its own coordinates, which begin at 0, in points
    double scale = 1;  ///< pixels for a point
};

/// The displays, kept by the compositor's events.
class Outputs {
  public:
    Outputs();
    ~Outputs();
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;

    void add(std::uint32_t global, Handle<wl_output> handle, zxdg_output_manager_v1& manager);
    void remove(std::uint32_t global);

    /// The displays whose size is known.
    [[nodiscard]] std::vector<Output> current() const;

    /// Grows with each change.
    [[nodiscard]] unsigned generation() const { return generation_; }

  private:
    struct Tracked;
    struct Callbacks;

    std::vector<std::unique_ptr<Tracked>> tracked_;
    unsigned generation_ = 0;
};

}  // namespace vantrel::overlay
