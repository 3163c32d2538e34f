#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace vantrel {

/// Bytes without an encoding, as opposed to a string.
struct DefaultsData {
    std::string bytes;

    bool operator==(const DefaultsData&) const = default;
};

/// A value of the defaults store.
using DefaultsValue = std::variant<std::string, bool, std::int64_t, double, DefaultsData>;

/// The person's settings: typed values by key. A read converts as a defaults store does (docs/design/store.md has the
/// table). A write never fails for the caller: what could not be stored is kept and stored with the next write.
class UserDefaults {
  public:
    using Entry = std::pair<std::string_view, DefaultsValue>;
    using Values = std::map<std::string, DefaultsValue, std::less<>>;
    using LateReadHandler = std::function<void(const Values& stored)>;

    virtual ~UserDefaults() = default;

    /// Has `handler` called, once at most, when a store that could not be read at first can be read at last, and before
    /// anything is written to it. `stored` is all that it holds. Reads give the same, but for keys that were set in the
    /// meantime: those keep what they were set to. What the handler sets is stored in one transaction with that.
    /// Without a handler nothing is written to such a store.
    virtual void setLateReadHandler(LateReadHandler handler) = 0;

    /// The stored value; none when nothing is stored under the key.
    [[nodiscard]] virtual std::optional<DefaultsValue> objectForKey(std::string_view key) = 0;

    /// A string as it is, a number as its decimal text; none for data or when nothing is stored.
    [[nodiscard]] virtual std::optional<std::string> stringForKey(std::string_view key) = 0;

    /// A boolean or number by being other than zero, a string by its beginning ("YES", "true", "1"); else false.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) = 0;

    /// A number without its fraction, a boolean as 0 or 1, a string by the number it begins with; else 0. Values beyond
    /// 64 bits become the nearest that fits.
    [[nodiscard]] virtual std::int64_t integerForKey(std::string_view key) = 0;

    /// Data as it is; none for every other type or when nothing is stored.
    [[nodiscard]] virtual std::optional<std::string> dataForKey(std::string_view key) = 0;

    /// Stores entries that belong together: either all of them are found after a crash, or none.
    virtual void setObjects(std::initializer_list<Entry> entries) = 0;

    void setObject(DefaultsValue value, std::string_view key) { setObjects({Entry{key, std::move(value)}}); }
    void setBool(bool value, std::string_view key) { setObjects({Entry{key, value}}); }
};

}  // namespace vantrel
