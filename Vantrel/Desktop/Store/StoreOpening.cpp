#include <array>
#include <cstdio>

#include "Vantrel/Desktop/Store/StoreConnection.hpp"
#include "Vantrel/Desktop/Store/StoreFiles.hpp"

namespace vantrel::desktop {

enum class Journal {
    writeAheadLog,  ///< commits never wait for the disk
    rollback,       ///< where the log's shared memory cannot be had
    none,           ///< the file is taken as one that nobody can change, and is only read
};

struct StoreConnection::Attempt {
    const char* vfs = nullptr;
    Journal journal = Journal::writeAheadLog;
    std::chrono::milliseconds lockWait{};
};

namespace {

constexpr const char* createTable =
    "CREATE TABLE IF NOT EXISTS defaults(key TEXT PRIMARY KEY, value ANY NOT NULL) STRICT, WITHOUT ROWID";
// Named columns and an upsert instead of REPLACE: a later version's further columns keep what they hold.
constexpr const char* upsertValue =
    "INSERT INTO defaults(key, value) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET value = excluded.value";

/// A path as SQLite's URI form, in which a few characters have a meaning.
std::string uriOf(const std::filesystem::path& path) {
    std::string uri = "file:";
    for (const char character : path.string()) {
        if (character == '%' || character == '?' || character == '#') {
            std::array<char, 4> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "%%%02X", static_cast<unsigned>(character));
            uri += escaped.data();
        } else {
            uri += character;
        }
    }
    return uri + "?immutable=1";
}

/// Whether the code says that the memory shared by a log's users cannot be had here.
bool meansNoSharedMemory(int status) {
    return status == SQLITE_IOERR_SHMOPEN || status == SQLITE_IOERR_SHMMAP || status == SQLITE_IOERR_SHMLOCK ||
           (status & 0xff) == SQLITE_PROTOCOL;
}

SQLiteDatabase openFile(const std::filesystem::path& path, const StoreConnection::Attempt& attempt, int& status) {
    // One thread uses the connection, so its own locks would be idle work.
    constexpr int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    sqlite3* handle = nullptr;
    if (attempt.journal == Journal::none) {
        status =
            sqlite3_open_v2(uriOf(path).c_str(), &handle, flags | SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, attempt.vfs);
    } else {
        status = sqlite3_open_v2(path.c_str(), &handle, flags | SQLITE_OPEN_READWRITE, attempt.vfs);
    }
    SQLiteDatabase database(handle);
    if (database) {
        sqlite3_busy_timeout(handle, static_cast<int>(attempt.lockWait.count()));
        sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    return database;
}

/// Whether the database's file system offers the memory that a log's users share.
bool canShareMemory(sqlite3* database) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    return file != nullptr && file->pMethods != nullptr && file->pMethods->iVersion >= 2 &&
           file->pMethods->xShmMap != nullptr;
}

}  // namespace

StoreConnection::Opened StoreConnection::open(const std::filesystem::path& path, const char* vfs,
                                              std::chrono::milliseconds lockWait) {
    const Journal best = isOnNetwork(path) ? Journal::rollback : Journal::writeAheadLog;
    if (isClosedToWriting(path) && !hasJournalBeside(path)) {
        // Even to read it SQLite would lay a log of ours beside the file, which may be somebody else's: its owner could
        // then not write it. Without a log nobody is in the middle of a change.
        Opened readOnly = tryOpening(path, {vfs, Journal::none, lockWait});
        if (readOnly.connection || meansDamage(readOnly.status)) {
            return readOnly;
        }
    }
    // First without waiting: where there are no locks at all, every wait would be in vain.
    Attempt attempt{vfs, best, std::chrono::milliseconds::zero()};
    Opened opened = tryOpening(path, attempt);
    if (best == Journal::writeAheadLog && meansNoSharedMemory(opened.status)) {
        attempt.journal = Journal::rollback;
        opened = tryOpening(path, attempt);
    }
    if (meansLocked(opened.status)) {
        const bool hasLocks = canLock(path);
        opened = tryOpening(path, hasLocks ? Attempt{vfs, attempt.journal, lockWait}
                                           : Attempt{"unix-none", Journal::rollback, lockWait});
    }
    if (opened.connection) {
        opened.connection->setLockWait(lockWait);
    }
    const bool mayRead = !opened.connection && !meansDamage(opened.status) && !meansLocked(opened.status);
    // Without its log the database may be in the middle of a change.
    if (mayRead && !hasLogContent(path)) {
        if (Opened readOnly = tryOpening(path, {vfs, Journal::none, lockWait}); readOnly.connection) {
            opened.connection = std::move(readOnly.connection);
            opened.values = std::move(readOnly.values);
        }
    }
    return opened;
}

