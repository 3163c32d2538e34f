#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

namespace vantrel::desktop {

/// The store's file seen by another program: a connection of its own, as sqlite3(1) would have.
class Outsider {
  public:
    explicit Outsider(const std::filesystem::path& file);

    /// Runs statements; returns SQLite's result code.
    int execute(const std::string& statements);

    /// Rows as texts, columns joined by a bar, a missing value being empty.
    std::vector<std::string> rows(const std::string& query);

    /// The one text that a query gives.
    std::string text(const std::string& query);

  private:
    SQLiteDatabase database_;
};

/// A temporary directory with a store in it, and the process as its user.
class StoreTest : public testing::Test {
  protected:
    StoreTest();
    ~StoreTest() override;

    /// A store with times that suit tests: no checkpoint by itself, no retry by itself.
    [[nodiscard]] std::unique_ptr<SQLiteUserDefaults> openStore(StoreOptions options = quietOptions()) const;

    static StoreOptions quietOptions();

    /// Fills a store with one value of each kind and closes it cleanly.
    void makeStore() const;

    /// The names in the store's directory that begin with its name and "damaged", sorted.
    [[nodiscard]] std::vector<std::string> namesSetAside() const;

    std::filesystem::path directory_;
    std::filesystem::path file_;
};

/// Turns the main loop until the condition holds; false after ten seconds.
bool loopUntil(const std::function<bool()>& condition);

/// Serves what the main loop has ready, and waits for nothing.
void serveLoop();

/// The file's bytes.
std::string contentsOf(const std::filesystem::path& file);
void writeContents(const std::filesystem::path& file, const std::string& bytes);

/// The permission bits.
unsigned modeOf(const std::filesystem::path& path);

/// How many lines a text has.
std::size_t lineCount(const std::string& text);

}  // namespace vantrel::desktop
