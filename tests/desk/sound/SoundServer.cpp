#include "tests/desk/sound/SoundServer.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace vantrel::desk {

namespace {

constexpr double samplesPerSecond = 44100;

std::vector<float> samplesFrom(const std::filesystem::path& file, std::size_t start) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::vector<float> samples;
    for (std::size_t index = start; index + 1 < bytes.size(); index += sizeof(std::int16_t)) {
        std::int16_t sample = 0;
        std::memcpy(&sample, bytes.data() + index, sizeof sample);
        samples.push_back(static_cast<float>(sample) / 32768.0F);
    }
    return samples;
}

}  // namespace

SoundServer::SoundServer(const Environment& environment, std::filesystem::path directory)
    : directory_(std::move(directory)) {
    std::filesystem::create_directories(directory_);
    // A sink that takes nothing back: what it has once rendered is in the recording already.
    ChildProcessOptions server;
    server.arguments = {"pulseaudio",
                        "-n",
                        "--daemonize=no",
                        "--exit-idle-time=-1",
                        "--realtime=no",
                        "--high-priority=no",
                        "--disable-shm=yes",
                        "--load=module-native-protocol-unix auth-anonymous=1",
                        "--load=module-null-sink sink_name=loudspeaker rate=44100 channels=1 norewinds=1"};
    server.environment = environment;
    server.standardError = directory_ / "server-stderr";
    server_ = std::make_unique<ChildProcess>(server);

    // The server creates its socket late, so the first recorders may be refused.
    const bool isUp = waitUntil([&] {
        if (!recorder_ || !recorder_->isRunning()) {
            ChildProcessOptions recorder;
            recorder.arguments = {"parec",
                                  "--device=loudspeaker.monitor",
                                  "--raw",
                                  "--format=s16le",
                                  "--rate=44100",
                                  "--channels=1",
                                  "--latency-msec=20"};
            recorder.environment = environment;
            recorder.standardOutput = directory_ / "recording";
            recorder_ = std::make_unique<ChildProcess>(recorder);
        }
        return recordedSeconds() > 0;
    });
    if (!isUp) {
        throw std::runtime_error("the sound server does not come up");
    }
}

std::vector<float> SoundServer::recording() const {
    return samplesFrom(directory_ / "recording", 0);
}

double SoundServer::recordedSeconds() const {
    std::error_code error;
    const auto size = std::filesystem::file_size(directory_ / "recording", error);
    return error ? 0 : static_cast<double>(size) / sizeof(std::int16_t) / samplesPerSecond;
}

double likeness(const std::vector<float>& recording, const std::vector<float>& sound) {
    double soundEnergy = 0;
    for (const float sample : sound) {
        soundEnergy += static_cast<double>(sample) * sample;
    }
    double best = 0;
    for (std::size_t start = 0; start + sound.size() <= recording.size(); ++start) {
        // Silence cannot match, and most of a recording is silence.
        if (std::fabs(recording[start + sound.size() / 8]) < 1e-4F) {
            continue;
        }
        double product = 0;
        double energy = 0;
        for (std::size_t index = 0; index < sound.size(); ++index) {
            product += static_cast<double>(recording[start + index]) * sound[index];
            energy += static_cast<double>(recording[start + index]) * recording[start + index];
        }
        best = std::max(best, product / std::sqrt(soundEnergy * energy + 1e-12));
    }
    return best;
}

std::vector<float> samplesOfWav(const std::filesystem::path& file) {
    constexpr std::size_t headerSize = 44;
    return samplesFrom(file, headerSize);
}

}  // namespace vantrel::desk
