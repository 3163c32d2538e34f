// The item on a private bus, beside a watcher as panels bring it.
#include <algorithm>

#include "tests/desk/status/StatusDesk.hpp"

namespace vantrel::desk {
namespace {

class NotifierItem : public StatusDesk {
  protected:
    /// Waits for the item's registration and returns its view by the panel.
    std::unique_ptr<PanelItem> registeredItem(TestPanel& testPanel) {
        EXPECT_TRUE(testPanel.waitForRegistrations(1));
        return testPanel.items().empty() ? nullptr
                                         : std::make_unique<PanelItem>(testPanel.bus(), testPanel.items().back());
    }

    static int identifierOf(const std::vector<PanelRow>& rows, const std::string& label) {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.label == label; });
        return found == rows.end() ? -1 : found->identifier;
    }
};

TEST_F(NotifierItem, properties_atRest_sayWhatItIs) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->text("Title"), "Vantrel");
    EXPECT_EQ(item->text("Status"), "Active");
    EXPECT_EQ(item->text("Category"), "ApplicationStatus");
    EXPECT_EQ(item->text("XAyatanaLabel"), "Vantrel");
    EXPECT_EQ(item->text("XAyatanaLabelGuide"), "Vantrel");
    EXPECT_EQ(item->text("IconName"), "org.vantrel.Vantrel");
    EXPECT_TRUE(std::filesystem::exists(item->text("IconThemePath") + "/hicolor/24x24/apps/org.vantrel.Vantrel.png"));
    const GVariantPointer toolTip = item->property("ToolTip");
    ASSERT_TRUE(toolTip && g_variant_is_of_type(toolTip.get(), G_VARIANT_TYPE("(sa(iiay)ss)")));
    EXPECT_EQ(textOf(GVariantPointer(g_variant_get_child_value(toolTip.get(), 2))), "Vantrel");
    const GVariantPointer isMenu = item->property("ItemIsMenu");
    ASSERT_TRUE(isMenu);
    EXPECT_TRUE(g_variant_get_boolean(isMenu.get()));
    const GVariantPointer pixmaps = item->property("IconPixmap");
    ASSERT_TRUE(pixmaps && g_variant_is_of_type(pixmaps.get(), G_VARIANT_TYPE("a(iiay)")));
    EXPECT_EQ(g_variant_n_children(pixmaps.get()), 6U);
    EXPECT_FALSE(item->property("NoSuchProperty"));
}

TEST_F(NotifierItem, label_titleChanges_followsIt) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    for (const std::string title : {"Saved", "Büro 東京", "", "Vantrel"}) {
        process.say("title " + title);
        EXPECT_TRUE(item->waitForLabel(title)) << title;
        EXPECT_EQ(item->text("XAyatanaLabel"), title);
        EXPECT_EQ(item->text("Title"), "Vantrel");
    }
}

TEST_F(NotifierItem, label_longTitle_endsWithAnEllipsis) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    process.say("title " + std::string(300, 'n'));
    const std::string expected = std::string(47, 'n') + "…";
    EXPECT_TRUE(item->waitForLabel(expected));
    EXPECT_EQ(item->text("XAyatanaLabel"), expected);
}

TEST_F(NotifierItem, menu_itsRows_haveTitlesStatesAndKeyHints) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    const std::vector<PanelRow> rows = item->rows();
    ASSERT_EQ(rows.size(), 16U);
    EXPECT_EQ(rows[0].label, "Vantrel");
    EXPECT_FALSE(rows[0].isEnabled);
    EXPECT_TRUE(rows[1].isSeparator);
    EXPECT_EQ(rows[2].label, "Teleport Now");
    EXPECT_TRUE(rows[2].isEnabled);
    EXPECT_FALSE(rows[7].isEnabled);
    EXPECT_EQ(rows[10].shortcut, "Control+comma");
    EXPECT_EQ(rows[13].label, "Saved Points: none");
    EXPECT_EQ(rows[15].shortcut, "Control+q");
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row].identifier, static_cast<int>(row) + 1);
    }
}

TEST_F(NotifierItem, menu_rebuilt_isReplacedAsAWhole) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    process.say("points 12");
    EXPECT_TRUE(waitOnBus([&] {
        const auto rows = item->rows();
        return rows.size() == 16 && rows[7].isEnabled && rows[13].label == "Saved Points: 12 points";
    }));
}

TEST_F(NotifierItem, menu_rebuiltWithTheSameRows_keepsItsLayout) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    ASSERT_EQ(item->rows().size(), 16U);
    const int layoutChanges = item->layoutChanges();
    process.say("points 1");
    EXPECT_TRUE(waitOnBus([&] { return item->propertyChanges() > 0; }));
    EXPECT_EQ(item->rows()[13].label, "Saved Points: 1 point");
    EXPECT_EQ(item->layoutChanges(), layoutChanges);
    process.say("rows 3");
    EXPECT_TRUE(waitOnBus([&] { return item->layoutChanges() > layoutChanges; }));
}

TEST_F(NotifierItem, menu_qtPanel_getsKeyHintsThatQtReads) {
    const ProcessName name("lxqt-panel");
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    EXPECT_TRUE(waitOnBus([&] {
        const auto rows = item->rows();
        return rows.size() == 16 && rows[10].shortcut == "Control+,";
    }));
}

