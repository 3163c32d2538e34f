#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace vantrel::desktop {

struct SQLiteCloser {
    // The second form of close waits for statements that are still to be finalised, so the order does not matter.
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct SQLiteFinalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using SQLiteDatabase = std::unique_ptr<sqlite3, SQLiteCloser>;
using SQLiteStatement = std::unique_ptr<sqlite3_stmt, SQLiteFinalizer>;

/// Opens a database for one thread, which leaves the log alone when it closes it. `vfs` names one of SQLite's file
/// systems, null being the usual one. Null at worst, and then or otherwise SQLite's extended result code in `status`.
SQLiteDatabase openDatabase(const char* name, int flags, const char* vfs, int& status);

/// Runs statements that give no rows of interest. Returns SQLite's extended result code.
int execute(sqlite3* database, const char* statements);

/// Prepares a statement that is kept. Null with the result code in `status` when it does not compile.
SQLiteStatement prepare(sqlite3* database, const char* text, int& status);

/// Runs a statement that gives one text (a pragma, say). Empty when it gives none; `status` is the result code.
std::string queryText(sqlite3* database, const char* text, int& status);

/// Whether the code says that the file is not, or no longer, a sound database.
bool meansDamage(int status);

/// Whether the code says that somebody else holds a lock at this moment.
bool meansLocked(int status);

/// The database's own words for its last failure, with the system's reason where there is one.
std::string failureText(sqlite3* database, int status);

}  // namespace vantrel::desktop
