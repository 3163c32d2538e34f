#include "Vantrel/Desktop/Store/StoreConnection.hpp"

#include <cmath>

namespace vantrel::desktop {
namespace {

// Named columns and an upsert instead of REPLACE: a later version's further columns keep what they hold.
constexpr const char* upsertValue =
    "INSERT INTO defaults(key, value) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET value = excluded.value";

int bindValue(sqlite3_stmt* statement, int index, const DefaultsValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return sqlite3_bind_text64(statement, index, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return sqlite3_bind_int64(statement, index, *boolean ? 1 : 0);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return sqlite3_bind_int64(statement, index, *integer);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        // SQLite has no NaN: it would become NULL, which the table refuses. As text it reads back as the same nothing.
        return std::isnan(*real) ? sqlite3_bind_text(statement, index, "nan", -1, SQLITE_STATIC)
                                 : sqlite3_bind_double(statement, index, *real);
    }
    const std::string& bytes = std::get<DefaultsData>(value).bytes;
    return sqlite3_bind_blob64(statement, index, bytes.data(), bytes.size(), SQLITE_STATIC);
}

}  // namespace

StoreConnection::StoreConnection(SQLiteDatabase database, bool isReadOnly, bool hasLog, int& status)
    : database_(std::move(database)), isReadOnly_(isReadOnly), hasLog_(hasLog) {
    if (!isReadOnly_) {
        reading_ = prepare(database_.get(), "SELECT 1 FROM sqlite_schema", status);
        upsert_ = prepare(database_.get(), upsertValue, status);
    }
    if (hasLog_) {
        // Takes the place of automatic checkpoints, which would sync in the middle of a jump.
        sqlite3_wal_hook(
            database_.get(),
            [](void* logPages, sqlite3*, const char*, int pages) {
                *static_cast<int*>(logPages) = pages;
                return SQLITE_OK;
            },
            &logPages_);
    }
}

int StoreConnection::store(std::span<const Entry> entries) {
    const bool isOne = entries.size() == 1;
    int status = isOne ? SQLITE_OK : execute(database_.get(), "BEGIN IMMEDIATE");
    for (auto entry = entries.begin(); entry != entries.end() && status == SQLITE_OK; ++entry) {
        status = write(*entry);
    }
    if (status == SQLITE_OK && !isOne) {
        status = execute(database_.get(), "COMMIT");
    }
    if (status != SQLITE_OK && sqlite3_get_autocommit(database_.get()) == 0) {
        execute(database_.get(), "ROLLBACK");
    }
    return status;
}

int StoreConnection::write(const Entry& entry) {
    const auto& [key, value] = entry;
    sqlite3_stmt* statement = upsert_.get();
    sqlite3_bind_text64(statement, 1, key.data(), key.size(), SQLITE_STATIC, SQLITE_UTF8);
    int status = bindValue(statement, 2, *value);
    if (status == SQLITE_OK) {
        sqlite3_step(statement);
        // Repeats the code of a failed step.
        status = sqlite3_reset(statement);
    }
    sqlite3_clear_bindings(statement);
    return status;
}

void StoreConnection::beginLogAnew() {
    sqlite3* database = database_.get();
    if (sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr) != SQLITE_OK) {
        return;
    }
    // The first commit of a log waits for the disk, because a log whose old frames are overwritten one by one must not
    // be found half old and half new after a power failure. This log is empty: what is found then is the old one as a
    // whole, which the database already has, or the new one up to some frame.
    int status = execute(database, "PRAGMA synchronous=OFF; BEGIN IMMEDIATE");
    if (status == SQLITE_OK) {
        // A number that the application does not use is set to itself.
        const std::string version = queryText(database, "PRAGMA user_version", status);
        execute(database, ("PRAGMA user_version=" + version + "; COMMIT").c_str());
    }
    if (sqlite3_get_autocommit(database) == 0) {
        execute(database, "ROLLBACK");
    }
    execute(database, "PRAGMA synchronous=NORMAL");
}

bool StoreConnection::wasMoved() const {
    int moved = 0;
    return sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

}  // namespace vantrel::desktop
