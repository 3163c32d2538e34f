#include "Vantrel/Platform/Desktop/StoreCheckpoint.hpp"

#include <string>

#include "Vantrel/Platform/Desktop/SQLiteHandles.hpp"

namespace vantrel::desktop {
namespace {

/// Commits a page that says what it said before: a number that the application does not use is set to itself.
int startLogAnew(sqlite3* database) {
    int status = execute(database, "BEGIN IMMEDIATE");
    if (status != SQLITE_OK) {
        return status;
    }
    const std::string version = queryText(database, "PRAGMA user_version", status);
    if (status == SQLITE_OK) {
        status = execute(database, ("PRAGMA user_version=" + version).c_str());
    }
    const int commitStatus = execute(database, status == SQLITE_OK ? "COMMIT" : "ROLLBACK");
    return status == SQLITE_OK ? commitStatus : status;
}

}  // namespace

CheckpointOutcome checkpointStore(const std::filesystem::path& path, const char* vfs) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    CheckpointOutcome outcome;
    sqlite3* handle = nullptr;
    outcome.status = sqlite3_open_v2(path.c_str(), &handle, flags, vfs);
    const SQLiteDatabase database(handle);
    if (outcome.status != SQLITE_OK) {
        return outcome;
    }
    // Were this the last connection to close, it must not take the log away from under a restart of the first.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    // A log that one large value made long is cut when it starts anew.
    outcome.status = execute(handle,
                             "PRAGMA synchronous=NORMAL; PRAGMA wal_autocheckpoint=0;"
                             "PRAGMA journal_size_limit=1048576; PRAGMA cache_size=-64; SELECT 1 FROM sqlite_schema");
    int pagesInLog = 0;
    int pagesMoved = 0;
    if (outcome.status == SQLITE_OK) {
        outcome.status = sqlite3_wal_checkpoint_v2(handle, "main", SQLITE_CHECKPOINT_PASSIVE, &pagesInLog, &pagesMoved);
    }
    // With pages left over (somebody wrote or reads) the log goes on as it is.
    if (outcome.status == SQLITE_OK && pagesInLog == pagesMoved) {
        outcome.status = startLogAnew(handle);
        outcome.startedAnew = outcome.status == SQLITE_OK;
    }
    return outcome;
}

}  // namespace vantrel::desktop
