#pragma once

#include <glib.h>

namespace vantrel::desktop {

/// Gives back the memory that the process does not need to wait for the next key. A few seconds after the start that is
/// what only the start has needed: it walks through every library's symbol tables and set-up code, megabytes that stay
/// counted as this process's although nothing reads them again. What is needed after all comes back from the page
/// cache.
class RestingMemory {
  public:
    RestingMemory();
    ~RestingMemory();
    RestingMemory(const RestingMemory&) = delete;
    RestingMemory& operator=(const RestingMemory&) = delete;

    /// Gives back, once more, what has come in since. Takes a millisecond: for when nothing is to be done.
    static void giveBack();

  private:
    static gboolean startIsOver(gpointer data);

    guint source_;
};

}  // namespace vantrel::desktop
