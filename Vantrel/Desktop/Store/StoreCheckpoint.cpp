#include "Vantrel/Desktop/Store/StoreCheckpoint.hpp"

namespace vantrel::desktop {
namespace {

SQLiteDatabase openDatabase(const std::filesystem::path& path, const char* vfs, int& status) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    sqlite3* handle = nullptr;
    status = sqlite3_open_v2(path.c_str(), &handle, flags, vfs);
    SQLiteDatabase database(handle);
    if (database) {
        // Were this the last connection to close, it must not take the log away from the store's own.
        sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    return database;
}

}  // namespace

CheckpointOutcome checkpointStore(const std::filesystem::path& path, const char* vfs) {
    CheckpointOutcome outcome;
    outcome.reader = openDatabase(path, vfs, outcome.status);
    if (outcome.status == SQLITE_OK) {
        outcome.status = execute(outcome.reader.get(), "PRAGMA cache_size=-64; BEGIN; SELECT 1 FROM sqlite_schema");
    }
    if (outcome.status != SQLITE_OK) {
        return outcome;
    }
    const SQLiteDatabase mover = openDatabase(path, vfs, outcome.status);
    if (outcome.status == SQLITE_OK) {
        outcome.status = execute(mover.get(),
                                 "PRAGMA synchronous=NORMAL; PRAGMA wal_autocheckpoint=0; PRAGMA cache_size=-64;"
                                 "SELECT 1 FROM sqlite_schema");
    }
    if (outcome.status == SQLITE_OK) {
        int pagesMoved = 0;
        outcome.status =
            sqlite3_wal_checkpoint_v2(mover.get(), "main", SQLITE_CHECKPOINT_PASSIVE, &outcome.pagesInLog, &pagesMoved);
        outcome.isComplete = outcome.status == SQLITE_OK && outcome.pagesInLog == pagesMoved;
    }
    return outcome;
}

}  // namespace vantrel::desktop
