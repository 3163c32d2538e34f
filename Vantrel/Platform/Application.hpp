#pragma once

#include <string>
#include <vector>

namespace vantrel {

enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

/// The process as the desktop sees it.
class Application {
  public:
    virtual ~Application() = default;

    /// Accessory: no task-bar entry and no menu bar.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// Brings the application to the front, before others if so asked.
    virtual void activate(bool ignoringOtherApps) = 0;

    /// Ends the main loop in the ordinary way; the delegate is told before the process ends.
    virtual void terminate() = 0;
};

/// What the platform tells the application's controller, always on the main thread.
class ApplicationDelegate {
  public:
    virtual ~ApplicationDelegate() = default;

    /// Once, after the main loop has started.
    virtual void applicationDidFinishLaunching() = 0;

    /// Once, before the process ends.
    virtual void applicationWillTerminate() = 0;

    /// URLs to open, in order, with their text as it came.
    virtual void applicationOpen(const std::vector<std::string>& urls) = 0;

    /// The person started the program again while it runs.
    virtual void applicationDidReopen() = 0;
};

}  // namespace vantrel
