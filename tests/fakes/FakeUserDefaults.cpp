#include "tests/fakes/FakeUserDefaults.hpp"

#include "Vantrel/Platform/DefaultsConversions.hpp"

namespace vantrel::fake {

namespace {

std::string journalText(const DefaultsValue& value) {
    const auto* const data = std::get_if<DefaultsData>(&value);
    return data != nullptr ? data->bytes : stringFromDefaultsValue(value).value_or(std::string());
}

}  // namespace

std::optional<DefaultsValue> FakeUserDefaults::objectForKey(std::string_view key) {
    journal_.push_back("objectForKey(" + std::string(key) + ")");
    return value(key);
}

std::optional<std::string> FakeUserDefaults::stringForKey(std::string_view key) {
    journal_.push_back("stringForKey(" + std::string(key) + ")");
    const auto stored = value(key);
    return stored ? stringFromDefaultsValue(*stored) : std::nullopt;
}

bool FakeUserDefaults::boolForKey(std::string_view key) {
    journal_.push_back("boolForKey(" + std::string(key) + ")");
    const auto stored = value(key);
    return stored && boolFromDefaultsValue(*stored);
}

std::int64_t FakeUserDefaults::integerForKey(std::string_view key) {
    journal_.push_back("integerForKey(" + std::string(key) + ")");
    const auto stored = value(key);
    return stored ? integerFromDefaultsValue(*stored) : 0;
}

std::optional<std::string> FakeUserDefaults::dataForKey(std::string_view key) {
    journal_.push_back("dataForKey(" + std::string(key) + ")");
    const auto stored = value(key);
    return stored ? dataFromDefaultsValue(*stored) : std::nullopt;
}

void FakeUserDefaults::setObjects(std::initializer_list<Entry> entries) {
    std::string line;
    for (const auto& [key, newValue] : entries) {
        line += line.empty() ? "setObjects(" : ", ";
        line += key;
        line += '=';
        line += journalText(newValue);
        values.insert_or_assign(std::string(key), newValue);
    }
    journal_.push_back(line + ")");
    if (whenStoring) {
        whenStoring();
    }
}

void FakeUserDefaults::readLate(const Values& stored) {
    values.insert(stored.begin(), stored.end());
    lateReadHandler_(stored);
}

std::optional<DefaultsValue> FakeUserDefaults::value(std::string_view key) const {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace vantrel::fake
