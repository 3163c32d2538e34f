#include "helpers/sound/EventSoundPreference.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace vantrel::sound {
namespace {

/// Writes the property as a settings manager does.
class Property {
  public:
    explicit Property(bool isBigEndian) : isBigEndian_(isBigEndian) {}

    Property& integer(const std::string& name, std::uint32_t value) {
        head(0, name);
        number(value, 4);
        return *this;
    }
    Property& text(const std::string& name, const std::string& value) {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    Property& color(const std::string& name) {
        head(2, name);
        bytes_ += std::string(8, '\x7f');
        return *this;
    }

    [[nodiscard]] std::string bytes() const {
        Property header(isBigEndian_);
        header.bytes_ = std::string(1, isBigEndian_ ? '\1' : '\0') + std::string(3, '\0');
        header.number(17, 4);
        header.number(count_, 4);
        return header.bytes_ + bytes_;
    }

  private:
    void head(char type, const std::string& name) {
        ++count_;
        bytes_ += type;
        bytes_ += '\0';
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(3, 4);
    }
    void number(std::uint32_t value, unsigned size) {
        for (unsigned index = 0; index < size; ++index) {
            const unsigned place = isBigEndian_ ? size - 1 - index : index;
            bytes_ += static_cast<char>(value >> (8 * place) & 0xffU);
        }
    }
    void padded(const std::string& text) { bytes_ += text + std::string((4 - text.size() % 4) % 4, '\0'); }

    bool isBigEndian_;
    std::uint32_t count_ = 0;
    std::string bytes_;
};

Property typicalProperty(bool isBigEndian, std::uint32_t areEnabled) {
    Property property(isBigEndian);
    property.text("Net/ThemeName", "Dark")
        .color("Some/Colour")
        .integer("Net/DoubleClickTime", 400)
        .integer("Net/EnableEventSounds", areEnabled)
        .text("Net/SoundThemeName", "ocean");
    return property;
}

TEST(XSettings, eventSoundPreference_bothByteOrders_areRead) {
    for (const bool isBigEndian : {false, true}) {
        EXPECT_EQ(eventSoundPreference(typicalProperty(isBigEndian, 0).bytes()),
                  (EventSoundPreference{false, "ocean"}));
        EXPECT_EQ(eventSoundPreference(typicalProperty(isBigEndian, 1).bytes()), (EventSoundPreference{true, "ocean"}));
    }
}

TEST(XSettings, eventSoundPreference_absentSettings_keepDefaults) {
    EXPECT_EQ(eventSoundPreference(""), EventSoundPreference{});
    EXPECT_EQ(eventSoundPreference(Property(false).bytes()), EventSoundPreference{});
    EXPECT_EQ(eventSoundPreference(Property(false).integer("Net/EnableInputFeedbackSounds", 0).bytes()),
              EventSoundPreference{});
}

TEST(XSettings, eventSoundPreference_settingsOfTheWrongType_areIgnored) {
    const std::string bytes =
        Property(false).text("Net/EnableEventSounds", "0").integer("Net/SoundThemeName", 7).bytes();
    EXPECT_EQ(eventSoundPreference(bytes), EventSoundPreference{});
}

TEST(XSettings, eventSoundPreference_cutOffAnywhere_givesWhatStandsBefore) {
    const std::string whole = typicalProperty(false, 0).bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const EventSoundPreference settings = eventSoundPreference(std::string_view(whole).substr(0, length));
        EXPECT_EQ(settings.themeName, "") << length;
    }
}

TEST(XSettings, eventSoundPreference_lengthsBeyondTheEnd_areHarmless) {
    std::string bytes = Property(false).text("Net/SoundThemeName", "ocean").bytes();
    bytes.replace(12 + 2, 2, "\xff\xff");
    EXPECT_EQ(eventSoundPreference(bytes), EventSoundPreference{});
    std::string countTooLarge = typicalProperty(true, 0).bytes();
    countTooLarge.replace(8, 4, "\xff\xff\xff\xff");
    EXPECT_FALSE(eventSoundPreference(countTooLarge).areEnabled);
    EXPECT_EQ(eventSoundPreference(std::string(100, '\xff')), EventSoundPreference{});
}

}  // namespace
}  // namespace vantrel::sound
