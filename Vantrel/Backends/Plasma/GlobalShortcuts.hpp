#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/BusCall.hpp"
#include "Vantrel/Backends/Plasma/QtKeys.hpp"

namespace vantrel::plasma {

using backend::Clock;

/// Plasma's service for global shortcuts (org.kde.KGlobalAccel), as far as the hot keys need it. It stores what it is
/// told in kglobalshortcutsrc, until that is released.
class GlobalShortcuts {
  public:
    struct Events {
        /// An action's keys were pressed; again for each repeat of a key that is held, in KWin 6.3.
        std::function<void(const std::string& action)> pressed;
        std::function<void(const std::string& action)> released;
        /// The service is another one than before, with none of our actions: KWin was started anew.
        std::function<void()> replaced;
    };

    enum class Outcome {
        done,
        taken,     ///< another program has one of the keys
        noAnswer,  ///< until the deadline
    };

    /// The events come on the main loop.
    GlobalShortcuts(GObjectPointer<GDBusConnection> bus, Events events);
    ~GlobalShortcuts();
    GlobalShortcuts(const GlobalShortcuts&) = delete;
    GlobalShortcuts& operator=(const GlobalShortcuts&) = delete;

    /// Gives the keys to the action, whose name starts with a letter; all of them or none. The title is for the person,
    /// in the system settings.
    Outcome acquire(const std::string& action, const std::string& title, const std::vector<QtKey>& keys,
                    Clock::time_point deadline);

    /// Who has one of the keys, for a person to read: the action and its program. Empty when nobody has, or until the
    /// deadline nothing says so.
    std::string ownerOf(const std::vector<QtKey>& keys, Clock::time_point deadline);

    /// Takes the action and every trace of it away.
    void release(const std::string& action, Clock::time_point deadline);

    /// The same for what a killed agent has left behind.
    void releaseLeftovers(Clock::time_point deadline);

  private:
    struct Callbacks;
    GVariantPointer ask(const char* method, GVariant* arguments, const char* answerType, Clock::time_point deadline);

    GObjectPointer<GDBusConnection> bus_;
    Events events_;
    guint presses_;
    guint watch_;
    std::string owner_;  ///< of the service
};

}  // namespace vantrel::plasma
