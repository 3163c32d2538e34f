#include <memory>
#include <string>
#include <string_view>

#include "Vantrel/Desktop/Settings/SettingsModule.hpp"
#include "helpers/settings/DesktopColors.hpp"
#include "helpers/settings/QtGuest.hpp"
#include "helpers/settings/SettingsWindow.hpp"

namespace {

class SettingsWindowFactory final : public vantrel::PreferencesWindowViewFactory {
  public:
    explicit SettingsWindowFactory(std::unique_ptr<vantrel::qt::QtGuest> guest) : guest_(std::move(guest)) {}

    vantrel::PreferencesWindowViewResult makePreferencesWindowView() override {
        return {.view = std::make_unique<vantrel::qt::SettingsWindow>(), .problem = {}, .flashText = {}};
    }

  private:
    std::unique_ptr<vantrel::qt::QtGuest> guest_;
    vantrel::qt::DesktopColors colors_;
};

}  // namespace

// The name and the form are those of SettingsModule.
extern "C" vantrel::PreferencesWindowViewFactory* vantrelSettingsModule(const char* agentVersion,
                                                                        const char* windowingSystem,
                                                                        std::string& problem) {
    if (std::string_view(agentVersion) != vantrel::desktop::SettingsModule::version) {
        return nullptr;
    }
    auto guest = vantrel::qt::QtGuest::start(windowingSystem, problem);
    if (!guest) {
        return nullptr;
    }
    return std::make_unique<SettingsWindowFactory>(std::move(guest)).release();
}
