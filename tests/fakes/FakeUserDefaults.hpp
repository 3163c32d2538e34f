#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Vantrel/Platform/UserDefaults.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A store in memory that converts as the real one does.
class FakeUserDefaults final : public UserDefaults {
  public:
    explicit FakeUserDefaults(Journal& journal) : journal_(journal) {}

    void setLateReadHandler(LateReadHandler handler) override { lateReadHandler_ = std::move(handler); }
    [[nodiscard]] std::optional<DefaultsValue> objectForKey(std::string_view key) override;
    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) override;
    [[nodiscard]] bool boolForKey(std::string_view key) override;
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) override;
    [[nodiscard]] std::optional<std::string> dataForKey(std::string_view key) override;
    void setObjects(std::initializer_list<Entry> entries) override;

    /// The store can be read at last: until now `values` held only what was set.
    void readLate(const Values& stored);

    /// Whether somebody would take in what is read late.
    [[nodiscard]] bool hasLateReadHandler() const { return lateReadHandler_ != nullptr; }

    Values values;
    std::function<void()> whenStoring;  ///< runs at each store, where a test sees what has been done by then

  private:
    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const;

    Journal& journal_;
    LateReadHandler lateReadHandler_;
};

}  // namespace vantrel::fake
