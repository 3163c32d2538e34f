#include "tests/fakes/Journal.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

namespace vantrel::fake {

Journal entriesOf(const Journal& journal, std::initializer_list<std::string_view> operations) {
    Journal selected;
    std::copy_if(journal.begin(), journal.end(), std::back_inserter(selected), [operations](const std::string& entry) {
        const std::string_view operation = std::string_view(entry).substr(0, entry.find('('));
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
