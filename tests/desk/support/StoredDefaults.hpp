#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantrel::desk {

/// The agent's store as another program sees it, before, during and after the agent's life.
class StoredDefaults {
  public:
    explicit StoredDefaults(std::filesystem::path file) : file_(std::move(file)) {}

    /// Writes values as the agent would, creating the store when it is not there.
    void writeText(const std::string& key, const std::string& value) const;
    void writeInteger(const std::string& key, std::int64_t value) const;
    void writeData(const std::string& key, const std::string& bytes) const;

    /// The stored value's bytes or text; none when there is no store or no such key.
    [[nodiscard]] std::optional<std::string> read(const std::string& key) const;

    /// The stored value's SQLite type ("text", "integer", "blob", "real"); none when there is no such key.
    [[nodiscard]] std::optional<std::string> typeOf(const std::string& key) const;

    /// Runs statements of SQL on the store's file, e.g. of another version of the program. Throws when one fails.
    void execute(const std::string& statements) const;

    /// The rows that a query finds, as texts, columns joined by a bar, a missing value being empty. Throws when it
    /// fails.
    [[nodiscard]] std::vector<std::string> rows(const std::string& query) const;

  private:
    std::filesystem::path file_;
};

}  // namespace vantrel::desk
