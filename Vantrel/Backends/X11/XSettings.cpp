#include "Vantrel/Backends/X11/XSettings.hpp"

#include <cstddef>

#include "Vantrel/Backends/X11/XcbRequests.hpp"

namespace vantrel::x11 {

namespace {

/// Reads numbers and texts one after another; what lies beyond the end makes the reader fail for good.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] bool hasFailed() const { return hasFailed_; }
    void setBigEndian(bool isBigEndian) { isBigEndian_ = isBigEndian; }

    std::uint32_t number(std::size_t size) {
        const std::string_view digits = take(size);
        std::uint32_t result = 0;
        for (std::size_t index = 0; index < digits.size(); ++index) {
            const std::size_t place = isBigEndian_ ? index : digits.size() - 1 - index;
            result = (result << 8U) + static_cast<unsigned char>(digits[place]);
        }
        return result;
    }

    /// A text and what fills it up to a multiple of four bytes.
    std::string_view text(std::size_t size) {
        const std::string_view result = take(size);
        take((4 - size % 4) % 4);
        return result;
    }

    std::string_view take(std::size_t size) {
        if (size > bytes_.size()) {
            hasFailed_ = true;
            bytes_ = {};
            return {};
        }
        const std::string_view result = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return result;
    }

  private:
    std::string_view bytes_;
    bool isBigEndian_ = false;
    bool hasFailed_ = false;
};

enum class SettingType : std::uint32_t { integer = 0, text = 1, color = 2 };

constexpr std::size_t colorSize = 8;

/// Reads one setting; false when it does not conform.
bool readSetting(Reader& reader, XSettings& settings) {
    const auto type = static_cast<SettingType>(reader.number(1));
    reader.take(1);
    const std::string_view name = reader.text(reader.number(2));
    reader.take(4);  // the serial of its last change
    XSettings::mapped_type value;
    switch (type) {
        case SettingType::integer:
            value = reader.number(4);
            break;
        case SettingType::text:
            value = reader.text(reader.number(4));
            break;
        case SettingType::color:
            reader.take(colorSize);
            return !reader.hasFailed();
        default:
            return false;
    }
    if (!reader.hasFailed()) {
        settings.insert_or_assign(name, value);
    }
    return !reader.hasFailed();
}

}  // namespace

XSettings readXSettings(std::string_view property) {
    Reader reader(property);
    reader.setBigEndian(reader.number(1) == 1);
    reader.take(3);
    reader.take(4);  // the serial of the last change
    XSettings settings;
    std::uint32_t count = reader.number(4);
    while (count > 0 && readSetting(reader, settings)) {
        --count;
    }
    return settings;
}

std::string publishedXSettings(xcb_connection_t* connection, int screen) {
    constexpr std::uint32_t longest = 1U << 20U;  // in units of four bytes
    const xcb_window_t owner =
        selectionOwner(connection, internAtom(connection, "_XSETTINGS_S" + std::to_string(screen)));
    if (owner == XCB_NONE) {
        return {};
    }
    const xcb_atom_t property = internAtom(connection, "_XSETTINGS_SETTINGS");
    const auto cookie = xcb_get_property(connection, 0, owner, property, XCB_ATOM_ANY, 0, longest);
    const auto reply = adopt(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

}  // namespace vantrel::x11
