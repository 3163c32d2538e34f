#include "Vantrel/Backends/Hyprland/HyprlandCommands.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace vantrel::hyprland {

namespace {

using JSON = nlohmann::json;

constexpr std::string_view eventName = "custom>>";
constexpr std::string_view eventOwner = "vantrel ";

/// Takes a number from the beginning of the text.
template <typename Number>
std::optional<Number> takeNumber(std::string_view& text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool takeText(std::string_view& text, std::string_view expected) {
    const bool isThere = text.starts_with(expected);
    text.remove_prefix(isThere ? expected.size() : 0);
    return isThere;
}

std::string whole(double number) {
    return std::to_string(std::llround(std::floor(number)));
}

/// "CTRL + ALT".
std::string modifierText(std::uint32_t carbonModifiers, std::string_view separator) {
    std::string text;
    const auto add = [&](std::uint32_t modifier, std::string_view name) {
        if ((carbonModifiers & modifier) != 0) {
            text += text.empty() ? "" : separator;
            text += name;
        }
    };
    add(controlKey, "CTRL");
    add(optionKey, "ALT");
    add(shiftKey, "SHIFT");
    add(cmdKey, "SUPER");
    return text;
}

/// Keeps a binding in Lua, where bindings have no names.
std::string variableOf(const backend::KeyCombination& combination, xkb_keycode_t keycode) {
    return "vantrel_" + std::to_string(combination.keyCode) + "_" + std::to_string(combination.modifiers) + "_" +
           std::to_string(keycode);
}

std::string eventOf(const backend::KeyCombination& combination) {
    return std::string(eventOwner) + std::to_string(combination.keyCode) + " " + std::to_string(combination.modifiers);
}

/// The reverse of eventOf().
std::optional<backend::KeyCombination> combinationOf(std::string_view event) {
    const auto keyCode = takeText(event, eventOwner) ? takeNumber<std::uint32_t>(event) : std::nullopt;
    const bool isPair = keyCode && takeText(event, " ");
    const auto modifiers = isPair ? takeNumber<std::uint32_t>(event) : std::nullopt;
    if (!modifiers || !event.empty()) {
        return std::nullopt;
    }
    return backend::KeyCombination{*keyCode, *modifiers};
}

std::string textIn(const JSON& object, const char* member) {
    const auto found = object.is_object() ? object.find(member) : object.end();
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

std::uint32_t numberIn(const JSON& object, const char* member) {
    const auto found = object.is_object() ? object.find(member) : object.end();
    const bool isNumber = found != object.end() && found->is_number_unsigned() &&
                          found->get<std::uint64_t>() <= std::numeric_limits<std::uint32_t>::max();
    return isNumber ? found->get<std::uint32_t>() : 0;
}

}  // namespace

std::optional<wayland::LayoutPoint> positionIn(std::string_view answer) {
    const auto x = takeNumber<int>(answer);
    const bool isPair = x && takeText(answer, ", ");
    const auto y = isPair ? takeNumber<int>(answer) : std::nullopt;
    if (!y) {
        return std::nullopt;
    }
    return wayland::LayoutPoint{.x = static_cast<double>(*x), .y = static_cast<double>(*y)};
}

std::string moveCommand(Language language, wayland::LayoutPoint place) {
    if (language == Language::keywords) {
        return "/dispatch movecursor " + whole(place.x) + " " + whole(place.y);
    }
    return "/eval hl.dispatch(hl.dsp.cursor.move({x=" + whole(place.x) + ",y=" + whole(place.y) + "}))";
}

std::string bindCommand(Language language, const backend::KeyCombination& combination, xkb_keycode_t keycode) {
    const std::string key = "code:" + std::to_string(keycode);
    if (language == Language::keywords) {
        return "/keyword bind " + modifierText(combination.modifiers, " ") + "," + key + ",event," +
               eventOf(combination);
    }
    return "/eval " + variableOf(combination, keycode) + " = hl.bind(\"" + modifierText(combination.modifiers, " + ") +
           " + " + key + "\", hl.dsp.event(\"" + eventOf(combination) + "\"))";
}

std::string unbindCommand(Language language, const backend::KeyCombination& combination, xkb_keycode_t keycode) {
    if (language == Language::keywords) {
        return "/keyword unbind " + modifierText(combination.modifiers, " ") + ",code:" + std::to_string(keycode);
    }
    const std::string variable = variableOf(combination, keycode);
    return "/eval if " + variable + " then " + variable + ":remove() " + variable + " = nil end";
}

Bindings bindingsIn(std::string_view answer) {
    Bindings bindings;
    for (const JSON& binding : JSON::parse(answer, nullptr, false)) {
        const auto ours = combinationOf(textIn(binding, "arg"));
        if (ours && textIn(binding, "dispatcher") == "event") {
            bindings.ours.push_back(*ours);
            continue;
        }
        bindings.configured.push_back(
            {.mode = textIn(binding, "submap"),
             .modifiers = numberIn(binding, "modmask"),
             .keycode = numberIn(binding, "keycode"),
             .keysym = xkb_keysym_from_name(textIn(binding, "key").c_str(), XKB_KEYSYM_CASE_INSENSITIVE)});
    }
    return bindings;
}

std::optional<backend::KeyCombination> pressedIn(std::string_view event) {
    return takeText(event, eventName) ? combinationOf(event) : std::nullopt;
}

}  // namespace vantrel::hyprland
