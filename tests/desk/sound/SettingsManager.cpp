#include "tests/desk/sound/SettingsManager.hpp"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vantrel::desk {

SettingsManager::SettingsManager(XConnection& connection)
    : connection_(connection), window_(xcb_generate_id(connection.get())) {
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection_.get(), window_, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    connection_.synchronise();
}

void SettingsManager::publishEventSounds(bool areEnabled) {
    using namespace std::string_view_literals;
    const std::string name = "Net/EnableEventSounds";
    // Little-endian; the first version, with one setting, an integer.
    std::string bytes("\0\0\0\0\1\0\0\0\1\0\0\0"sv);
    bytes += "\0\0"sv;
    bytes += static_cast<char>(name.size());
    bytes += '\0';
    bytes += name + std::string((4 - name.size() % 4) % 4, '\0');
    bytes += "\1\0\0\0"sv;
    bytes += areEnabled ? "\1\0\0\0"sv : "\0\0\0\0"sv;
    const xcb_atom_t property = atom("_XSETTINGS_SETTINGS");
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, property, property, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
    connection_.synchronise();
}

xcb_atom_t SettingsManager::atom(const char* name) {
    const auto cookie = xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace vantrel::desk