TEST_F(NotifierItem, click_eachRow_doesItsActionOnly) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    process.say("points 1");
    ASSERT_TRUE(waitOnBus([&] { return item->rows()[7].isEnabled; }));
    for (const PanelRow& row : item->rows()) {
        item->click(row.identifier);
        const bool isCommand = row.isEnabled && !row.isSeparator;
        EXPECT_EQ(process.nextLine(isCommand ? generousDeadline : quietTime),
                  isCommand ? "chosen " + row.label : std::string())
            << row.label;
    }
}

TEST_F(NotifierItem, click_onTheMenuOfAMomentAgo_meansItsRow) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    const int save = identifierOf(item->rows(), "Save Current Point");
    process.say("points 3");
    process.say("points 4");
    item->click(save);
    EXPECT_TRUE(process.waitForLine("chosen Save Current Point"));
}

TEST_F(NotifierItem, click_rowThatNoLongerExists_isIgnored) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    const int quit = identifierOf(item->rows(), "Quit Vantrel");
    process.say("rows 3");
    ASSERT_TRUE(waitOnBus([&] { return item->rows().size() == 3; }));
    for (const int identifier : {quit, 99, -1, 0, 2147483647}) {
        item->click(identifier);
    }
    EXPECT_EQ(process.nextLine(), "");
    item->click(3);
    EXPECT_TRUE(process.waitForLine("chosen Teleport Now"));
}

TEST_F(NotifierItem, registration_panelStartsLate_reachesIt) {
    ItemProcess process(desk.environment());
    EXPECT_FALSE(process.isVisible());
    TestPanel panel(desk.bus().address());
    EXPECT_TRUE(panel.waitForRegistrations(1));
    EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); }));
}

TEST_F(NotifierItem, registration_panelDiesAndReturns_isMadeAgain) {
    ItemProcess process(desk.environment());
    for (int life = 0; life < 3; ++life) {
        TestPanel panel(desk.bus().address());
        EXPECT_TRUE(panel.waitForRegistrations(1)) << life;
        EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); })) << life;
    }
    EXPECT_TRUE(process.waitForVisible(false));
}

TEST_F(NotifierItem, registration_secondPanelTakesOver_reachesBoth) {
    TestPanel first(desk.bus().address());
    ItemProcess process(desk.environment());
    ASSERT_TRUE(first.waitForRegistrations(1));
    TestPanel second(desk.bus().address());
    EXPECT_TRUE(second.waitForRegistrations(1));
    EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    EXPECT_EQ(first.items().size(), 1U);
    EXPECT_EQ(PanelItem(second.bus(), second.items().front()).text("Title"), "Vantrel");
}

TEST_F(NotifierItem, registration_refusedTwice_isRetried) {
    TestPanel panel(desk.bus().address(), {.hasHost = true, .refusals = 2});
    ItemProcess process(desk.environment());
    EXPECT_TRUE(panel.waitForRegistrations(1));
    EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); }));
}

TEST_F(NotifierItem, visibility_watcherWithoutHost_waitsForTheHost) {
    TestPanel panel(desk.bus().address(), {.hasHost = false});
    ItemProcess process(desk.environment());
    ASSERT_TRUE(panel.waitForRegistrations(1));
    EXPECT_FALSE(waitOnBus([&] { return process.isVisible(); }, quietTime));
    panel.setHost(true);
    EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    panel.setHost(false);
    EXPECT_TRUE(waitOnBus([&] { return !process.isVisible(); }));
}

TEST_F(NotifierItem, bus_goesAway_itemLivesOn) {
    ItemProcess process(desk.environment());
    {
        TestPanel panel(desk.bus().address());
        ASSERT_TRUE(panel.waitForRegistrations(1));
        ASSERT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    }
    desk.bus().stop();
    EXPECT_TRUE(process.waitForVisible(false));
    process.say("points 3");
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
    EXPECT_TRUE(process.isRunning());
}

TEST_F(NotifierItem, bus_absent_itemLives) {
    desk.environment().set("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    ItemProcess process(desk.environment());
    EXPECT_FALSE(process.isVisible());
    process.say("points 3");
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(NotifierItem, menu_rebuiltTenThousandTimes_takesNoMoreMemory) {
    desk.environment().giveBackFreedMemory();
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    const auto rebuild = [&](int count) {
        process.say("rebuild " + std::to_string(count));
        ASSERT_TRUE(waitOnBus([&] { return process.waitForLine("rebuilt", std::chrono::milliseconds(1)); }));
        ASSERT_EQ(item->rows().size(), 16U);
    };
    // The queue of messages on their way to the bus grows to what one burst needs, and stays. A sanitizer keeps books
    // of its own, which grow a little; half a kilobyte left behind by each rebuild would be more.
    rebuild(10000);
    const long before = process.privateMemory();
    rebuild(10000);
    EXPECT_LE(process.privateMemory(), before + 4096);
}

TEST_F(NotifierItem, activate_panelLeavesTheMenuToTheItem_opensIt) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    EXPECT_TRUE(item->activate());
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(NotifierItem, activate_panelOpensTheMenuWhenRefused_isRefused) {
    const ProcessName name("kded5");
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    const auto item = registeredItem(panel);
    ASSERT_TRUE(item);
    ASSERT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    EXPECT_FALSE(item->activate());
    EXPECT_FALSE(waitOnBus([&] { return process.overlay().has_value(); }, quietTime));
}

}  // namespace
}  // namespace vantrel::desk
