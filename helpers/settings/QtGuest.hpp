#pragma once

#include <QApplication>
#include <array>
#include <memory>
#include <optional>
#include <string>

namespace vantrel::qt {

/// Qt as a guest in a process that has its own main loop, signals, session handling and locale. Without exec(): GLib's
/// default main context, run by the host, serves Qt's events too. Made once, on the main thread.
class QtGuest final : public QObject {
  public:
    /// Starts Qt on the windowing system ("xcb", "offscreen"). Null with one line in `problem` when it cannot run here;
    /// asked on its own, Qt would end the process.
    static std::unique_ptr<QtGuest> start(const std::string& windowingSystem, std::string& problem);

    ~QtGuest() override;

    /// Carries out the deletions that Qt puts off until its own loop ends a turn, which never happens in a guest.
    static void flushDeferredDeletions();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit QtGuest(const std::string& windowingSystem);

    void flushSoon();

    // QApplication keeps references to its arguments.
    std::string programName_ = "vantrel";
    std::string platformOption_ = "-platform";
    std::string platform_;
    std::array<char*, 4> arguments_{};
    int argumentCount_ = 3;
    std::optional<QApplication> application_;
    unsigned flushSource_ = 0;  ///< of GLib's main context; 0 while there is nothing to flush
};

}  // namespace vantrel::qt
