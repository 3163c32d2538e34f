#pragma once

#include <QWidget>

struct wl_display;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;
struct zwp_keyboard_shortcuts_inhibitor_v1;

namespace vantrel::qt {

/// Asks a Wayland compositor to leave the keys of its own shortcuts to a window, for as long as this object lives and
/// the window has the keyboard (keyboard-shortcuts-inhibit protocol). Does nothing where the compositor knows no such
/// thing.
class ShortcutsInhibitor {
  public:
    /// The window is shown.
    explicit ShortcutsInhibitor(QWidget& window);
    ~ShortcutsInhibitor();
    ShortcutsInhibitor(const ShortcutsInhibitor&) = delete;
    ShortcutsInhibitor& operator=(const ShortcutsInhibitor&) = delete;

  private:
    wl_display* display_ = nullptr;  ///< Qt's
    zwp_keyboard_shortcuts_inhibit_manager_v1* manager_ = nullptr;
    zwp_keyboard_shortcuts_inhibitor_v1* inhibitor_ = nullptr;
};

}  // namespace vantrel::qt