StoreConnection::Opened StoreConnection::tryOpening(const std::filesystem::path& path, const Attempt& attempt) {
    Opened opened;
    std::unique_ptr<StoreConnection> connection(new StoreConnection);
    connection->database_ = openFile(path, attempt, opened.status);
    if (opened.status == SQLITE_OK) {
        opened.status = connection->chooseJournal(attempt);
    }
    if (opened.status == SQLITE_OK) {
        opened.status = connection->prepareStatements();
    }
    if (opened.status == SQLITE_OK) {
        opened.status = connection->readAll(opened.values);
    }
    if (opened.status == SQLITE_OK) {
        opened.connection = std::move(connection);
    } else {
        opened.reason = connection->reasonOf(opened.status);
        if ((opened.status & 0xff) == SQLITE_ERROR) {
            opened.reason = sqlite3_errmsg(connection->database_.get());
        }
    }
    return opened;
}

int StoreConnection::chooseJournal(const Attempt& attempt) {
    sqlite3* database = database_.get();
    isReadOnly_ = sqlite3_db_readonly(database, "main") == 1;
    int status = SQLITE_OK;
    if (attempt.journal == Journal::none || isReadOnly_) {
        // Whatever journal there is stays; a first look shows whether the file can be read at all.
        queryText(database, "SELECT count(*) FROM sqlite_schema", status);
        return status;
    }
    if (attempt.journal == Journal::writeAheadLog && canShareMemory(database)) {
        hasLog_ = queryText(database, "PRAGMA journal_mode=WAL", status) == "wal";
    }
    if (status == SQLITE_OK && !hasLog_) {
        // A database with a log can be read without shared memory only by one that holds it alone, and only so can the
        // log be given up. The lock goes with the first access after the return to the normal mode.
        status = execute(database,
                         "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=TRUNCATE; PRAGMA locking_mode=NORMAL;"
                         "SELECT count(*) FROM sqlite_schema");
    }
    if (status == SQLITE_OK) {
        status = execute(database, "PRAGMA synchronous=NORMAL; PRAGMA cache_size=-256");
    }
    if (status == SQLITE_OK && hasLog_) {
        // Takes the place of automatic checkpoints, which would sync in the middle of a jump.
        sqlite3_wal_hook(
            database,
            [](void* self, sqlite3*, const char*, int pages) {
                static_cast<StoreConnection*>(self)->logPages_ = pages;
                return SQLITE_OK;
            },
            this);
    }
    return status;
}

int StoreConnection::prepareStatements() {
    sqlite3* database = database_.get();
    int status = SQLITE_OK;
    hasTable_ = !queryText(database, "SELECT name FROM sqlite_schema WHERE name = 'defaults'", status).empty();
    if (hasTable_ && status == SQLITE_OK && queryText(database, "PRAGMA quick_check(defaults)", status) != "ok") {
        // A page that was cut off reads as zeros, which look like a table with little in it until it is examined.
        return status == SQLITE_OK ? SQLITE_CORRUPT : status;
    }
    if (isReadOnly_) {
        return status;
    }
    // A statement that would change nothing still takes the writer's lock: look first. A database that holds other
    // things and not our table is another program's; reading ours then fails with the reason.
    if (!hasTable_ && status == SQLITE_OK && queryText(database, "SELECT count(*) FROM sqlite_schema", status) == "0") {
        status = execute(database, createTable);
    }
    hasTable_ = true;
    struct Kept {
        SQLiteStatement& statement;
        const char* text;
    };
    for (const Kept& kept : {Kept{upsert_, upsertValue}, Kept{begin_, "BEGIN IMMEDIATE"}, Kept{commit_, "COMMIT"},
                             Kept{rollback_, "ROLLBACK"}}) {
        if (status == SQLITE_OK) {
            kept.statement = prepare(database, kept.text, status);
        }
    }
    return status;
}

}  // namespace vantrel::desktop
