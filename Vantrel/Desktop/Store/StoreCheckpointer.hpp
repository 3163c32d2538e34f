#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Desktop/Store/StoreCheckpoint.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// When the log is moved into the database.
struct CheckpointTimes {
    std::chrono::milliseconds idle{10'000};  ///< after the last commit
    int longLog = 1000;                      ///< or as soon as the log has this many pages
    /// A log of this many pages (40 MB) begins anew even if commits keep coming, and one of them waits for the disk.
    int longestLog = 10'000;
};

/// Runs checkpoints in a short-lived thread of its own, so that no commit waits for the disk. Nothing is armed and no
/// thread exists unless something was committed. Main thread only; uses the default main context.
class StoreCheckpointer {
  public:
    /// `finished` is called on the main loop after each run.
    StoreCheckpointer(std::filesystem::path path, const char* vfs, CheckpointTimes times,
                      std::function<void(CheckpointOutcome)> finished);

    /// Waits for the thread, if it runs.
    ~StoreCheckpointer();
    StoreCheckpointer(const StoreCheckpointer&) = delete;
    StoreCheckpointer& operator=(const StoreCheckpointer&) = delete;

    /// Tells of a commit, after which the log has that many pages.
    void noteCommit(int logPages);

    [[nodiscard]] bool isRunning() const { return thread_ != nullptr; }

    /// Whether no thread runs and no timer is armed.
    [[nodiscard]] bool isAtRest() const { return !thread_ && !idleTimer_.isSet(); }

  private:
    struct Thread;

    void start();
    void armIdleTimer(std::chrono::milliseconds delay);
    void idleTimerFired();
    void threadEnded();

    std::filesystem::path path_;
    std::string vfs_;
    CheckpointTimes times_;
    std::function<void(CheckpointOutcome)> finished_;
    std::chrono::steady_clock::time_point lastCommit_;
    int nextLongLog_;
    LoopSource idleTimer_;
    std::unique_ptr<Thread> thread_;
};

}  // namespace vantrel::desktop
