#pragma once

#include <glib.h>

namespace vantrel::desktop {

/// Gives back, once and a few seconds after the start, the memory that only the start has needed: the start walks
/// through every library's symbol tables and set-up code, megabytes that stay counted as this process's although
/// nothing reads them again. What is needed after all comes back from the page cache.
class RestingMemory {
  public:
    RestingMemory();
    ~RestingMemory();
    RestingMemory(const RestingMemory&) = delete;
    RestingMemory& operator=(const RestingMemory&) = delete;

  private:
    static gboolean giveBack(gpointer data);

    guint source_;
};

}  // namespace vantrel::desktop
