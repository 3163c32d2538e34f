#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace vantrel::wayfire {

namespace {

using JSON = nlohmann::json;

constexpr auto bindMethod = "command/register-binding";

JSON parsed(std::string_view text) {
    return JSON::parse(text, nullptr, false);
}

/// Of what is no such object, null.
JSON memberOf(const JSON& object, const char* name) {
    return object.is_object() ? object.value(name, JSON()) : JSON();
}

std::string callOf(const char* method, const JSON& data) {
    return JSON{{"method", method}, {"data", data}}.dump();
}

std::optional<std::uint64_t> numberOf(const JSON& object, const char* name) {
    const JSON number = memberOf(object, name);
    return number.is_number_unsigned() ? std::optional(number.get<std::uint64_t>()) : std::nullopt;
}

}  // namespace

bool isEvent(std::string_view message) {
    return memberOf(parsed(message), "event").is_string();
}

std::string positionCall() {
    return callOf("window-rules/get_cursor_position", JSON::object());
}

std::optional<wayland::LayoutPoint> positionIn(std::string_view answer) {
    const JSON place = memberOf(parsed(answer), "pos");
    const JSON x = memberOf(place, "x");
    const JSON y = memberOf(place, "y");
    if (!x.is_number() || !y.is_number()) {
        return std::nullopt;
    }
    return wayland::LayoutPoint{.x = x.get<double>(), .y = y.get<double>()};
}

std::string methodsCall() {
    return callOf("list-methods", JSON::object());
}

bool canBind(std::string_view answer) {
    const JSON methods = memberOf(parsed(answer), "methods");
    return std::find(methods.begin(), methods.end(), bindMethod) != methods.end();
}

std::string bindCall(const std::string& binding) {
    return callOf(bindMethod, {{"binding", binding}});
}

std::optional<std::uint64_t> bindingIn(std::string_view answer) {
    return numberOf(parsed(answer), "binding-id");
}

std::string unbindCall(std::uint64_t binding) {
    return callOf("command/unregister-binding", {{"binding-id", binding}});
}

std::optional<std::uint64_t> pressedIn(std::string_view event) {
    const JSON message = parsed(event);
    return memberOf(message, "event") == "command-binding" ? numberOf(message, "binding-id") : std::nullopt;
}

}  // namespace vantrel::wayfire
