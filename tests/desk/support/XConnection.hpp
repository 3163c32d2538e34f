#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace vantrel::desk {

struct FreeDeleter {
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the deleter of what xcb allocated
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, error or event of the X server.
template <typename Reply>
using XReply = std::unique_ptr<Reply, FreeDeleter>;

/// A client of a private X server.
class XConnection {
  public:
    /// Connects; throws when the server does not let it.
    explicit XConnection(const std::string& displayName);
    ~XConnection() { xcb_disconnect(connection_); }
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// Waits until the server has carried out all that was sent.
    void synchronise();

  private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
};

}  // namespace vantrel::desk
