#include "tests/desk/support/StoredDefaults.hpp"

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace vantrel::desk {

namespace {

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

constexpr int patienceMilliseconds = 10000;

Database open(const std::filesystem::path& file, int flags) {
    sqlite3* handle = nullptr;
    const int status = sqlite3_open_v2(file.c_str(), &handle, flags, nullptr);
    Database database(handle, &sqlite3_close);
    if (status != SQLITE_OK) {
        throw std::runtime_error("cannot open the store " + file.native());
    }
    sqlite3_busy_timeout(handle, patienceMilliseconds);
    return database;
}

Statement prepare(const Database& database, const char* text) {
    sqlite3_stmt* handle = nullptr;
    if (sqlite3_prepare_v2(database.get(), text, -1, &handle, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("the store says: ") + sqlite3_errmsg(database.get()));
    }
    return {handle, &sqlite3_finalize};
}

void write(const std::filesystem::path& file, const std::string& key,
           const std::function<void(sqlite3_stmt*)>& bindValue) {
    std::filesystem::create_directories(file.parent_path());
    const auto database = open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    const auto create = prepare(database,
                                "CREATE TABLE IF NOT EXISTS defaults(key TEXT PRIMARY KEY, value ANY NOT NULL) "
                                "STRICT, WITHOUT ROWID");
    sqlite3_step(create.get());
    const auto insert = prepare(database, "INSERT OR REPLACE INTO defaults(key, value) VALUES(?1, ?2)");
    sqlite3_bind_text(insert.get(), 1, key.data(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
    bindValue(insert.get());
    if (sqlite3_step(insert.get()) != SQLITE_DONE) {
        throw std::runtime_error(std::string("the store says: ") + sqlite3_errmsg(database.get()));
    }
}

/// Runs the statements; `row` is called for each row that they find.
void run(const std::filesystem::path& file, const std::string& statements,
         std::function<void(int count, char** values)> row) {
    const auto database = open(file, SQLITE_OPEN_READWRITE);
    const auto callback = [](void* data, int count, char** values, char** /*names*/) {
        (*static_cast<std::function<void(int, char**)>*>(data))(count, values);
        return 0;
    };
    if (sqlite3_exec(database.get(), statements.c_str(), callback, &row, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("the store says: ") + sqlite3_errmsg(database.get()));
    }
}

std::optional<std::string> readColumn(const std::filesystem::path& file, const std::string& key, int column) {
    if (!std::filesystem::exists(file)) {
        return std::nullopt;
    }
    const auto database = open(file, SQLITE_OPEN_READWRITE);
    const auto select = prepare(database, "SELECT value, typeof(value) FROM defaults WHERE key = ?1");
    sqlite3_bind_text(select.get(), 1, key.data(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
    if (sqlite3_step(select.get()) != SQLITE_ROW) {
        return std::nullopt;
    }
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(select.get(), column));
    return std::string(bytes == nullptr ? "" : bytes,
                       static_cast<std::size_t>(sqlite3_column_bytes(select.get(), column)));
}

}  // namespace

void StoredDefaults::writeText(const std::string& key, const std::string& value) const {
    write(file_, key, [&](sqlite3_stmt* statement) {
        sqlite3_bind_text(statement, 2, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    });
}

void StoredDefaults::writeInteger(const std::string& key, std::int64_t value) const {
    write(file_, key, [&](sqlite3_stmt* statement) { sqlite3_bind_int64(statement, 2, value); });
}

void StoredDefaults::writeData(const std::string& key, const std::string& bytes) const {
    write(file_, key, [&](sqlite3_stmt* statement) {
        sqlite3_bind_blob(statement, 2, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    });
}

std::optional<std::string> StoredDefaults::read(const std::string& key) const {
    return readColumn(file_, key, 0);
}

std::optional<std::string> StoredDefaults::typeOf(const std::string& key) const {
    return readColumn(file_, key, 1);
}

void StoredDefaults::execute(const std::string& statements) const {
    run(file_, statements, [](int /*count*/, char** /*values*/) {});
}

std::vector<std::string> StoredDefaults::rows(const std::string& query) const {
    std::vector<std::string> rows;
    run(file_, query, [&](int count, char** values) {
        auto& text = rows.emplace_back();
        for (int column = 0; column < count; ++column) {
            text += column == 0 ? "" : "|";
            text += values[column] == nullptr ? "" : values[column];
        }
    });
    return rows;
}

}  // namespace vantrel::desk
