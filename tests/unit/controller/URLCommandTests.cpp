#include <ostream>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

using namespace std::string_literals;

enum class Effect { nothing, badURL, next, previous, savedPoint, save };

struct URLCase {
    std::string url;
    Effect effect;
};

class URLCommandTest : public ControllerTest {
  protected:
    void SetUp() override { reset(); }

    /// A launch with what is stored, three displays in a row, the pointer on the middle one, nothing shown.
    void reset() {
        fakes.displays.layout = {{1, CGRect{{-1000, 0}, {1000, 800}}},
                                 {2, CGRect{{0, 0}, {1000, 800}}},
                                 {3, CGRect{{1000, 0}, {1000, 800}}}};
        fakes.pointer.location = {100, 100};
        fakes.defaults.values = stored;
        relaunch();
    }

    /// What the calls since the reset amount to: exactly one action, or one flash, or nothing.
    [[nodiscard]] Effect effect() const {
        const fake::Journal visible = calls({"CGWarpMouseCursorPosition", "setTitle"});
        if (visible.empty() && fakes.journal.empty()) {
            return Effect::nothing;
        }
        if (visible == fake::Journal{"setTitle(Bad URL)"}) {
            return Effect::badURL;
        }
        if (visible == fake::Journal{"CGWarpMouseCursorPosition(1500, 400)"}) {
            return Effect::next;
        }
        if (visible == fake::Journal{"CGWarpMouseCursorPosition(-500, 400)"}) {
            return Effect::previous;
        }
        if (visible == fake::Journal{"CGWarpMouseCursorPosition(11, 12)", "setTitle(Corner)"}) {
            return Effect::savedPoint;
        }
        if (visible == fake::Journal{"setTitle(Saved)"}) {
            return Effect::save;
        }
        ADD_FAILURE() << "more than one action: " << testing::PrintToString(visible);
        return Effect::nothing;
    }

    void expectEffects(const std::vector<URLCase>& cases) {
        for (const URLCase& row : cases) {
            reset();
            controller->handleURL(row.url);
            EXPECT_EQ(effect(), row.effect) << row.url;
        }
    }

    UserDefaults::Values stored{
        {"animation", "none"},
        {"savedPoints",
         DefaultsData{R"([{"id":"00000000-0000-0000-0000-0000000000A1","name":"Corner","point":{"x":11,"y":12}}])"}}};
};

TEST_F(URLCommandTest, handleURL_eachCommand_doesItsAction) {
    expectEffects({{"vantrel://teleport", Effect::next},
                   {"vantrel://next", Effect::next},
                   {"vantrel://previous", Effect::previous},
                   {"vantrel://manual", Effect::savedPoint},
                   {"vantrel://save-point", Effect::save}});
}

TEST_F(URLCommandTest, handleURL_commandInHostOrPath_isTheSame) {
    expectEffects({{"vantrel:previous", Effect::previous},
                   {"vantrel:/previous", Effect::previous},
                   {"vantrel:///previous/", Effect::previous},
                   {"vantrel:////previous//", Effect::previous},
                   {"vantrel://previous/", Effect::previous},
                   {"vantrel://previous/next", Effect::previous},
                   {"vantrel://user@previous:80/next", Effect::previous},
                   {"vantrel:previous#next", Effect::previous},
                   {"vantrel:save%2Dpoint", Effect::save},
                   {"vantrel://%70revious", Effect::previous},
                   {"vantrel:%2Fprevious%2f", Effect::previous}});
}

TEST_F(URLCommandTest, handleURL_otherCase_isTheSame) {
    expectEffects({{"VANTREL://PREVIOUS", Effect::previous},
                   {"Vantrel:Save-Point", Effect::save},
                   {"vantrel://TELEPORT", Effect::next},
                   {"vantrel://Manual", Effect::savedPoint}});
}

TEST_F(URLCommandTest, handleURL_queryOfTeleport_choosesTheTarget) {
    expectEffects({{"vantrel://teleport?direction=previous", Effect::previous},
                   {"vantrel://teleport?direction=PREVIOUS", Effect::previous},
                   {"vantrel://teleport?direction=next", Effect::next},
                   {"vantrel://teleport?direction=up", Effect::next},
                   {"vantrel://teleport?direction", Effect::next},
                   {"vantrel://teleport?direction=", Effect::next},
                   {"vantrel://teleport?mode=manual", Effect::savedPoint},
                   {"vantrel://teleport?mode=MANUAL", Effect::savedPoint},
                   {"vantrel://teleport?mode=%6Danual", Effect::savedPoint},
                   {"vantrel://teleport?m%6Fde=manual", Effect::savedPoint},
                   {"vantrel:teleport?mode=manual", Effect::savedPoint},
                   {"vantrel://teleport?mode=automatic", Effect::next},
                   {"vantrel://teleport?mode=other", Effect::next},
                   {"vantrel://teleport?Mode=manual", Effect::next},
                   {"vantrel://teleport?MODE=manual&Direction=previous", Effect::next},
                   {"vantrel://teleport?mode=manual&direction=previous", Effect::savedPoint},
                   {"vantrel://teleport?direction=previous&mode=manual", Effect::savedPoint},
                   {"vantrel://teleport?mode=automatic&direction=previous", Effect::previous},
                   {"vantrel://teleport?mode=manual&mode=automatic", Effect::savedPoint},
                   {"vantrel://teleport?mode=automatic&mode=manual", Effect::next},
                   {"vantrel://teleport?mode&mode=manual", Effect::next},
                   {"vantrel://teleport?x=1&mode=manual", Effect::savedPoint},
                   {"vantrel://teleport?mode=manual+", Effect::next}});
}

