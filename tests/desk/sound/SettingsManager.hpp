#pragma once

#include <xcb/xcb.h>

#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// A desktop's settings manager (XSETTINGS protocol) that publishes one setting: whether event sounds are wanted.
class SettingsManager {
  public:
    explicit SettingsManager(XConnection& connection);

    void publishEventSounds(bool areEnabled);

  private:
    xcb_atom_t atom(const char* name);

    XConnection& connection_;
    xcb_window_t window_;
};

}  // namespace vantrel::desk
