#pragma once

#include <xcb/record.h>

#include <chrono>
#include <optional>
#include <string>

#include "tests/desk/support/Wait.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::bench {

/// Hears from the X server (RECORD extension) of the first key that any program grabs from now on, without standing in
/// that program's way. The connection's own program must not grab any.
class GrabWatch {
  public:
    /// Throws when the server does not let it.
    explicit GrabWatch(const std::string& displayName);
    ~GrabWatch();
    GrabWatch(const GrabWatch&) = delete;
    GrabWatch& operator=(const GrabWatch&) = delete;

    /// When the server carried out the first such request, as told here; none when there is none before the deadline.
    std::optional<std::chrono::steady_clock::time_point> waitForGrab(desk::Duration deadline = desk::generousDeadline);

  private:
    desk::XConnection control_;
    desk::XConnection data_;
    xcb_record_context_t context_;
    xcb_record_enable_context_cookie_t cookie_;
};

}  // namespace vantrel::bench
