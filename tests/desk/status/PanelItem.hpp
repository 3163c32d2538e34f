#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/desk/status/BusClient.hpp"

namespace vantrel::desk {

/// A row of the item's menu as a panel reads it.
struct PanelRow {
    int identifier = 0;
    std::string label;
    bool isEnabled = true;
    bool isSeparator = false;
    std::string shortcut;  ///< e.g. "Control+q"
};

/// The identifier of "Settings...".
inline constexpr int settingsRow = 11;

/// The item as a panel sees it.
class PanelItem {
  public:
    /// `busName` is what the item registered with.
    PanelItem(BusClient& bus, std::string busName);
    ~PanelItem();
    PanelItem(const PanelItem&) = delete;
    PanelItem& operator=(const PanelItem&) = delete;

    GVariantPointer property(const std::string& name);
    std::string text(const std::string& name) { return textOf(property(name)); }

    /// The labels that were signalled since the start, in order.
    [[nodiscard]] const std::vector<std::string>& labels() const { return labels_; }
    /// Waits for that label, after those that were waited for before: one that stands for a moment is not missed.
    bool waitForLabel(const std::string& label);

    /// How often the layout and how often properties of rows were reported as changed since the start.
    [[nodiscard]] int layoutChanges() const { return layoutChanges_; }
    [[nodiscard]] int propertyChanges() const { return propertyChanges_; }

    /// The rows of the menu at this moment.
    std::vector<PanelRow> rows();

    /// What a click on the row sends; returns whether the item took it.
    bool click(int identifier);

    /// What some panels send for a click on the icon; returns whether the item took it.
    bool activate();

  private:
    BusClient& bus_;
    std::string busName_;
    guint subscription_;
    guint menuSubscription_;
    int layoutChanges_ = 0;
    int propertyChanges_ = 0;
    std::vector<std::string> labels_;
    std::size_t awaited_ = 0;  ///< how many of them were
};

}  // namespace vantrel::desk
