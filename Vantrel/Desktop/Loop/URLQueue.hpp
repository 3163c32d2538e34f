#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// URLs on their way to the delegate: in order, a slice in a turn of the loop and after everything that a person waits
/// for, so that a list of a hundred thousand does not hold up a hot key. Main thread only.
class URLQueue {
  public:
    using Sink = std::function<void(std::string url)>;
    /// Gives the next URL; false when there is none left.
    using Reader = std::function<bool(std::string& url)>;

    /// The most URLs that are served without looking for what goes first: a handful of jumps, well below a millisecond.
    static constexpr std::size_t sliceLength = 8;

    /// The processor time after which a slice is over even so: to save the ten-thousandth point takes far longer than
    /// a jump.
    static constexpr std::chrono::milliseconds sliceTime{2};

    /// Nothing is handed to the sink before resume(). Null means the default context.
    explicit URLQueue(Sink sink, GMainContext* context = nullptr);
    ~URLQueue() = default;
    URLQueue(const URLQueue&) = delete;
    URLQueue& operator=(const URLQueue&) = delete;

    void append(std::vector<std::string> urls);

    /// Appends a list that is read while it is served, so that it need not be copied whole.
    void append(Reader reader);

    /// Begins to hand over.
    void resume();

  private:
    void serveSlice();
    bool takeNext(std::string& url);

    Sink sink_;
    std::deque<Reader> readers_;
    std::size_t servedInBurst_ = 0;
    bool isSuspended_ = true;
    LoopSource source_;
};

}  // namespace vantrel::desktop
