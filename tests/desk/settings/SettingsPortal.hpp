#pragma once

#include <cstdint>
#include <string>

#include "tests/desk/status/BusClient.hpp"

namespace vantrel::desk {

/// The Settings portal of a desktop, as far as it tells of light and dark.
class SettingsPortal {
  public:
    static constexpr std::uint32_t noPreference = 0, dark = 1, light = 2;

    SettingsPortal(const std::string& busAddress, std::uint32_t colorScheme);
    ~SettingsPortal();
    SettingsPortal(const SettingsPortal&) = delete;
    SettingsPortal& operator=(const SettingsPortal&) = delete;

    /// The person changes their mind.
    void setColorScheme(std::uint32_t colorScheme);

    /// How often it was asked.
    [[nodiscard]] int reads() const { return reads_; }

  private:
    struct Callbacks;

    BusClient bus_;
    std::uint32_t colorScheme_;
    int reads_ = 0;
    guint registration_ = 0;
};

}  // namespace vantrel::desk
