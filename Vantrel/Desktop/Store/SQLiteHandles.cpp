#include "Vantrel/Desktop/Store/SQLiteHandles.hpp"

#include <system_error>

namespace vantrel::desktop {

int execute(sqlite3* database, const char* statements) {
    return sqlite3_exec(database, statements, nullptr, nullptr, nullptr);
}

SQLiteStatement prepare(sqlite3* database, const char* text, int& status) {
    sqlite3_stmt* statement = nullptr;
    status = sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    return SQLiteStatement(statement);
}

int run(sqlite3_stmt* statement) {
    const int status = sqlite3_step(statement);
    // For a failed step, reset repeats the same code.
    sqlite3_reset(statement);
    return status == SQLITE_DONE || status == SQLITE_ROW ? SQLITE_OK : status;
}

std::string queryText(sqlite3* database, const char* text, int& status) {
    const SQLiteStatement statement = prepare(database, text, status);
    if (!statement) {
        return {};
    }
    std::string result;
    status = sqlite3_step(statement.get());
    if (status == SQLITE_ROW) {
        if (const unsigned char* column = sqlite3_column_text(statement.get(), 0)) {
            result = reinterpret_cast<const char*>(column);
        }
        status = SQLITE_OK;
    } else if (status == SQLITE_DONE) {
        status = SQLITE_OK;
    }
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
    std::string text = sqlite3_errstr(status);
    const int systemError = database != nullptr ? sqlite3_system_errno(database) : 0;
    const int primaryCode = status & 0xff;
    if (systemError != 0 && (primaryCode == SQLITE_CANTOPEN || primaryCode == SQLITE_IOERR)) {
        text += " (" + std::generic_category().message(systemError) + ")";
    }
    return text;
}

}  // namespace vantrel::desktop
