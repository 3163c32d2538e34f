#pragma once

#include <memory>

#include "tests/desk/wayland/support/WaylandClient.hpp"

struct ext_session_lock_manager_v1;
struct ext_session_lock_v1;

namespace vantrel::desk {

/// A locker without anything to show: the session is locked as long as this object lives.
class ScreenLock {
  public:
    /// Waits until the session is locked. Null where no program can lock it (sway before 1.8); throws when it fails.
    static std::unique_ptr<ScreenLock> lock(const std::filesystem::path& socket);
    ~ScreenLock();
    ScreenLock(const ScreenLock&) = delete;
    ScreenLock& operator=(const ScreenLock&) = delete;

  private:
    struct Callbacks;
    explicit ScreenLock(const std::filesystem::path& socket);

    ext_session_lock_manager_v1* manager_ = nullptr;
    WaylandClient client_;
    ext_session_lock_v1* lock_ = nullptr;
    bool isLocked_ = false;
};

}  // namespace vantrel::desk
