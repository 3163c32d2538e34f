#pragma once

#include <QApplication>
#include <array>
#include <memory>
#include <string>

namespace vantrel::qt {

/// Qt for the program that draws the settings window: never a session of its own, and no end with its last window.
class QtApplication final {
  public:
    /// Starts Qt on the windowing system ("xcb", "wayland", "offscreen"). Null with one line in `problem` when it
    /// cannot run here; asked on its own, Qt would end the process.
    static std::unique_ptr<QtApplication> start(const std::string& windowingSystem, std::string& problem);

    QtApplication(const QtApplication&) = delete;
    QtApplication& operator=(const QtApplication&) = delete;

  private:
    explicit QtApplication(const std::string& windowingSystem);

    // QApplication keeps references to its arguments.
    std::string programName_ = "vantrel";
    std::string platformOption_ = "-platform";
    std::string platform_;
    std::array<char*, 4> arguments_;
    int argumentCount_ = 3;
    QApplication application_;
};

}  // namespace vantrel::qt
