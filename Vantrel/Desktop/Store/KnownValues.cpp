#include "Vantrel/Desktop/Store/KnownValues.hpp"

#include <algorithm>

namespace vantrel::desktop {

const DefaultsValue* KnownValues::find(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? nullptr : &found->second.value;
}

void KnownValues::set(std::string_view key, const DefaultsValue& value) {
    const auto found = values_.find(key);
    if (found == values_.end()) {
        values_.emplace(std::string(key), Known{value, State::unstored});
    } else {
        found->second.value = value;
        found->second.state = State::unstored;
    }
}

void KnownValues::addStored(const UserDefaults::Values& stored) {
    noteFileLost();
    for (const auto& [key, value] : stored) {
        values_.try_emplace(key, Known{value, State::stored});
    }
}

std::vector<StoreConnection::Entry> KnownValues::unstored() const {
    std::vector<StoreConnection::Entry> entries;
    for (const auto& [key, known] : values_) {
        if (known.state == State::unstored) {
            entries.emplace_back(key, &known.value);
        }
    }
    return entries;
}

bool KnownValues::hasUnstored() const {
    return std::ranges::any_of(values_, [](const auto& known) { return known.second.state == State::unstored; });
}

void KnownValues::change(State from, State to) {
    for (auto& [key, known] : values_) {
        known.state = known.state == from ? to : known.state;
    }
}

}  // namespace vantrel::desktop
