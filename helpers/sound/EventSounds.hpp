#pragma once

#include <canberra.h>

#include <memory>
#include <string>
#include <string_view>

namespace vantrel::sound {

/// Sounds through libcanberra, which finds the sound server. Every call may block for as long as the server likes.
class EventSounds {
  public:
    /// Starts the sound, unless the person has switched event sounds off. A sound of the desktop's theme goes before
    /// our own file. What is missing is silence.
    void play(std::string_view soundName);

  private:
    struct Destroyer {
        void operator()(ca_context* context) const { ca_context_destroy(context); }
    };

    bool connect();
    int start(const std::string& eventID, const std::string& file, const std::string& themeName);

    std::unique_ptr<ca_context, Destroyer> context_;
};

}  // namespace vantrel::sound
