#include "tests/soak/StoreReader.hpp"

#include <stdexcept>

namespace vantrel::soak {

namespace {

constexpr int patienceMilliseconds = 10000;

std::string columnOf(sqlite3_stmt* statement, int column) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

}  // namespace

StoreReader::StoreReader(const std::filesystem::path& file) {
    sqlite3* handle = nullptr;
    const int status = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    database_.reset(handle);
    if (status != SQLITE_OK) {
        throw std::runtime_error("the store cannot be opened");
    }
    sqlite3_busy_timeout(handle, patienceMilliseconds);
    // What a reader leaves behind must not be tidier than what it found.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    select_ = prepare("SELECT value FROM defaults WHERE key = ?1");
}

StoreReader::Statement StoreReader::prepare(const char* text) {
    sqlite3_stmt* handle = nullptr;
    if (sqlite3_prepare_v2(database_.get(), text, -1, &handle, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("the store cannot be read: ") + sqlite3_errmsg(database_.get()));
    }
    return Statement(handle);
}

bool StoreReader::step(const Statement& statement) {
    const int status = sqlite3_step(statement.get());
    if (status != SQLITE_ROW && status != SQLITE_DONE) {
        throw std::runtime_error(std::string("the store cannot be read: ") + sqlite3_errmsg(database_.get()));
    }
    return status == SQLITE_ROW;
}

std::string StoreReader::read(const std::string& key) {
    sqlite3_bind_text(select_.get(), 1, key.data(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
    std::string value;
    if (step(select_)) {
        value = columnOf(select_.get(), 0);
    }
    // Lets go of the snapshot, which would keep the agent's log from beginning anew.
    sqlite3_reset(select_.get());
    return value;
}

StoreContents StoreReader::contents() {
    const Statement all = prepare("SELECT key, typeof(value), value FROM defaults");
    StoreContents contents;
    while (step(all)) {
        contents.emplace(columnOf(all.get(), 0), columnOf(all.get(), 1) + ":" + columnOf(all.get(), 2));
    }
    return contents;
}

void StoreReader::checkIntegrity() {
    const Statement check = prepare("PRAGMA integrity_check");
    if (!step(check) || columnOf(check.get(), 0) != "ok") {
        throw std::runtime_error("SQLite finds the store damaged");
    }
}

}  // namespace vantrel::soak
