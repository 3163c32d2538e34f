#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Desktop/Store/StoreConnection.hpp"
#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel::desktop {

/// The settings as this run read or last set them, and how far each has come on its way into the file.
class KnownValues {
  public:
    [[nodiscard]] bool isEmpty() const { return values_.empty(); }

    /// Null for a key that is not known.
    [[nodiscard]] const DefaultsValue* find(std::string_view key) const;

    /// Sets a value, which waits to be stored.
    void set(std::string_view key, const DefaultsValue& value);

    /// Takes in what the file holds, but for keys that are known already. Those wait to be stored in it.
    void addStored(const UserDefaults::Values& stored);

    /// The values that wait to be stored, until one is set.
    [[nodiscard]] std::vector<StoreConnection::Entry> unstored() const;
    [[nodiscard]] bool hasUnstored() const;

    /// The values that waited are in the file that was opened.
    void noteStored() { change(State::unstored, State::storedSinceLook); }

    /// That file is the one under the name, so what is stored in it is in place; or else what was stored since the last
    /// of these calls must be stored again.
    void noteLook(bool isInPlace) { change(State::storedSinceLook, isInPlace ? State::stored : State::unstored); }

    /// The file is gone from its name: all values wait to be stored in another.
    void noteFileLost() {
        change(State::storedSinceLook, State::unstored);
        change(State::stored, State::unstored);
    }

  private:
    enum class State { unstored, storedSinceLook, stored };
    struct Known {
        DefaultsValue value;
        State state;
    };

    void change(State from, State to);

    std::map<std::string, Known, std::less<>> values_;
};

}  // namespace vantrel::desktop
