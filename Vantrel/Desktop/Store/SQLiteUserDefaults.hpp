#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Vantrel/Desktop/Store/KnownValues.hpp"
#include "Vantrel/Desktop/Store/StoreCheckpointer.hpp"
#include "Vantrel/Desktop/Store/StoreConnection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/DefaultsConversions.hpp"
#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel::desktop {

/// What tests change about the store.
struct StoreOptions {
    CheckpointTimes checkpoints;
    /// How long launch and end wait for a lock of others. In between nothing waits.
    std::chrono::milliseconds patience{1000};
    std::chrono::milliseconds firstRetry{1000};  ///< of what failed; doubled at each further try
    std::chrono::milliseconds longestRetry{60'000};
    const char* vfs = nullptr;  ///< one of SQLite's file systems; null for the usual one
};

/// The person's settings in a SQLite file (docs/design/store.md). Commits survive the end of the process
/// at once and never wait for the disk. Whatever is wrong with the file, this object works: it says so in one line on
/// stderr, and what could not be stored is kept and stored with the next write of any key. What could not be read is
/// read as soon as it can be, and never overwritten before. Main thread only.
class SQLiteUserDefaults final : public UserDefaults {
  public:
    /// Opens the file, making it and its directories where they are missing. With no file the values live as long as
    /// this object.
    explicit SQLiteUserDefaults(std::optional<std::filesystem::path> file, StoreOptions options = {});

    /// Calls finish() and closes the file. Waits for the disk.
    ~SQLiteUserDefaults() override;
    SQLiteUserDefaults(const SQLiteUserDefaults&) = delete;
    SQLiteUserDefaults& operator=(const SQLiteUserDefaults&) = delete;

    /// Tries a last time to store what could not be stored. To be called while the late-read handler can still take in
    /// a store that could not be read before.
    void finish();

    void setLateReadHandler(LateReadHandler handler) override { lateReadHandler_ = std::move(handler); }
    [[nodiscard]] std::optional<DefaultsValue> objectForKey(std::string_view key) override {
        const DefaultsValue* const value = values_.find(key);
        return value != nullptr ? std::optional(*value) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) override {
        return read(key, stringFromDefaultsValue);
    }
    [[nodiscard]] bool boolForKey(std::string_view key) override { return read(key, boolFromDefaultsValue); }
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) override {
        return read(key, integerFromDefaultsValue);
    }
    [[nodiscard]] std::optional<std::string> dataForKey(std::string_view key) override {
        return read(key, dataFromDefaultsValue);
    }
    void setObjects(std::initializer_list<Entry> entries) override;

    /// Whether something waits to be stored.
    [[nodiscard]] bool hasUnstoredValues() const { return values_.hasUnstored(); }

    /// Whether the log is being moved into the database at this moment.
    [[nodiscard]] bool isCheckpointing() const { return checkpointer_ && checkpointer_->isRunning(); }

    /// Whether it will look in a moment if the file of the last change is still the one under its name. If it is not,
    /// the changes since the last look are stored again, in the file that is there then.
    [[nodiscard]] bool looksForFileSoon() const { return lookTimer_.isSet(); }

    /// Whether nothing is armed that would wake the process.
    [[nodiscard]] bool isAtRest() const {
        return !retryTimer_.isSet() && !lookTimer_.isSet() && (!checkpointer_ || checkpointer_->isAtRest());
    }

    /// Has `rested` called on the main loop each time that the store comes to rest after changes: the log has just been
    /// moved, nothing is armed any more, and as far as the store goes the process sleeps from then on.
    void setRestHandler(std::function<void()> rested) { rested_ = std::move(rested); }

  private:
    template <typename Type>
    Type read(std::string_view key, Type (*conversion)(const DefaultsValue&)) const {
        const DefaultsValue* const value = values_.find(key);
        return value != nullptr ? conversion(*value) : Type();
    }

    int open(std::chrono::milliseconds lockWait);
    void close();
    bool setAside(const char* damage);
    void takeIn(const Values& stored);
    void store(std::chrono::milliseconds lockWait);
    bool makeWritable(std::chrono::milliseconds lockWait);
    int writeUnstoredValues();
    void retryLater(int status);
    void lookForFile();
    void reportProblem(const std::string& problem);

    std::optional<std::filesystem::path> file_;  // as given
    std::filesystem::path realFile_;             // where symbolic links led at the last opening
    StoreOptions options_;
    std::function<void()> rested_;
    LateReadHandler lateReadHandler_;
    bool isRead_ = false;      // false until there was something to read
    bool isTakingIn_ = false;  // what is set in the meantime is stored afterwards
    KnownValues values_;
    std::unique_ptr<StoreConnection> connection_;
    std::unique_ptr<StoreCheckpointer> checkpointer_;
    LoopSource retryTimer_;
    LoopSource lookTimer_;
    std::chrono::milliseconds retryDelay_;
    std::string lastProblem_;
};

}  // namespace vantrel::desktop
