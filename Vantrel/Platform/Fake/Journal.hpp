#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::fake {

/// The calls that reached the fakes of one platform, in the order in which they came. An entry is the operation's name,
/// then its arguments: "CGWarpMouseCursorPosition (-512, 484)".
class Journal {
  public:
    void record(std::string entry) { entries_.push_back(std::move(entry)); }
    void clear() { entries_.clear(); }

    [[nodiscard]] const std::vector<std::string>& entries() const { return entries_; }

    /// The entries of these operations only, in order.
    [[nodiscard]] std::vector<std::string> of(std::initializer_list<std::string_view> operations) const;

    /// The entries of the operation.
    [[nodiscard]] std::size_t count(std::string_view operation) const { return of({operation}).size(); }

  private:
    std::vector<std::string> entries_;
};

/// The shortest decimal text of the number, without a locale.
std::string journalText(double number);

}  // namespace vantrel::fake
