#include "Vantrel/Controller/AppDelegate.hpp"

#include <algorithm>

namespace vantrel {

namespace {

constexpr std::string_view urlScheme = "vantrel";

// Without the locale: a Turkish one would turn I into something that is not i.
char lowerCased(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string lowerCased(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char character) { return lowerCased(character); });
    return result;
}

std::string_view withoutSlashes(std::string_view path) {
    const std::size_t first = path.find_first_not_of('/');
    if (first == std::string_view::npos) {
        return {};
    }
    return path.substr(first, path.find_last_not_of('/') - first + 1);
}

bool isTextOfOurScheme(std::string_view text) {
    return text.size() > urlScheme.size() && text[urlScheme.size()] == ':' &&
           lowerCased(text.substr(0, urlScheme.size())) == urlScheme;
}

std::string commandOf(const URLComponents& components) {
    if (components.host && !components.host->empty()) {
        return lowerCased(*components.host);
    }
    return lowerCased(withoutSlashes(components.path));
}

/// The lower-cased value of the first item with that name; empty when there is none or it has no value.
std::string queryValue(const URLComponents& components, std::string_view name) {
    const auto item = std::find_if(components.queryItems.begin(), components.queryItems.end(),
                                   [name](const URLQueryItem& candidate) { return candidate.name == name; });
    return item == components.queryItems.end() ? std::string() : lowerCased(item->value.value_or(std::string()));
}

}  // namespace

void AppDelegate::applicationOpen(const std::vector<std::string>& urls) {
    assertMainThread("applicationOpen");
    for (const std::string& url : urls) {
        handleURL(url);
    }
}

void AppDelegate::handleURL(std::string_view url) {
    const auto components = platform_.urls.parse(url);
    if (!components) {
        if (isTextOfOurScheme(url)) {
            flashStatus("Bad URL");
        }
        return;
    }
    if (lowerCased(components->scheme) != urlScheme) {
        return;
    }
    const std::string command = commandOf(*components);
    const std::string modeValue = queryValue(*components, "mode");
    const std::string directionValue = queryValue(*components, "direction");
    const bool isTeleport = command == "teleport";
    if (command == "manual" || (isTeleport && modeValue == "manual")) {
        teleportSavedPoint();
    } else if (command == "previous" || (isTeleport && directionValue == "previous")) {
        teleportDisplay(TeleportDirection::previous);
    } else if (command == "next" || isTeleport) {
        teleportDisplay(TeleportDirection::next);
    } else if (command == "save-point") {
        saveCurrentPoint();
    } else {
        flashStatus("Bad URL");
    }
}

}  // namespace vantrel
