#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Platform/Desktop/SourceHandles.hpp"

namespace vantrel::desktop {

/// URLs on their way to the delegate: in order, a slice in a turn of the loop and after everything that a person waits
/// for, so that a list of a hundred thousand does not hold up a hot key. Main thread only.
class URLQueue {
  public:
    using Sink = std::function<void(const std::vector<std::string>& urls)>;
    /// Gives the next URL; false when there is none left.
    using Reader = std::function<bool(std::string& url)>;

    /// URLs in a slice: a handful of jumps, below a millisecond or two.
    static constexpr std::size_t sliceLength = 8;

    /// Nothing is handed to the sink before resume(). Null means the default context.
    explicit URLQueue(Sink sink, GMainContext* context = nullptr);
    ~URLQueue();
    URLQueue(const URLQueue&) = delete;
    URLQueue& operator=(const URLQueue&) = delete;

    void append(std::vector<std::string> urls);

    /// Appends a list that is read while it is served, so that it need not be copied whole.
    void append(Reader reader);

    /// Begins to hand over.
    void resume();

  private:
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    void serveSlice();
    std::vector<std::string> takeSlice();

    Sink sink_;
    std::deque<Reader> readers_;
    std::size_t servedInBurst_ = 0;
    bool isSuspended_ = true;
    SourceHandle source_;
};

}  // namespace vantrel::desktop