TEST_F(URLCommandTest, handleURL_queryOfOtherCommands_isIgnored) {
    expectEffects({{"vantrel://next?mode=manual&direction=previous", Effect::next},
                   {"vantrel://previous?mode=manual&direction=next", Effect::previous},
                   {"vantrel://manual?direction=previous", Effect::savedPoint},
                   {"vantrel://save-point?mode=manual", Effect::save}});
}

TEST_F(URLCommandTest, handleURL_badQuery_isNoQuery) {
    expectEffects({{"vantrel://teleport?mode=manual&x=%zz", Effect::next},
                   {"vantrel://previous?%", Effect::previous},
                   {"vantrel://teleport?mode=manual\0"s, Effect::next}});
}

TEST_F(URLCommandTest, handleURL_unknownCommand_flashes) {
    expectEffects({{"vantrel://", Effect::badURL},
                   {"vantrel:", Effect::badURL},
                   {"vantrel:///", Effect::badURL},
                   {"vantrel://bogus", Effect::badURL},
                   {"vantrel://nextt", Effect::badURL},
                   {"vantrel://next2", Effect::badURL},
                   {"vantrel:next/previous", Effect::badURL},
                   {"vantrel://savepoint", Effect::badURL},
                   {"vantrel://?mode=manual", Effect::badURL}});
}

TEST_F(URLCommandTest, handleURL_ownTextThatCannotBeParsed_flashes) {
    expectEffects({{"vantrel://%zz", Effect::badURL},
                   {"vantrel:next%", Effect::badURL},
                   {"VANTREL://[next", Effect::badURL},
                   {"vantrel:next\0"s, Effect::badURL},
                   {"vantrel://next previous", Effect::badURL},
                   {"vantrel://next#%q", Effect::badURL}});
}

TEST_F(URLCommandTest, handleURL_foreignText_isIgnoredInSilence) {
    expectEffects({{"https://next", Effect::nothing},
                   {"vantrels://next", Effect::nothing},
                   {"vantre://next", Effect::nothing},
                   {"next", Effect::nothing},
                   {"", Effect::nothing},
                   {"vantrel", Effect::nothing},
                   {"//next", Effect::nothing},
                   {"https://%zz", Effect::nothing},
                   {"vantrels:%zz", Effect::nothing},
                   {"%zz", Effect::nothing},
                   {" vantrel://next", Effect::nothing}});
}

TEST_F(URLCommandTest, handleURL_modeSetting_playsNoPart) {
    stored["mode"] = "manual";
    expectEffects({{"vantrel://teleport", Effect::next}, {"vantrel://next", Effect::next}});
    EXPECT_EQ(modeLine(), "Mode: Manual: saved points");
    EXPECT_EQ(calls({"stringForKey"}), fake::Journal{});
}

TEST_F(URLCommandTest, applicationOpen_severalURLs_actsOnEachInOrder) {
    controller->applicationOpen({"vantrel://next", "https://example.org/", "vantrel://manual", "vantrel://previous"});
    EXPECT_EQ(calls({"CGWarpMouseCursorPosition", "setTitle"}),
              (fake::Journal{"CGWarpMouseCursorPosition(1500, 400)", "CGWarpMouseCursorPosition(11, 12)",
                             "setTitle(Corner)", "CGWarpMouseCursorPosition(-500, 400)"}));
}

TEST_F(URLCommandTest, applicationOpen_noURL_doesNothing) {
    controller->applicationOpen({});
    EXPECT_EQ(effect(), Effect::nothing);
}

TEST_F(URLCommandTest, handleURL_hundredThousandItems_takesTheFirst) {
    std::string url = "vantrel://teleport?mode=manual";
    for (int index = 0; index < 100000; ++index) {
        url += "&mode=automatic";
    }
    expectEffects({{url, Effect::savedPoint}});
}

}  // namespace
}  // namespace vantrel
