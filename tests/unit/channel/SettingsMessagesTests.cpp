#include "Vantrel/Channel/SettingsMessages.hpp"

#include <gtest/gtest.h>

namespace vantrel::settings_messages {
namespace {

TEST(SettingsMessages, content_sentAndRead_isTheSame) {
    const WindowContent all{.lastReport = 1ULL << 40,
                            .recorderTitle = "Hyper + D",
                            .recordedEvents = 5120,
                            .shortcutStatus = "Ready.",
                            .shortcutStatusColor = 1,
                            .modes = {"Automatic: displays", "Manual: saved points"},
                            .selectedMode = 1,
                            .animations = {"Instant", "Glide"},
                            .selectedAnimation = 0,
                            .isSoundChecked = true,
                            .savedPointsSummary = "2 saved cursor points.",
                            .isEmptyLabelHidden = true,
                            .isTableHidden = false,
                            .isClearingEnabled = true,
                            .rows = 2,
                            .rowsVersion = 9};
    EXPECT_EQ(contentOf(content(all)), all);
    EXPECT_EQ(contentOf(content({})), WindowContent());
    EXPECT_FALSE(contentOf(Message("content")));
}

TEST(SettingsMessages, report_everyKind_isTheSame) {
    using Kind = WindowReport::Kind;
    for (const Kind kind : {Kind::shown, Kind::recorderPressed, Kind::key, Kind::resetPressed, Kind::modeChosen,
                            Kind::animationChosen, Kind::soundChosen, Kind::clearPressed}) {
        const WindowReport sent{.number = 3, .kind = kind, .value = -1, .key = 2, .flags = 1U << 20};
        EXPECT_EQ(reportOf(report(sent)), sent);
    }
    EXPECT_FALSE(reportOf({"report", g_variant_new("(tuiuu)", guint64{1}, 99U, 0, 0U, 0U)}));
}

TEST(SettingsMessages, rowsAndPlaces_sentAndRead_areTheSame) {
    const WindowRow row{.rowsVersion = 4, .row = 999};
    EXPECT_EQ(wantedRowOf(wantRow(row)), row);
    const WindowRowText text{.row = row, .text = "Büro - x 1, y 2"};
    EXPECT_EQ(rowTextOf(rowText(text)), text);
    const WindowPlace somewhere{.x = -1024, .y = 30};
    EXPECT_EQ(placeOf(place(somewhere)), somewhere);
    EXPECT_FALSE(placeOf(wantRow(row)));
}

}  // namespace
}  // namespace vantrel::settings_messages
