#pragma once

#include <chrono>
#include <cstdint>

#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::x11 {

/// Tells a key's first press from its repeats. A release does not always come to the client that got the press: when
/// two hot keys overlap, the second key's may go to whoever has the focus. So while a key is held, and only then,
/// releases are also watched as raw events, which no grab can take away (X Input 2.1). The watch begins a little after
/// the press, with a look at the keys that are held, so that nothing stands between the press and what it sets off.
class HeldKeyWatch {
  public:
    explicit HeldKeyWatch(X11Connection& connection) : connection_(connection) {}
    ~HeldKeyWatch() = default;
    HeldKeyWatch(const HeldKeyWatch&) = delete;
    HeldKeyWatch& operator=(const HeldKeyWatch&) = delete;

    /// Notes the press; false when the key was held already, so that the press is a repeat.
    bool press(std::uint8_t keycode);

    /// Takes these keys for held, although their presses went to others.
    void holdAll(const KeySet& keys);

    void release(std::uint8_t keycode);

    /// Takes note of a raw release; true when the event was one.
    bool handleRawRelease(const xcb_generic_event_t& event);

  private:
    void watchAfter(std::chrono::milliseconds delay);
    void beginWatch();
    void selectRawReleases(bool isWanted);

    X11Connection& connection_;
    KeySet held_;
    bool isWatching_ = false;
    LoopSource begin_;
};

}  // namespace vantrel::x11
