#include "tests/desk/wayland/support/ScreenLock.hpp"

#include <ext-session-lock-v1.h>

#include <stdexcept>

#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

struct ScreenLock::Callbacks {
    static void locked(void* data, ext_session_lock_v1* /*lock*/) { static_cast<ScreenLock*>(data)->isLocked_ = true; }
    static void finished(void* /*data*/, ext_session_lock_v1* /*lock*/) {}

    static constexpr ext_session_lock_v1_listener listener{.locked = locked, .finished = finished};
};

ScreenLock::ScreenLock(const std::filesystem::path& socket)
    : client_(socket, [this](std::uint32_t name, std::string_view interface, std::uint32_t /*version*/) {
          if (interface == ext_session_lock_manager_v1_interface.name) {
              manager_ = client_.bind<ext_session_lock_manager_v1>(name, ext_session_lock_manager_v1_interface, 1);
          }
      }) {
    client_.synchronise();
}

std::unique_ptr<ScreenLock> ScreenLock::lock(const std::filesystem::path& socket) {
    std::unique_ptr<ScreenLock> self(new ScreenLock(socket));
    if (self->manager_ == nullptr) {
        return nullptr;
    }
    self->lock_ = ext_session_lock_manager_v1_lock(self->manager_);
    ext_session_lock_v1_add_listener(self->lock_, &Callbacks::listener, self.get());
    const bool isLocked = waitUntil([&] {
        self->client_.synchronise();
        return self->isLocked_;
    });
    if (!isLocked) {
        throw std::runtime_error("the session is not locked");
    }
    return self;
}

ScreenLock::~ScreenLock() {
    if (isLocked_) {
        ext_session_lock_v1_unlock_and_destroy(lock_);
        client_.synchronise();
    }
    if (manager_ != nullptr) {
        ext_session_lock_manager_v1_destroy(manager_);
    }
}

}  // namespace vantrel::desk
