#include "Vantrel/Desktop/Store/StoreOpening.hpp"

#include <utility>

#include "Vantrel/Desktop/Store/StoreFiles.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {
namespace {

enum class Journal {
    writeAheadLog,  ///< commits never wait for the disk
    rollback,       ///< where the log's shared memory cannot be had
    none,           ///< the file is taken as one that nobody can change, and is only read
};

struct Attempt {
    const char* vfs = nullptr;
    Journal journal = Journal::writeAheadLog;
    std::chrono::milliseconds lockWait{};
};

constexpr const char* createTable =
    "CREATE TABLE IF NOT EXISTS defaults(key TEXT PRIMARY KEY, value ANY NOT NULL) STRICT, WITHOUT ROWID";

SQLiteDatabase openFile(const std::filesystem::path& path, const Attempt& attempt, int& status) {
    if (attempt.journal != Journal::none) {
        return openDatabase(path.c_str(), SQLITE_OPEN_READWRITE, attempt.vfs, status);
    }
    const GCharPointer escaped(g_uri_escape_string(path.c_str(), "/", FALSE));
    const std::string uri = std::string("file:") + escaped.get() + "?immutable=1";
    return openDatabase(uri.c_str(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, attempt.vfs, status);
}

/// Prepares a database for writing. Returns whether it has a write-ahead log.
bool chooseJournal(sqlite3* database, Journal best, int& status) {
    const bool hasLog =
        best == Journal::writeAheadLog && queryText(database, "PRAGMA journal_mode=WAL", status) == "wal";
    // A file system that offers no shared memory at all cannot open a database with a log.
    if (!hasLog && (status == SQLITE_OK || (status & 0xff) == SQLITE_CANTOPEN)) {
        // A database with a log can be read without shared memory only by one that holds it alone, and only so can the
        // log be given up. The lock goes with the first access after the return to the normal mode.
        status = execute(database,
                         "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=TRUNCATE; PRAGMA locking_mode=NORMAL;"
                         "SELECT count(*) FROM sqlite_schema");
    }
    if (status == SQLITE_OK) {
        status = execute(database, "PRAGMA synchronous=NORMAL; PRAGMA cache_size=-256");
    }
    return hasLog;
}

/// Whether there is a table of settings, or something in its place. Made in an empty database that can be written.
bool findTable(sqlite3* database, bool isReadOnly, int& status) {
    const bool isThere = !queryText(database, "SELECT name FROM sqlite_schema WHERE name = 'defaults'", status).empty();
    if (isThere && status == SQLITE_OK && queryText(database, "PRAGMA quick_check(defaults)", status) != "ok") {
        // A page that was cut off reads as zeros, which look like a table with little in it until it is examined.
        status = status == SQLITE_OK ? SQLITE_CORRUPT : status;
    }
    // A statement that would change nothing still takes the writer's lock: look first. A database that holds other
    // things and not our table is another program's; reading ours then fails with the reason.
    if (!isThere && !isReadOnly && status == SQLITE_OK &&
        queryText(database, "SELECT count(*) FROM sqlite_schema", status) == "0") {
        status = execute(database, createTable);
    }
    return isThere || !isReadOnly;
}

std::string columnBytes(const void* bytes, int size) {
    return bytes == nullptr ? std::string()
                            : std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

DefaultsValue columnValue(sqlite3_stmt* row, int column) {
    switch (sqlite3_column_type(row, column)) {
        case SQLITE_INTEGER:
            return std::int64_t{sqlite3_column_int64(row, column)};
        case SQLITE_FLOAT:
            return sqlite3_column_double(row, column);
        case SQLITE_BLOB: {
            const void* const blob = sqlite3_column_blob(row, column);
            return DefaultsData{columnBytes(blob, sqlite3_column_bytes(row, column))};
        }
        default: {
            const unsigned char* const text = sqlite3_column_text(row, column);
            return columnBytes(text, sqlite3_column_bytes(row, column));
        }
    }
}

UserDefaults::Values readAll(sqlite3* database, int& status) {
    UserDefaults::Values values;
    const SQLiteStatement rows = prepare(database, "SELECT key, value FROM defaults", status);
    while (rows && (status = sqlite3_step(rows.get())) == SQLITE_ROW) {
        const unsigned char* const key = sqlite3_column_text(rows.get(), 0);
        values.emplace(columnBytes(key, sqlite3_column_bytes(rows.get(), 0)), columnValue(rows.get(), 1));
    }
    status = status == SQLITE_DONE ? SQLITE_OK : status;
    return values;
}

OpenedStore tryOpening(const std::filesystem::path& path, const Attempt& attempt) {
    OpenedStore opened;
    int& status = opened.status;
    SQLiteDatabase database = openFile(path, attempt, status);
    sqlite3* const handle = database.get();
    bool isReadOnly = true;
    bool hasLog = false;
    bool hasTable = false;
    if (status == SQLITE_OK) {
        sqlite3_busy_timeout(handle, static_cast<int>(attempt.lockWait.count()));
        isReadOnly = attempt.journal == Journal::none || sqlite3_db_readonly(handle, "main") == 1;
        // Where nothing can be written, whatever journal there is stays.
        hasLog = !isReadOnly && chooseJournal(handle, attempt.journal, status);
    }
    if (status == SQLITE_OK) {
        hasTable = findTable(handle, isReadOnly, status);
    }
    if (status == SQLITE_OK && hasTable) {
        opened.values = readAll(handle, status);
    }
    if (status == SQLITE_OK) {
        opened.connection = std::make_unique<StoreConnection>(std::move(database), isReadOnly, hasLog, status);
    }
    if (status != SQLITE_OK) {
        opened.reason = failureText(handle, status);
        opened.connection.reset();
        opened.values.clear();
    }
    return opened;
}

}  // namespace

OpenedStore openStore(const std::filesystem::path& path, const char* vfs, std::chrono::milliseconds lockWait) {
    const Attempt readOnly{vfs, Journal::none, lockWait};
    if (isClosedToWriting(path) && !hasJournalBeside(path)) {
        // Even to read it SQLite would lay a log of ours beside the file, which may be somebody else's: its owner could
        // then not write it. Without a log nobody is in the middle of a change.
        OpenedStore opened = tryOpening(path, readOnly);
        if (opened.connection || meansDamage(opened.status)) {
            return opened;
        }
    }
    // First without waiting: where there are no locks at all, every wait would be in vain.
    Attempt attempt{vfs, isOnNetwork(path) ? Journal::rollback : Journal::writeAheadLog, {}};
    OpenedStore opened = tryOpening(path, attempt);
    if (const int kind = opened.status & 0xff; kind == SQLITE_IOERR || kind == SQLITE_PROTOCOL) {
        // Perhaps the memory that a log's users share.
        attempt.journal = Journal::rollback;
        opened = tryOpening(path, attempt);
    }
    if (meansLocked(opened.status)) {
        opened = tryOpening(path, canLock(path) ? Attempt{vfs, attempt.journal, lockWait}
                                                : Attempt{"unix-none", Journal::rollback, lockWait});
    }
    if (opened.connection) {
        opened.connection->setLockWait(lockWait);
    } else if (!meansDamage(opened.status) && !meansLocked(opened.status) && !hasLogContent(path)) {
        // Without its log the database could be in the middle of a change.
        OpenedStore onlyRead = tryOpening(path, readOnly);
        opened.connection = std::move(onlyRead.connection);
        opened.values = std::move(onlyRead.values);
    }
    return opened;
}

}  // namespace vantrel::desktop
