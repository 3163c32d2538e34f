#include "Vantrel/Desktop/Store/StoreCheckpointer.hpp"

#include <utility>

namespace vantrel::desktop {

std::optional<int> checkpointStore(const std::filesystem::path& path, const char* vfs) {
    int status = SQLITE_OK;
    const SQLiteDatabase database = openDatabase(path.c_str(), SQLITE_OPEN_READWRITE, vfs, status);
    int pagesMoved = 0;
    if (status == SQLITE_OK) {
        // A connection that has read nothing yet knows of no log.
        status = execute(database.get(), "SELECT 1 FROM sqlite_schema");
    }
    if (status == SQLITE_OK) {
        status = sqlite3_wal_checkpoint_v2(database.get(), "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, &pagesMoved);
    }
    return status == SQLITE_OK ? std::optional(pagesMoved) : std::nullopt;
}

StoreCheckpointer::StoreCheckpointer(StoreConnection& connection, std::filesystem::path path, const char* vfs,
                                     CheckpointTimes times, std::function<void()> finished)
    : connection_(connection), path_(std::move(path)), vfs_(vfs), times_(times), finished_(std::move(finished)) {}

StoreCheckpointer::~StoreCheckpointer() {
    thread_.reset();
    g_idle_remove_by_data(this);
    connection_.letLogBeginAnew();
}

void StoreCheckpointer::noteCommit() {
    lastCommit_ = std::chrono::steady_clock::now();
    const int pages = connection_.logPages();
    if (pages < pagesToMove_) {
        pagesToMove_ = 0;
    }
    // If the log could not begin anew after the last run, the next one waits until it has grown as much again.
    if (pages >= pagesToMove_ + times_.longLog) {
        start();
    }
    // One timer serves many commits: it is set again when it fires, not at each of them.
    if (!idleTimer_.isSet()) {
        idleTimer_ = LoopSource::after(times_.idle, [this] { idleTimerFired(); }, {.priority = G_PRIORITY_LOW});
    }
}

void StoreCheckpointer::idleTimerFired() {
    const auto left = times_.idle - std::chrono::duration_cast<std::chrono::milliseconds>(
                                        std::chrono::steady_clock::now() - lastCommit_);
    if (left.count() > 0 || thread_) {
        idleTimer_ = LoopSource::after(left.count() > 0 ? left : times_.idle, [this] { idleTimerFired(); },
                                       {.priority = G_PRIORITY_LOW});
    } else {
        start();
    }
}

void StoreCheckpointer::start() {
    if (thread_) {
        return;
    }
    connection_.keepLogFromBeginningAnew();
    pagesToMove_ = connection_.logPages();
    static constexpr auto finished = [](gpointer self) -> gboolean {
        static_cast<StoreCheckpointer*>(self)->finish();
        return G_SOURCE_REMOVE;
    };
    const auto run = [](gpointer data) -> gpointer {
        auto& self = *static_cast<StoreCheckpointer*>(data);
        self.pagesMoved_ = checkpointStore(self.path_, self.vfs_);
        g_idle_add_full(G_PRIORITY_DEFAULT, finished, data, nullptr);
        return nullptr;
    };
    thread_.reset(g_thread_try_new("checkpoint", run, this, nullptr));
    if (!thread_) {
        // The log just grows until the next commit tries again.
        connection_.letLogBeginAnew();
    }
}

void StoreCheckpointer::finish() {
    thread_.reset();
    connection_.letLogBeginAnew();
    const int pages = connection_.logPages();
    // With commits that never pause there is always one since the checkpoint began. Such a log is begun anew all the
    // same before it fills the disk; only then does this thread wait for it, for the few pages that are left to move.
    if (pagesMoved_ && *pagesMoved_ >= pagesToMove_ && (pages <= *pagesMoved_ || pages >= times_.longestLog)) {
        connection_.beginLogAnew();
    }
    finished_();
}

}  // namespace vantrel::desktop
