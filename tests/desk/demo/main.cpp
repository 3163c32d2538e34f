// Plays the agent at work on a private desk, at a viewer's pace, and lets ffmpeg record the screen with its pointer.
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/desk/demo/ArrowCursor.hpp"
#include "tests/desk/demo/DemoStage.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

using std::chrono::milliseconds;

constexpr MainPoint homePlace{.x = 170, .y = 240};
constexpr MainPoint centreOfSecond{.x = 756, .y = 180};
constexpr MainPoint farPlace{.x = 820, .y = 270};

void pause(milliseconds time) {
    std::this_thread::sleep_for(time);
}

class Demo {
  public:
    Demo() {
        desk_.layout().apply(
            {{.output = 0, .bounds = DemoStage::mainDisplay}, {.output = 1, .bounds = DemoStage::secondDisplay}});
        // Room below the displays, where the keys are drawn; the pointer cannot go there.
        runProgram({"xrandr", "--fb", std::to_string(DemoStage::width) + "x" + std::to_string(DemoStage::height)},
                   desk_.environment());
        stage_ = std::make_unique<DemoStage>(desk_.connection());
        showArrowCursor(desk_.connection());
        desk_.pointer().moveTo(homePlace);
    }

    void record(const std::filesystem::path& film) {
        startAgent("none");
        say("Hyper + D: to the next display");
        startRecording(film);
        pause(milliseconds(900));
        jump(centreOfSecond);
        moveByHand(centreOfSecond, farPlace);
        say("… and back to where it was");
        jump(homePlace);
        say("Each display keeps its place");
        jump(farPlace);
        startAgent("glide");
        say("With the animation: a glide of 0.16 s");
        pause(milliseconds(500));
        jump(homePlace);
        jump(farPlace);
        jump(homePlace);
        recorder_->end(SIGINT);
    }

  private:
    void startAgent(const std::string& animation) {
        if (agent_) {
            agent_->terminate();
        }
        desk_.defaults().writeText("animation", animation);
        agent_ = desk_.startAgent();
    }

    void startRecording(const std::filesystem::path& film) {
        ChildProcessOptions options;
        const auto videoSize = std::to_string(DemoStage::width) + "x" + std::to_string(DemoStage::height);
        options.arguments = {
            "ffmpeg",   "-y",          "-loglevel",  "error",       "-f",      "x11grab", "-framerate",
            "25",       "-draw_mouse", "1",          "-video_size", videoSize, "-i",      desk_.server().displayName(),
            "-codec:v", "ffv1",        film.native()};
        options.environment = desk_.environment();
        options.standardError = film.native() + ".log";
        recorder_ = std::make_unique<ChildProcess>(options);
        std::error_code error;
        if (!waitUntil([&] { return std::filesystem::exists(film, error); })) {
            throw std::runtime_error("ffmpeg does not record; see " + options.standardError.native());
        }
    }

    void say(const std::string& sentence) {
        sentence_ = sentence;
        draw(0);
    }

    void draw(int heldKeys) { stage_->draw(places_, heldKeys, sentence_); }

    /// Presses Hyper + D; throws when the pointer does not get to the place.
    void jump(MainPoint to) {
        const auto chord = hyper(keys::d);
        const MainPoint from = desk_.pointer().position();
        int held = 0;
        for (const auto& key : chord) {
            desk_.keyboard().press(key);
            draw(++held);
            pause(milliseconds(held < static_cast<int>(chord.size()) ? 60 : 0));
        }
        if (!desk_.pointer().waitFor(to)) {
            throw std::runtime_error("the pointer did not jump where it should");
        }
        std::erase_if(places_, [&](MainPoint place) { return place == to || isOnMain(place) == isOnMain(from); });
        places_.push_back(from);
        draw(held);
        pause(milliseconds(400));
        desk_.keyboard().letGo();
        draw(0);
        pause(milliseconds(1000));
    }

    void moveByHand(MainPoint from, MainPoint to) {
        constexpr int steps = 20;
        for (int step = 1; step <= steps; ++step) {
            desk_.pointer().moveTo(
                {.x = from.x + (to.x - from.x) * step / steps, .y = from.y + (to.y - from.y) * step / steps});
            pause(milliseconds(30));
        }
        pause(milliseconds(400));
    }

    static bool isOnMain(MainPoint point) { return point.x < DemoStage::mainDisplay.width; }

    Desk desk_;
    std::unique_ptr<DemoStage> stage_;
    std::unique_ptr<AgentProcess> agent_;
    std::unique_ptr<ChildProcess> recorder_;
    std::vector<MainPoint> places_;
    std::string sentence_;
};

}  // namespace
}  // namespace vantrel::desk

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: %s FILM.mkv\n", arguments[0]);
        return 2;
    }
    try {
        vantrel::desk::Demo().record(arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
