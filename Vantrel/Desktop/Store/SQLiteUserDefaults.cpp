#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Platform/DefaultsConversions.hpp"

namespace vantrel::desktop {

SQLiteUserDefaults::SQLiteUserDefaults(std::optional<std::filesystem::path> file, StoreOptions options)
    : file_(std::move(file)), options_(options), retryDelay_(options.firstRetry) {
    if (file_) {
        retryLater(openStore(options_.patience));
    }
}

SQLiteUserDefaults::~SQLiteUserDefaults() {
    checkpointer_.reset();
    finish();
    checkpointer_.reset();
    if (connection_) {
        connection_->moveLogWhenClosing();
    }
}

void SQLiteUserDefaults::finish() {
    if (lookTimer_.isSet()) {
        storeAgainIfTheFileWasMoved();
    }
    if (hasUnstoredValues()) {
        storeUnstoredValues(options_.patience);
    }
}

std::optional<DefaultsValue> SQLiteUserDefaults::objectForKey(std::string_view key) {
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
    if (!isTakingIn_) {
        storeUnstoredValues(std::chrono::milliseconds::zero());
    }
}

bool SQLiteUserDefaults::hasUnstoredValues() const {
    return std::ranges::any_of(knownValues_, [](const auto& known) { return !known.second.isStored; });
}

}  // namespace vantrel::desktop
