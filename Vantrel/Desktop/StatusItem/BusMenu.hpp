#pragma once

#include <libdbusmenu-glib/dbusmenu-glib.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Desktop/StatusItem/KeyHint.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel::desktop {

/// The menu on the session bus (com.canonical.dbusmenu). Rows have fixed identifiers, so that a panel which still shows
/// the menu of a moment ago means the same row with its click. A menu with the same rows as before reaches panels as
/// changed properties of these, because some panels close an open menu when its layout changes.
class BusMenu {
  public:
    /// `rowChosen` gets the number of the row, from 0.
    BusMenu(const std::string& objectPath, std::function<void(std::size_t row)> rowChosen);
    ~BusMenu();
    BusMenu(const BusMenu&) = delete;
    BusMenu& operator=(const BusMenu&) = delete;

    /// Replaces the menu as a whole.
    void setMenu(const Menu& menu, KeyHintStyle keyHintStyle);

  private:
    using RowChosen = std::function<void(std::size_t)>;

    [[nodiscard]] bool hasRowsOf(const Menu& menu) const;
    void makeRows(const Menu& menu);
    GObjectPointer<DbusmenuMenuitem> makeRow(const MenuItem& item, std::size_t row);
    static void rowActivated(DbusmenuMenuitem* row, guint timestamp, gpointer data);
    static void releaseRowChosen(gpointer data, GClosure* closure);

    std::shared_ptr<RowChosen> rowChosen_;  ///< emptied with the menu: a click under way may hold a row for longer
    GObjectPointer<DbusmenuServer> server_;
    std::vector<GObjectPointer<DbusmenuMenuitem>> rows_;
    std::vector<bool> separators_;  ///< which rows are
};

}  // namespace vantrel::desktop
