#include "Vantrel/Desktop/Store/StoreConnection.hpp"

#include <cmath>

namespace vantrel::desktop {
namespace {

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

std::string columnBytes(const void* bytes, int size) {
    return bytes == nullptr ? std::string()
                            : std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

DefaultsValue columnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            return std::int64_t{sqlite3_column_int64(statement, column)};
        case SQLITE_FLOAT:
            return sqlite3_column_double(statement, column);
        case SQLITE_BLOB: {
            const void* blob = sqlite3_column_blob(statement, column);
            return DefaultsData{columnBytes(blob, sqlite3_column_bytes(statement, column))};
        }
        default: {
            const unsigned char* text = sqlite3_column_text(statement, column);
            return columnBytes(text, sqlite3_column_bytes(statement, column));
        }
    }
}

}  // namespace

StoreConnection::~StoreConnection() = default;

void StoreConnection::moveLogWhenClosing() {
    sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

void StoreConnection::setLockWait(std::chrono::milliseconds lockWait) {
    sqlite3_busy_timeout(database_.get(), static_cast<int>(lockWait.count()));
}

int StoreConnection::readAll(UserDefaults::Values& values) {
    values.clear();
    if (!hasTable_) {
        return SQLITE_OK;
    }
    int status = SQLITE_OK;
    const SQLiteStatement select = prepare(database_.get(), "SELECT key, value FROM defaults", status);
    while (select && (status = sqlite3_step(select.get())) == SQLITE_ROW) {
        values.emplace(columnBytes(sqlite3_column_text(select.get(), 0), sqlite3_column_bytes(select.get(), 0)),
                       columnValue(select.get(), 1));
    }
    return status == SQLITE_DONE ? SQLITE_OK : status;
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
        if (status == SQLITE_OK) {
            status = execute(database, ("PRAGMA user_version=" + version).c_str());
        }
        execute(database, status == SQLITE_OK ? "COMMIT" : "ROLLBACK");
    }
    rollback();
    execute(database, "PRAGMA synchronous=NORMAL");
}

void StoreConnection::rollback() {
    if (sqlite3_get_autocommit(database_.get()) == 0) {
        run(rollback_.get());
    }
}

int StoreConnection::write(std::string_view key, const DefaultsValue& value) {
    sqlite3_stmt* statement = upsert_.get();
    sqlite3_bind_text64(statement, 1, key.data(), key.size(), SQLITE_STATIC, SQLITE_UTF8);
    int status = bindValue(statement, 2, value);
    if (status == SQLITE_OK) {
        status = run(statement);
    }
    sqlite3_clear_bindings(statement);
    return status;
}

bool StoreConnection::wasMoved() const {
    int moved = 0;
    return sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

}  // namespace vantrel::desktop
