#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

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

  private:
    std::filesystem::path file_;
};

}  // namespace vantrel::desk
