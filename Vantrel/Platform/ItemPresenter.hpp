#pragma once

#include <functional>

namespace vantrel {

/// Shows the status item by means of the windowing system itself, such as the old system tray of X.
class ItemPresenter {
  public:
    struct Events {
        std::function<void()> pressed;          ///< the menu is wanted at the pointer
        std::function<void()> presenceChanged;  ///< isShown() changed
    };

    virtual ~ItemPresenter() = default;

    /// Whether the item is to be shown here, because no StatusNotifier host shows it. It comes a moment later: at the
    /// start of a session a better panel may be about to come.
    virtual void setWanted(bool isWanted) = 0;

    /// Whether a person can see it here at present.
    [[nodiscard]] virtual bool isShown() const = 0;
};

}  // namespace vantrel
