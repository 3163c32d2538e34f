#pragma once

#include <glib.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Vantrel/Backends/X11/X11Session.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

inline constexpr std::uint32_t hyperMask = 0x1B00;
inline constexpr std::uint32_t controlOptionCommandMask = 0x1900;
inline constexpr std::uint32_t keyD = 2;
inline constexpr std::uint32_t keyS = 1;
inline constexpr std::uint32_t keyM = 46;

/// The X11 side of the agent on its own, with hot keys that only count their presses.
class HotKeyProbe {
  public:
    /// Connects to the display; throws when that fails.
    explicit HotKeyProbe(const std::string& displayName);
    ~HotKeyProbe();
    HotKeyProbe(const HotKeyProbe&) = delete;
    HotKeyProbe& operator=(const HotKeyProbe&) = delete;

    /// Registers a combination under the id. Returns the platform's status.
    OSStatus add(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers);
    /// Gives up the combination that was registered under the id.
    void remove(std::uint32_t id);

    /// How often the combination was pressed, as far as the loop has been turned.
    [[nodiscard]] int presses(std::uint32_t id) const;

    /// Turns the loop until the combination has been pressed that often; false at the deadline or beyond that number.
    bool waitForPresses(std::uint32_t id, int count);

    /// Turns the loop for a while; false as soon as any combination is pressed once more.
    bool staysQuiet(Duration time = quietTime);

    /// Turns the loop once, without waiting.
    void turnOnce();

    /// Turns the loop until the condition holds; false at the deadline.
    bool turnUntil(const std::function<bool()>& condition, Duration deadline = generousDeadline);

    x11::X11Session& platform() { return *platform_; }

  private:
    static OSStatus pressed(EventHandlerCallRef call, EventRef event, void* userData);

    std::unique_ptr<x11::X11Session> platform_;
    EventHandlerRef handler_ = nullptr;
    std::map<std::uint32_t, EventHotKeyRef> hotKeys_;
    std::map<std::uint32_t, int> presses_;
};

}  // namespace vantrel::desk
