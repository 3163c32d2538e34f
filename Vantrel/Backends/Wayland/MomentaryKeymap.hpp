#pragma once

#include <functional>
#include <utility>

#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::wayland {

/// readSeatKeymap() of the seat that is served.
using ReadKeymap = std::function<KeymapPointer(Clock::time_point deadline)>;

/// The keyboard's map for the registrations of one moment, which come in a row: it takes some milliseconds to read,
/// and memory to keep.
class MomentaryKeymap {
  public:
    explicit MomentaryKeymap(ReadKeymap read) : read_(std::move(read)) {}
    // What forgets it knows where it stands.
    MomentaryKeymap(const MomentaryKeymap&) = delete;
    MomentaryKeymap& operator=(const MomentaryKeymap&) = delete;

    /// The map, which stays until the loop has nothing else to do. Null when it is not told until the deadline.
    xkb_keymap* get(Clock::time_point deadline) {
        if (!keymap_) {
            keymap_ = read_(deadline);
            forgetting_ = LoopSource::whenIdle([this] { keymap_.reset(); });
        }
        return keymap_.get();
    }

  private:
    ReadKeymap read_;
    KeymapPointer keymap_;
    LoopSource forgetting_;
};

}  // namespace vantrel::wayland
