#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

/// One row of a menu.
struct MenuItem {
    std::string title;
    std::string keyEquivalent;  ///< pressed with Command; empty for none
    bool isEnabled = true;
    bool isSeparator = false;
    std::function<void()> action;                                               ///< empty for an information row
    std::variant<std::monostate, std::string, std::int64_t> representedObject;  ///< what the sender stands for
};

using Menu = std::vector<MenuItem>;

enum class FontWeight { regular, semibold };

/// The visible part of a status item.
class StatusBarButton {
  public:
    virtual ~StatusBarButton() = default;

    virtual void setTitle(const std::string& title) = 0;
    virtual void setToolTip(const std::string& toolTip) = 0;

    /// The system font in that size (points) and weight, where the panel lets an item choose.
    virtual void setFont(double size, FontWeight weight) = 0;
};

/// An item in the desktop's panel.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// The visible part; null where the platform shows none.
    virtual StatusBarButton* button() = 0;

    /// Replaces the menu as a whole.
    virtual void setMenu(Menu menu) = 0;

    /// Whether a panel shows the item at present, so that the menu can be reached there.
    [[nodiscard]] virtual bool isVisible() const { return true; }

    /// Opens the menu at the pointer, for desktops whose panel does not show the item.
    virtual void popUpMenu() {}
};

/// The desktop's panel, whichever it is.
class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// A length of -1 fits the item to its title.
    static constexpr double variableStatusItemLength = -1;

    /// A new item, untitled and without a menu.
    virtual std::unique_ptr<StatusItem> statusItem(double length) = 0;
};

}  // namespace vantrel
