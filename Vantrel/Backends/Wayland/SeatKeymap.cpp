#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"

#include <unistd.h>
#include <string>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::wayland {

namespace {

struct ContextDeleter {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};
using ContextPointer = std::unique_ptr<xkb_context, ContextDeleter>;

/// What a keyboard tells of itself.
struct KeymapAnswer {
    bool hasCome = false;
    FileDescriptor file;
    std::uint32_t size = 0;
};

void takeKeymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t format, std::int32_t file, std::uint32_t size) {
    auto& answer = *static_cast<KeymapAnswer*>(data);
    FileDescriptor owned(file);
    answer.hasCome = true;
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
        answer.file = std::move(owned);
        answer.size = size;
    }
}

template <typename... Arguments>
void unused(void* /*data*/, Arguments... /*arguments*/) {}

constexpr wl_keyboard_listener keyboardListener{
    .keymap = takeKeymap, .enter = unused, .leave = unused, .key = unused, .modifiers = unused, .repeat_info = unused};

std::string contentOf(const KeymapAnswer& answer) {
    constexpr std::uint32_t largest = 16U * 1024 * 1024;  // beyond that it is none
    std::string text(answer.size <= largest ? answer.size : 0, '\0');
    const ssize_t count = answer.file.isOpen() ? pread(answer.file.get(), text.data(), text.size(), 0) : -1;
    text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return text.substr(0, text.find('\0'));
}

}  // namespace

KeymapPointer readSeatKeymap(WaylandConnection& connection, const Seat& seat, Clock::time_point deadline) {
    const ContextPointer context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context) {
        return nullptr;
    }
    if (!seat.hasKeyboard()) {
        return KeymapPointer(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
    }
    KeymapAnswer answer;
    const WaylandPointer<wl_keyboard> keyboard(wl_seat_get_keyboard(seat.get()));
    wl_keyboard_add_listener(keyboard.get(), &keyboardListener, &answer);
    if (!connection.waitFor([&answer] { return answer.hasCome; }, deadline)) {
        return nullptr;
    }
    const std::string text = contentOf(answer);
    return KeymapPointer(xkb_keymap_new_from_string(context.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                                    XKB_KEYMAP_COMPILE_NO_FLAGS));
}

}  // namespace vantrel::wayland
