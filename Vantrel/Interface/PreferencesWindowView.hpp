#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

#include "Vantrel/Interface/ShortcutRecorderButton.hpp"

namespace vantrel {

/// Colours by meaning; what they look like is the theme's business.
enum class SemanticColor {
    label,
    secondaryLabel,
    systemRed,
};

/// What the controls of the settings window show, besides its fixed texts.
struct PreferencesWindowContent {
    std::string shortcutStatus;
    SemanticColor shortcutStatusColor = SemanticColor::label;
    std::int32_t selectedMode = -1;  ///< the index in allModes; -1 for none
    std::int32_t selectedAnimation = -1;
    bool isSoundChecked = false;
    std::string savedPointsSummary;

    static auto fields(auto& content) {
        return std::tie(content.shortcutStatus, content.shortcutStatusColor, content.selectedMode,
                        content.selectedAnimation, content.isSoundChecked, content.savedPointsSummary);
    }
    bool operator==(const PreferencesWindowContent&) const = default;
};

/// What the window tells its controller: the actions of its controls, and the rows of its table.
class PreferencesWindowViewDelegate {
  public:
    virtual ~PreferencesWindowViewDelegate() = default;

    virtual void resetShortcut() = 0;
    virtual void modeChanged(std::int64_t chosenIndex) = 0;
    virtual void animationChanged(std::int64_t chosenIndex) = 0;
    virtual void soundChanged(bool isChecked) = 0;
    virtual void clearSavedPoints() = 0;

    /// The window cannot be shown any more, until the next showWindow(): one line that says why, and the same in two or
    /// three words.
    virtual void windowFailed(const std::string& problem, const std::string& flashText) = 0;

    [[nodiscard]] virtual std::size_t numberOfRows() const = 0;

    /// The text of the table's row, asked for when the row is drawn; none for a row that does not exist.
    [[nodiscard]] virtual std::optional<std::string> textForRow(std::int64_t row) const = 0;
};

/// The settings window as it is drawn. It decides nothing: it shows what it is told and hands every event on. Closing
/// only hides it; it then comes back as it was. Texts and measures: PreferencesWindowLayout.hpp.
class PreferencesWindowView {
  public:
    virtual ~PreferencesWindowView() = default;

    /// Held weakly; without it the controls do nothing and the table is empty.
    virtual void setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) = 0;

    /// Lives as long as the window.
    virtual ShortcutRecorderButton& shortcutRecorderButton() = 0;

    virtual void setContent(const PreferencesWindowContent& content) = 0;

    /// Asks the delegate for all rows again. The scroll position stays. Without rows the window shows a text in place
    /// of the table, though not of the frame around it, and there is nothing to clear.
    virtual void reloadSavedPoints() = 0;

    /// Shows the window.
    virtual void showWindow() = 0;

    /// Brings the window to the front, onto the workspace that the person looks at, and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
};

/// A new settings window, or why there is none.
struct PreferencesWindowViewResult {
    std::unique_ptr<PreferencesWindowView> view;
    std::string problem;    ///< one line that says what is missing; empty when there is a window
    std::string flashText;  ///< the same in two or three words
};

/// Makes settings windows. What draws them may be a package of its own, so there may be none.
class PreferencesWindowViewFactory {
  public:
    virtual ~PreferencesWindowViewFactory() = default;

    /// A hidden window, centred on the display that the pointer is on. Asking again after a failure tries again.
    virtual PreferencesWindowViewResult makePreferencesWindowView() = 0;
};

}  // namespace vantrel
