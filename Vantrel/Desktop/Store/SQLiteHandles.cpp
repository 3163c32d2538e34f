#include "Vantrel/Desktop/Store/SQLiteHandles.hpp"

#include <system_error>

namespace vantrel::desktop {

SQLiteDatabase openDatabase(const char* name, int flags, const char* vfs, int& status) {
    sqlite3* handle = nullptr;
    status = sqlite3_open_v2(name, &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, vfs);
    if (handle != nullptr) {
        sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    return SQLiteDatabase(handle);
}

int execute(sqlite3* database, const char* statements) {
    return sqlite3_exec(database, statements, nullptr, nullptr, nullptr);
}

SQLiteStatement prepare(sqlite3* database, const char* text, int& status) {
    sqlite3_stmt* statement = nullptr;
    status = sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    return SQLiteStatement(statement);
}

std::string queryText(sqlite3* database, const char* text, int& status) {
    const SQLiteStatement statement = prepare(database, text, status);
    std::string result;
    if (statement && (status = sqlite3_step(statement.get())) == SQLITE_ROW) {
        if (const unsigned char* column = sqlite3_column_text(statement.get(), 0)) {
            result = reinterpret_cast<const char*>(column);
        }
    }
    status = status == SQLITE_ROW || status == SQLITE_DONE ? SQLITE_OK : status;
    return result;
}

bool meansDamage(int status) {
    const int primaryCode = status & 0xff;
    return primaryCode == SQLITE_CORRUPT || primaryCode == SQLITE_NOTADB;
}

bool meansLocked(int status) {
    const int primaryCode = status & 0xff;
    return primaryCode == SQLITE_BUSY || primaryCode == SQLITE_LOCKED;
}

std::string failureText(sqlite3* database, int status) {
    const int primaryCode = status & 0xff;
    if (primaryCode == SQLITE_ERROR) {
        return sqlite3_errmsg(database);
    }
    std::string text = sqlite3_errstr(status);
    const int systemError = database != nullptr ? sqlite3_system_errno(database) : 0;
    if (systemError != 0 && (primaryCode == SQLITE_CANTOPEN || primaryCode == SQLITE_IOERR)) {
        text += " (" + std::generic_category().message(systemError) + ")";
    }
    return text;
}

}  // namespace vantrel::desktop
