#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace vantrel::soak {

/// What the store holds at one moment: each key with its value's type before it ("text:manual").
using StoreContents = std::map<std::string, std::string>;

/// Another program that has the agent's store open all the while. Everything throws when the store cannot be read.
class StoreReader {
  public:
    explicit StoreReader(const std::filesystem::path& file);

    /// The bytes under the key; empty when there are none.
    std::string read(const std::string& key);

    StoreContents contents();

    /// Has SQLite go through the whole file.
    void checkIntegrity();

  private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

    Statement prepare(const char* text);
    /// Whether there is a row; throws on an error.
    bool step(const Statement& statement);

    std::unique_ptr<sqlite3, Closer> database_;
    Statement select_;
};

}  // namespace vantrel::soak
