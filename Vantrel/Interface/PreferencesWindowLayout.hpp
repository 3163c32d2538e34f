#pragma once

namespace vantrel {

/// The settings window's measures. Lengths in device-independent pixels, font sizes in points.
struct PreferencesWindowLayout {
    static constexpr int contentWidth = 560;
    static constexpr int contentHeight = 560;  ///< at least: the fonts may need more
    static constexpr int topMargin = 20;
    static constexpr int sideMargin = 22;
    static constexpr int bottomMargin = 22;  ///< at least
    static constexpr int rootSpacing = 16;

    static constexpr int headerSpacing = 4;
    static constexpr double titleFontSize = 20;

    static constexpr int sectionMargin = 14;
    static constexpr int sectionSpacing = 10;

    static constexpr int formRowSpacing = 12;
    static constexpr int formLabelWidth = 92;

    static constexpr int recorderWidth = 190;
    static constexpr double recorderFontSize = 13;
    static constexpr int recorderSpacing = 8;

    static constexpr int savedPointsHeight = 112;
    static constexpr int savedPointRowHeight = 24;
};

/// The settings window's fixed texts.
struct PreferencesWindowTexts {
    static constexpr const char* windowTitle = "Vantrel Settings";
    static constexpr const char* title = "Vantrel";
    static constexpr const char* subtitle =
        "Tune the shortcut, cursor behavior, and saved points for quick Mac to Sidecar movement.";

    static constexpr const char* shortcutSection = "Shortcut";
    static constexpr const char* primaryLabel = "Primary";
    static constexpr const char* resetButton = "Reset";
    static constexpr const char* recommendation =
        "Recommended: Hyper + D. Raycast turns Caps Lock into Hyper, so this lands naturally under your WASD hand.";

    static constexpr const char* behaviorSection = "Behavior";
    static constexpr const char* modeLabel = "Mode";
    static constexpr const char* animationLabel = "Animation";
    static constexpr const char* feedbackLabel = "Feedback";
    static constexpr const char* soundButton = "Play feedback sound";

    static constexpr const char* savedPointsSection = "Saved Points";
    static constexpr const char* savedPointsEmpty = "No saved points yet.";
    static constexpr const char* clearSavedPointsButton = "Clear Saved Points";
};

}  // namespace vantrel
