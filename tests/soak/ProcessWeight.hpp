#pragma once

#include <sys/types.h>

#include <vector>

#include "tests/desk/support/Environment.hpp"

namespace vantrel::soak {

/// Has a process that is started so give back what it frees, so that what grows for good is seen. The C library keeps
/// up to 236 KiB for each thread, and GLib before 2.76 keeps small pieces by their sizes; both fill up for hours, as
/// chance has it.
void keepNothingFreed(desk::Environment& environment);

/// What a process holds at one moment.
struct ProcessWeight {
    long privateDirtyKibibytes = 0;
    long openDescriptors = 0;
};

/// Throws when the process is not there.
ProcessWeight weightOf(pid_t process);

/// Weighings of one process, the first after it has warmed up.
class Weighings {
  public:
    void add(const ProcessWeight& weight) { weights_.push_back(weight); }
    [[nodiscard]] const std::vector<ProcessWeight>& all() const { return weights_; }

    /// Throws when there is more at the end than after warming up.
    void checkNothingGrows() const;

  private:
    std::vector<ProcessWeight> weights_;
};

}  // namespace vantrel::soak
