#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Vantrel/Backends/Common/BusCall.hpp"
#include "Vantrel/Backends/Wayland/OutputLayout.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Platform/KeyboardCapture.hpp"

namespace vantrel::gnome {

using backend::Clock;

/// Vantrel's own extension of GNOME Shell (extensions/gnome-shell), as it serves the session's agent over the bus. It
/// may come and go, as with the lock of the screen, and a new one knows nothing of what the former was told.
class ShellExtension {
  public:
    struct Events {
        std::function<void()> presenceChanged;
        /// The hot key of that number, with the pointer's place at that moment.
        std::function<void(std::uint32_t number, wayland::LayoutPoint place)> pressed;
        std::function<void(std::uint32_t row)> rowChosen;
        /// While the extension captures the keyboard.
        std::function<void(const CapturedKey& key)> key;
        std::function<void()> captureEnded;
    };

    explicit ShellExtension(GObjectPointer<GDBusConnection> bus);
    ~ShellExtension();
    ShellExtension(const ShellExtension&) = delete;
    ShellExtension& operator=(const ShellExtension&) = delete;

    /// Takes the name by which the extension knows the agent, and waits for the extension's answer if it is there.
    /// False when another program has the name. The events come on the main loop.
    bool open(Events events);

    /// Whether it is there, and speaks as this agent does.
    [[nodiscard]] bool isPresent() const { return !owner_.empty(); }

    /// One line for a person: why it is not there.
    [[nodiscard]] std::string whyMissing() const;

    /// Calls a method and waits for the answer, of that type; null when there is none until the deadline. Takes
    /// floating arguments over.
    GVariantPointer ask(const char* method, GVariant* arguments, const char* answerType, Clock::time_point deadline);

    /// Calls a method and waits for nothing. Calls are carried out in the order in which they are made.
    void tell(const char* method, GVariant* arguments = nullptr);

  private:
    struct Callbacks;
    void take(std::string owner, GVariant* version);
    void forget();

    GObjectPointer<GDBusConnection> bus_;
    Events events_;
    std::string owner_;  ///< of the extension's name; empty while it is not there
    bool isOtherVersion_ = false;
    GObjectPointer<GCancellable> reading_;  ///< the version of one that has just come
    guint signals_ = 0;
    guint watch_ = 0;
};

}  // namespace vantrel::gnome
