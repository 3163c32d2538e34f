#include "helpers/sound/EventSounds.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "helpers/sound/EventSoundPreference.hpp"

namespace vantrel::sound {
namespace {

struct NamedSound {
    std::string_view name;
    const char* eventID;  ///< under which a sound theme may bring one of its own
    const char* file;
};

constexpr std::array<NamedSound, 1> namedSounds{{{"Pop", "vantrel-pop", "pop.wav"}}};

/// Our own sounds; in the build tree they stand to this program as where they are installed.
std::string soundFile(const char* name) {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (self.parent_path() / VANTREL_SOUNDS_FROM_LIBEXEC / name).lexically_normal().string();
}

/// Where there is no sound card, ALSA writes a dozen lines for each sound into the session's log.
class StandardErrorSilence {
  public:
    StandardErrorSilence() : kept_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)) {
        const FileDescriptor nothing(open("/dev/null", O_WRONLY | O_CLOEXEC));
        if (kept_.isOpen() && nothing.isOpen()) {
            dup2(nothing.get(), STDERR_FILENO);
        }
    }
    ~StandardErrorSilence() {
        if (kept_.isOpen()) {
            dup2(kept_.get(), STDERR_FILENO);
        }
    }
    StandardErrorSilence(const StandardErrorSilence&) = delete;
    StandardErrorSilence& operator=(const StandardErrorSilence&) = delete;

  private:
    FileDescriptor kept_;
};

}  // namespace

void EventSounds::play(std::string_view soundName) {
    const auto sound = std::ranges::find(namedSounds, soundName, &NamedSound::name);
    if (sound == namedSounds.end()) {
        return;
    }
    const EventSoundPreference settings = currentEventSoundPreference();
    if (!settings.areEnabled) {
        return;
    }
    const std::string file = soundFile(sound->file);
    if (connect() && start(sound->eventID, file, settings.themeName) != CA_SUCCESS) {
        // The server may have been restarted since the last sound.
        context_.reset();
        if (connect()) {
            start(sound->eventID, file, settings.themeName);
        }
    }
}

bool EventSounds::connect() {
    if (context_) {
        return true;
    }
    ca_context* context = nullptr;
    if (ca_context_create(&context) != CA_SUCCESS) {
        return false;
    }
    context_.reset(context);
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Vantrel", CA_PROP_APPLICATION_ID, "org.vantrel.Vantrel",
                            CA_PROP_APPLICATION_ICON_NAME, "org.vantrel.Vantrel", nullptr);
    return true;
}

int EventSounds::start(const std::string& eventID, const std::string& file, const std::string& themeName) {
    ca_proplist* properties = nullptr;
    if (ca_proplist_create(&properties) != CA_SUCCESS) {
        return CA_ERROR_OOM;
    }
    ca_proplist_sets(properties, CA_PROP_EVENT_ID, eventID.c_str());
    ca_proplist_sets(properties, CA_PROP_EVENT_DESCRIPTION, "Pointer moved");
    ca_proplist_sets(properties, CA_PROP_MEDIA_FILENAME, file.c_str());
    ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
    if (!themeName.empty()) {
        ca_proplist_sets(properties, CA_PROP_CANBERRA_XDG_THEME_NAME, themeName.c_str());
    }
    int result = CA_SUCCESS;
    {
        const StandardErrorSilence silence;
        result = ca_context_play_full(context_.get(), 0, properties, nullptr, nullptr);
    }
    ca_proplist_destroy(properties);
    return result;
}

}  // namespace vantrel::sound
