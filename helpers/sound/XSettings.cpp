#include "helpers/sound/XSettings.hpp"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace vantrel::desktop {
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

/// Reads one setting into the settings; false when it does not conform.
bool readSetting(Reader& reader, EventSoundSettings& settings) {
    const auto type = static_cast<SettingType>(reader.number(1));
    reader.take(1);
    const std::string_view name = reader.text(reader.number(2));
    reader.take(4);  // the serial of its last change
    switch (type) {
        case SettingType::integer: {
            const std::uint32_t value = reader.number(4);
            if (!reader.hasFailed() && name == "Net/EnableEventSounds") {
                settings.areEnabled = value != 0;
            }
            break;
        }
        case SettingType::text: {
            const std::string_view value = reader.text(reader.number(4));
            if (!reader.hasFailed() && name == "Net/SoundThemeName") {
                settings.themeName = value;
            }
            break;
        }
        case SettingType::color:
            reader.take(colorSize);
            break;
        default:
            return false;
    }
    return !reader.hasFailed();
}

}  // namespace

EventSoundSettings eventSoundSettings(std::string_view xsettings) {
    EventSoundSettings settings;
    Reader reader(xsettings);
    reader.setBigEndian(reader.number(1) == 1);
    reader.take(3);
    reader.take(4);  // the serial of the last change
    std::uint32_t count = reader.number(4);
    while (count > 0 && readSetting(reader, settings)) {
        --count;
    }
    return settings;
}

}  // namespace vantrel::desktop
