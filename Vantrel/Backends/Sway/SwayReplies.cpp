#include "Vantrel/Backends/Sway/SwayReplies.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace vantrel::sway {

namespace {

using JSON = nlohmann::json;

JSON parsed(std::string_view text) {
    return JSON::parse(text, nullptr, false);
}

std::string textOf(const JSON& object, const char* member) {
    const auto found = object.is_object() ? object.find(member) : object.end();
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

bool allSucceeded(std::string_view reply) {
    const JSON results = parsed(reply);
    return results.is_array() && std::all_of(results.begin(), results.end(), [](const JSON& result) {
               return result.is_object() && result.value("success", JSON()) == JSON(true);
           });
}

std::vector<std::string> modesIn(std::string_view reply) {
    std::vector<std::string> modes;
    for (const JSON& mode : parsed(reply)) {
        if (mode.is_string()) {
            modes.push_back(mode.get<std::string>());
        }
    }
    return modes;
}

std::string configurationIn(std::string_view reply) {
    return textOf(parsed(reply), "config");
}

std::string configurationFileIn(std::string_view reply) {
    return textOf(parsed(reply), "loaded_config_file_name");
}

std::string changeIn(std::string_view event) {
    return textOf(parsed(event), "change");
}

std::optional<std::string> pressedCommandIn(std::string_view event) {
    const JSON object = parsed(event);
    const auto binding = object.is_object() ? object.find("binding") : object.end();
    if (binding == object.end() || textOf(object, "change") != "run") {
        return std::nullopt;
    }
    return textOf(*binding, "command");
}

}  // namespace vantrel::sway
