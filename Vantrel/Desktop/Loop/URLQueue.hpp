#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// URLs on their way to the delegate: in order, one in a turn of the loop and after everything that a person waits for,
/// so that a list of a hundred thousand does not hold up a hot key. Main thread only.
class URLQueue {
  public:
    using Sink = std::function<void(std::string url)>;
    /// Gives the next URL; false when there is none left.
    using Reader = std::function<bool(std::string& url)>;

    /// Nothing is handed to the sink before resume(). Null means the default context.
    explicit URLQueue(Sink sink, GMainContext* context = nullptr);
    ~URLQueue() = default;
    URLQueue(const URLQueue&) = delete;
    URLQueue& operator=(const URLQueue&) = delete;

    void append(std::vector<std::string> urls);

    /// Appends a list that is read while it is served, so that it need not be copied whole.
    void append(Reader reader) { readers_.push_back(std::move(reader)); }

    /// Begins to hand over.
    void resume() { isSuspended_ = false; }

  private:
    void serveNext();

    Sink sink_;
    std::deque<Reader> readers_;
    std::size_t servedInBurst_ = 0;
    bool isSuspended_ = true;
    LoopSource source_;
};

}  // namespace vantrel::desktop
