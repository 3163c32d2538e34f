#pragma once

#include <sys/types.h>

#include <vector>

namespace vantrel::soak {

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
