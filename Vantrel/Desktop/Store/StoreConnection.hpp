#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "Vantrel/Desktop/Store/SQLiteHandles.hpp"
#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel::desktop {

/// An open database with the table of settings. Operations return SQLite's extended result code. Used by one thread.
class StoreConnection {
  public:
    using Entry = std::pair<std::string_view, const DefaultsValue*>;

    /// `hasLog` is whether commits go to a write-ahead log, which must be checkpointed; `status` what came of preparing
    /// to write.
    StoreConnection(SQLiteDatabase database, bool isReadOnly, bool hasLog, int& status);

    /// Closes without touching the log, unless moveLogWhenClosing() came before.
    ~StoreConnection() = default;
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    /// Lets the closing move the log into the database and remove it, which waits for the disk.
    void moveLogWhenClosing() { sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr); }

    /// How long to wait from now on for others that hold a lock.
    void setLockWait(std::chrono::milliseconds wait) {
        sqlite3_busy_timeout(database_.get(), static_cast<int>(wait.count()));
    }

    /// Stores all of the values or none.
    int store(std::span<const Entry> entries);

    /// Has commits go on at the log's end until letLogBeginAnew(). Otherwise the next one after a checkpoint would
    /// begin the log at its beginning again, and wait for the disk. If another program commits meanwhile, ours find the
    /// database locked.
    void keepLogFromBeginningAnew() { sqlite3_step(reading_.get()); }
    void letLogBeginAnew() { sqlite3_reset(reading_.get()); }

    /// Empties a log whose pages are all in the database, and begins it anew with a commit that changes nothing, so
    /// that the next commit does not wait for the disk; nor does this. Pages that are not in the database yet are moved
    /// first, and then this waits for the disk. Gives up when others hold locks.
    void beginLogAnew();

    [[nodiscard]] bool isReadOnly() const { return isReadOnly_; }
    [[nodiscard]] bool hasLog() const { return hasLog_; }

    /// The log's length after the last commit, in pages.
    [[nodiscard]] int logPages() const { return logPages_; }

    /// Whether the file was renamed, removed or replaced since it was opened.
    [[nodiscard]] bool wasMoved() const;

    [[nodiscard]] std::string reasonOf(int status) const { return failureText(database_.get(), status); }

  private:
    int write(const Entry& entry);

    SQLiteDatabase database_;
    SQLiteStatement upsert_;
    SQLiteStatement reading_;
    bool isReadOnly_;
    bool hasLog_;
    int logPages_ = 0;
};

}  // namespace vantrel::desktop
