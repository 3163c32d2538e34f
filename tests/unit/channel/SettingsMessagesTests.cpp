#include "Vantrel/Channel/SettingsMessages.hpp"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

/// What the other end reads.
template <typename Value>
std::optional<Value> passedOn(const Value& value) {
    const auto message = decodedPacket(encodedPacket(messageOf(value)));
    return message ? valueOf<Value>(*message) : std::nullopt;
}

TEST(SettingsMessages, content_sentAndRead_isTheSame) {
    const WindowContent all{.lastReport = 1ULL << 40,
                            .recorderTitle = "Hyper + D",
                            .recordsKeys = true,
                            .controls = {.shortcutStatus = "Ready.",
                                         .shortcutStatusColor = SemanticColor::systemRed,
                                         .selectedMode = 1,
                                         .selectedAnimation = 0,
                                         .isSoundChecked = true,
                                         .savedPointsSummary = "2 saved cursor points."},
                            .rows = 2,
                            .rowsVersion = 9};
    EXPECT_EQ(passedOn(all), all);
    EXPECT_EQ(passedOn(WindowContent()), WindowContent());
    EXPECT_FALSE(valueOf<WindowContent>(Message("content")));
}

TEST(SettingsMessages, report_everyKind_isTheSame) {
    using Kind = WindowReport::Kind;
    for (const Kind kind : {Kind::shown, Kind::recorderPressed, Kind::key, Kind::resetPressed, Kind::modeChosen,
                            Kind::animationChosen, Kind::soundChosen, Kind::clearPressed}) {
        const WindowReport sent{.number = 3, .kind = kind, .value = -1, .key = {KeyEventType::keyUp, 2, 1U << 20}};
        EXPECT_EQ(passedOn(sent), sent);
    }
}

TEST(SettingsMessages, rowsAndPlaces_sentAndRead_areTheSame) {
    const WindowRow row{.rowsVersion = 4, .row = 999};
    EXPECT_EQ(passedOn(row), row);
    const WindowRowText text{.row = row, .text = "Büro - x 1, y 2"};
    EXPECT_EQ(passedOn(text), text);
    const WindowPlace somewhere{.x = -1024, .y = 30};
    EXPECT_EQ(passedOn(somewhere), somewhere);
    EXPECT_FALSE(valueOf<WindowPlace>(messageOf(row)));
    EXPECT_EQ(passedOn(WindowProblem{.text = "no plugin"})->text, "no plugin");
}

}  // namespace
}  // namespace vantrel
