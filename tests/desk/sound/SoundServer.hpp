#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Environment.hpp"

namespace vantrel::desk {

/// A person's sound server (PulseAudio) with one loudspeaker that nobody hears, and a recorder beside it.
class SoundServer {
  public:
    /// Starts the server for programs of this environment, which must have a runtime directory of its own, and waits
    /// until it accepts clients; throws when it does not.
    SoundServer(const Environment& environment, std::filesystem::path directory);

    /// Everything that the loudspeaker played since the recorder started, from -1 to 1, 44,100 a second.
    [[nodiscard]] std::vector<float> recording() const;

    /// How much has been recorded, in seconds; grows for as long as the server runs.
    [[nodiscard]] double recordedSeconds() const;

    /// As a server that hangs.
    void stop() { server_->sendSignal(SIGSTOP); }
    void goOn() { server_->sendSignal(SIGCONT); }

    /// Ends the server.
    void end() { server_->end(); }

  private:
    std::filesystem::path directory_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<ChildProcess> recorder_;
};

/// How well the recording matches the sound where it matches best: 1 when it is the sound at any volume, near 0 when it
/// is something else or silence.
double likeness(const std::vector<float>& recording, const std::vector<float>& sound);

/// The samples of a mono WAV file with 16 bits.
std::vector<float> samplesOfWav(const std::filesystem::path& file);

}  // namespace vantrel::desk
