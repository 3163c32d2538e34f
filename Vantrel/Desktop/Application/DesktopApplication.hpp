#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Desktop/Application/BusApplication.hpp"
#include "Vantrel/Desktop/Application/SessionBus.hpp"
#include "Vantrel/Desktop/Application/TerminationSignals.hpp"
#include "Vantrel/Desktop/Loop/URLQueue.hpp"
#include "Vantrel/Platform/Application.hpp"

namespace vantrel {
class MainQueue;
}

namespace vantrel::desktop {

/// The process on a Linux desktop: runs the default main context, tells the delegate what the desktop wants, ends in
/// the ordinary way. Main thread only.
class DesktopApplication final : public Application {
  public:
    /// `busConnected` is called at most once, when there is a session bus: its connection is the process's shared one.
    DesktopApplication(MainQueue& mainQueue, SessionBus::Connected busConnected);
    ~DesktopApplication() override;
    DesktopApplication(const DesktopApplication&) = delete;
    DesktopApplication& operator=(const DesktopApplication&) = delete;

    /// Held weakly.
    void setDelegate(const std::shared_ptr<ApplicationDelegate>& delegate) { delegate_ = delegate; }

    /// URLs for the delegate, one by one, after it has launched.
    void open(std::vector<std::string> urls) { urls_.append(std::move(urls)); }

    /// The person started the program although it runs.
    void reopen();

    /// Runs the main loop until the application ends, and returns the exit status of the process.
    int run();

    /// Ends like terminate(), but with the message in a line on stderr and exit status 1.
    void fail(const std::string& message);

    /// Nothing to do: a process without windows is an accessory already.
    void setActivationPolicy(ActivationPolicy policy) override;

    /// Nothing to do: windows come to the front one by one, and each does it itself.
    void activate(bool ignoringOtherApps) override;

    void terminate() override;

  private:
    void launch();
    void busConnected(GDBusConnection* bus);
    void openURL(std::string url);

    MainQueue& mainQueue_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    SessionBus::Connected busConnected_;
    TerminationSignals signals_;
    URLQueue urls_;
    SessionBus bus_;
    std::unique_ptr<BusApplication> busApplication_;
    bool hasEnded_ = false;
    int exitStatus_ = 0;
};

}  // namespace vantrel::desktop
