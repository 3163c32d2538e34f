#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Vantrel/Desktop/Store/SQLiteHandles.hpp"
#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel::desktop {

/// An open database that holds, or may come to hold, the table of settings. Every operation returns SQLite's extended
/// result code. Used by one thread.
class StoreConnection {
  public:
    struct Attempt;

    /// The outcome of opening: a connection and all that the table holds, or the code and the reason why there is none.
    struct Opened {
        std::unique_ptr<StoreConnection> connection;
        UserDefaults::Values values;
        int status = SQLITE_OK;
        std::string reason;
    };

    /// Opens the file, which exists, in the best way that its file system allows: with a write-ahead log; else with a
    /// rollback journal; else without locks; else for reading only what it holds. Waits so long for others that hold it
    /// locked, here and later. `vfs` names one of SQLite's file systems, null being the usual one.
    static Opened open(const std::filesystem::path& path, const char* vfs, std::chrono::milliseconds lockWait);

    /// Closes without touching the log, unless moveLogWhenClosing() came before.
    ~StoreConnection();
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    /// Lets the closing move the log into the database and remove it, which waits for the disk.
    void moveLogWhenClosing();

    /// How long to wait from now on for others that hold a lock.
    void setLockWait(std::chrono::milliseconds lockWait);

    int begin() { return run(begin_.get()); }
    int commit() { return run(commit_.get()); }

    /// Empties a log whose pages are all in the database, and begins it anew with a commit that changes nothing, so
    /// that the next commit does not wait for the disk; nor does this. Pages that are not in the database yet are moved
    /// first, and then this waits for the disk. Gives up when others hold locks.
    void beginLogAnew();

    /// Undoes a transaction, if one is open.
    void rollback();

    /// Stores one value, as a transaction of its own outside of begin() and commit().
    int write(std::string_view key, const DefaultsValue& value);

    /// Whether values can only be read.
    [[nodiscard]] bool isReadOnly() const { return isReadOnly_; }

    /// Whether commits go to a write-ahead log, which must be checkpointed.
    [[nodiscard]] bool hasLog() const { return hasLog_; }

    /// The log's length after the last commit, in pages.
    [[nodiscard]] int logPages() const { return logPages_; }

    /// Whether the file was renamed, removed or replaced since it was opened.
    [[nodiscard]] bool wasMoved() const;

    [[nodiscard]] std::string reasonOf(int status) const { return failureText(database_.get(), status); }

  private:
    StoreConnection() = default;
    static Opened tryOpening(const std::filesystem::path& path, const Attempt& attempt);
    int chooseJournal(const Attempt& attempt);
    int prepareStatements();
    int readAll(UserDefaults::Values& values);

    SQLiteDatabase database_;
    SQLiteStatement begin_;
    SQLiteStatement commit_;
    SQLiteStatement rollback_;
    SQLiteStatement upsert_;
    bool hasTable_ = false;  // false only in an empty database that is read only
    bool isReadOnly_ = false;
    bool hasLog_ = false;
    int logPages_ = 0;
};

}  // namespace vantrel::desktop
