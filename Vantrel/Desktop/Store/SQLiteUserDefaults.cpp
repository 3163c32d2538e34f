#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Platform/DefaultsConversions.hpp"

namespace vantrel::desktop {
namespace {

// At launch and at the end a short lock of others is waited for: values that could not be read would be built-in ones
// for the whole run. In between nothing waits.
constexpr std::chrono::milliseconds patience{1000};

}  // namespace

SQLiteUserDefaults::SQLiteUserDefaults(std::optional<std::filesystem::path> file, StoreOptions options)
    : file_(std::move(file)), options_(options), retryDelay_(options.firstRetry) {
    if (file_) {
        openStore(patience);
    }
}

SQLiteUserDefaults::~SQLiteUserDefaults() {
    checkpointer_.reset();
    storeAgainIfTheFileWasMoved();
    if (hasUnstoredValues()) {
        if (connection_) {
            connection_->setLockWait(patience);
        }
        storeUnstoredValues();
        checkpointer_.reset();
    }
    if (connection_) {
        connection_->moveLogWhenClosing();
    }
}

std::optional<DefaultsValue> SQLiteUserDefaults::objectForKey(std::string_view key) {
    const auto known = knownValues_.find(key);
    const bool isUnstored = known != knownValues_.end() && !known->second.isStored;
    if (connection_ && !isUnstored) {
        std::optional<DefaultsValue> value;
        const int status = connection_->read(key, value);
        if (status == SQLITE_OK) {
            if (value) {
                knownValues_.insert_or_assign(std::string(key), KnownValue{*value, true});
            }
            return value;
        }
        if (meansDamage(status)) {
            startAfresh();
        } else {
            reportProblem("the value of " + std::string(key) + " cannot be read: " + connection_->reasonOf(status));
        }
    }
    const auto found = knownValues_.find(key);
    return found == knownValues_.end() ? std::nullopt : std::optional(found->second.value);
}

std::optional<std::string> SQLiteUserDefaults::stringForKey(std::string_view key) {
    const auto value = objectForKey(key);
    return value ? stringFromDefaultsValue(*value) : std::nullopt;
}

bool SQLiteUserDefaults::boolForKey(std::string_view key) {
    const auto value = objectForKey(key);
    return value && boolFromDefaultsValue(*value);
}

std::int64_t SQLiteUserDefaults::integerForKey(std::string_view key) {
    const auto value = objectForKey(key);
    return value ? integerFromDefaultsValue(*value) : 0;
}

std::optional<std::string> SQLiteUserDefaults::dataForKey(std::string_view key) {
    const auto value = objectForKey(key);
    return value ? dataFromDefaultsValue(*value) : std::nullopt;
}

void SQLiteUserDefaults::setObjects(std::initializer_list<Entry> entries) {
    for (const auto& [key, value] : entries) {
        const auto known = knownValues_.find(key);
        if (known == knownValues_.end()) {
            knownValues_.emplace(std::string(key), KnownValue{value, false});
        } else {
            known->second.value = value;
            known->second.isStored = false;
        }
    }
    if (connection_) {
        connection_->setLockWait(std::chrono::milliseconds::zero());
    }
    storeUnstoredValues();
}

bool SQLiteUserDefaults::hasUnstoredValues() const {
    return std::ranges::any_of(knownValues_, [](const auto& known) { return !known.second.isStored; });
}

}  // namespace vantrel::desktop
