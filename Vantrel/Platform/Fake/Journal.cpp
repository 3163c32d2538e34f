#include "Vantrel/Platform/Fake/Journal.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace vantrel::fake {

std::vector<std::string> Journal::of(std::initializer_list<std::string_view> operations) const {
    std::vector<std::string> selected;
    std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(selected),
                 [operations](const std::string& entry) {
                     const std::string_view operation = std::string_view(entry).substr(0, entry.find(' '));
                     return std::find(operations.begin(), operations.end(), operation) != operations.end();
                 });
    return selected;
}

std::string journalText(double number) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

}  // namespace vantrel::fake
