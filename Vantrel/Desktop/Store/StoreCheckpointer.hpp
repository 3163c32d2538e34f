#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "Vantrel/Desktop/Store/StoreConnection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// Moves the log into the database over a connection of its own. Waits for the disk, and locks nobody out: others may
/// read and commit all the while. For any thread but the one that runs the loop. Returns how many pages of the log are
/// in the database then, and on the disk; none when it failed.
std::optional<int> checkpointStore(const std::filesystem::path& path, const char* vfs);

/// When the log is moved into the database.
struct CheckpointTimes {
    std::chrono::milliseconds idle{10'000};  ///< after the last commit
    int longLog = 1000;                      ///< or as soon as the log has this many pages
    /// A log of this many pages (40 MB) begins anew even if commits keep coming, and one of them waits for the disk.
    int longestLog = 10'000;
};

/// Has the log moved by a short-lived thread, so that no commit waits for the disk, and begins it anew. Nothing is
/// armed and no thread exists unless something was committed. Main thread only; uses the default main context.
class StoreCheckpointer {
  public:
    /// `finished` is called on the main loop after each run. The connection outlives this object.
    StoreCheckpointer(StoreConnection& connection, std::filesystem::path path, const char* vfs, CheckpointTimes times,
                      std::function<void()> finished);

    /// Waits for the thread, if it runs.
    ~StoreCheckpointer();
    StoreCheckpointer(const StoreCheckpointer&) = delete;
    StoreCheckpointer& operator=(const StoreCheckpointer&) = delete;

    /// Tells of a commit.
    void noteCommit();

    [[nodiscard]] bool isRunning() const { return thread_ != nullptr; }

    /// Whether no thread runs and no timer is armed.
    [[nodiscard]] bool isAtRest() const { return !thread_ && !idleTimer_.isSet(); }

  private:
    struct ThreadJoiner {
        void operator()(GThread* thread) const { g_thread_join(thread); }
    };

    void idleTimerFired();
    void start();
    void finish();

    StoreConnection& connection_;
    std::filesystem::path path_;
    const char* vfs_;
    CheckpointTimes times_;
    std::function<void()> finished_;
    std::chrono::steady_clock::time_point lastCommit_;
    LoopSource idleTimer_;
    int pagesToMove_ = 0;            ///< the log's length when the last run began
    std::optional<int> pagesMoved_;  ///< the thread's until it has been joined
    std::unique_ptr<GThread, ThreadJoiner> thread_;
};

}  // namespace vantrel::desktop
