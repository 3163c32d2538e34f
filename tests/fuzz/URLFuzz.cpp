#include <algorithm>
#include <string>

#include "FuzzTarget.hpp"
#include "Vantrel/Controller/AppDelegate.hpp"
#include "tests/fakes/FakePlatform.hpp"

using namespace vantrel;

namespace {

bool startsWithOurScheme(std::string_view text) {
    constexpr std::string_view start = "vantrel:";
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(), [](char expected, char given) {
               return expected == given || (given >= 'A' && given <= 'Z' && expected == given - 'A' + 'a');
           });
}

/// Decoding only ever makes a text shorter, and what was decoded is a C string.
void requireParts(const URLComponents& components, std::string_view text) {
    std::size_t size = components.scheme.size() + components.host.value_or("").size() + components.path.size();
    const auto separators = static_cast<std::size_t>(std::count(text.begin(), text.end(), '&'));
    fuzz::require(components.queryItems.size() <= separators + 1, "an item for each piece of the query at most");
    for (const URLQueryItem& item : components.queryItems) {
        const std::string value = item.value.value_or("");
        size += item.name.size() + value.size();
        fuzz::require((item.name + value).find('\0') == std::string::npos, "no NUL comes out of a query");
    }
    fuzz::require(size <= text.size(), "the parts are no longer than the whole");
    fuzz::require(text.substr(0, components.scheme.size()) == components.scheme, "the scheme stands as it was written");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::text(data, size);
    fake::FakePlatform fakes;
    if (const auto components = fakes.urls.parse(text)) {
        requireParts(*components, text);
    }
    const auto controller = AppDelegate::create(fakes.platform(), vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    fakes.journal.clear();
    controller->handleURL(text);
    if (startsWithOurScheme(text)) {
        // Without displays and saved points every command ends in one short text.
        fuzz::require(fake::entriesOf(fakes.journal, {"setTitle"}).size() == 1, "one answer to a text of our scheme");
    } else {
        fuzz::require(fakes.journal.empty(), "no answer to other texts");
    }
    return 0;
}
