#pragma once

#include <functional>
#include <vector>

#include "Vantrel/Platform/Desktop/SourceHandles.hpp"

namespace vantrel::desktop {

/// SIGTERM, SIGINT and SIGHUP, told by the default main context.
class TerminationSignals {
  public:
    /// `received` is called for each signal, until this object is gone.
    explicit TerminationSignals(std::function<void()> received);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    std::function<void()> received_;
    std::vector<SourceHandle> sources_;
};

}  // namespace vantrel::desktop
