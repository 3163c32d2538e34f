#pragma once

#include <optional>

#include "Vantrel/Backends/Common/DisplayList.hpp"
#include "Vantrel/Backends/Gnome/ShellExtension.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/PointerServices.hpp"

namespace vantrel::gnome {

/// The displays, as Mutter tells of them, and the pointer, by the extension: in the global display space, which only
/// this object and they know apart.
class GnomeScreen final : public PointerReader, public PointerWarper {
  public:
    GnomeScreen(GObjectPointer<GDBusConnection> bus, ShellExtension& extension);
    ~GnomeScreen() override;
    GnomeScreen(const GnomeScreen&) = delete;
    GnomeScreen& operator=(const GnomeScreen&) = delete;

    DisplayServices& displays() { return displays_; }

    std::optional<CGEvent> CGEventCreate() override;
    CGPoint CGEventGetLocation(const CGEvent& event) override { return event.location; }
    void CGWarpMouseCursorPosition(CGPoint position) override;
    /// Wayland never parts the mouse from the pointer.
    void CGAssociateMouseAndMouseCursorPosition(bool /*connected*/) override {}

    /// Where the pointer was when a key was pressed, for what the press sets off.
    void takePlace(wayland::LayoutPoint place);

    /// The loop may sleep from now on: what is known of the pointer no longer counts.
    void beginTurn() { freshPointer_.reset(); }

  private:
    struct Callbacks;
    void refreshLayout(Clock::time_point deadline);

    GObjectPointer<GDBusConnection> bus_;
    ShellExtension& extension_;
    guint changes_;
    bool isLayoutStale_ = true;
    backend::DisplayLayout layout_;
    backend::DisplayList displays_;
    std::optional<CGPoint> freshPointer_;
    /// Reads a changed layout while nobody waits for it, so that the next press finds it ready.
    LoopSource layoutTask_;
};

}  // namespace vantrel::gnome
