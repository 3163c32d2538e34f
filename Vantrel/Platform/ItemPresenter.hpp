#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel {

/// Shows the status item by means of the windowing system itself: an icon in the old system tray of X, or the whole
/// item where a desktop gives it a place of its own.
class ItemPresenter {
  public:
    struct Events {
        std::function<void()> pressed;                     ///< the menu is wanted at the pointer
        std::function<void(std::size_t row)> rowChosen{};  ///< of the menu that it shows
        std::function<void()> presenceChanged;             ///< isShown() changed
    };

    virtual ~ItemPresenter() = default;

    /// Whether the item is to be shown here, because no StatusNotifier host shows it. It comes a moment later: at the
    /// start of a session a better panel may be about to come.
    virtual void setWanted(bool isWanted) = 0;

    /// Whether a person can see it here at present.
    [[nodiscard]] virtual bool isShown() const = 0;

    /// Whether it is the item with its texts, menu and messages. While it is shown no StatusNotifier host is to show a
    /// second one, and nothing else can put menus and messages on this desktop's screen.
    [[nodiscard]] virtual bool isWholeItem() const { return false; }

    // For such a one:
    virtual void setTexts(const std::string& /*title*/, const std::string& /*toolTip*/) {}
    virtual void setMenu(const Menu& /*menu*/) {}
    /// For those who do not see the title; empty for none.
    virtual void showMessage(const std::string& /*text*/) {}
};

}  // namespace vantrel
