#pragma once

#include <string>

namespace vantrel::desktop {

/// The title as a label in a panel: on one line, and no wider than `widestPanelLabel` columns. The end of a longer one
/// gives way to an ellipsis, because panels make room for any label at the cost of all that they show.
std::string panelLabel(const std::string& title);

/// In columns of text, of which wide characters (Chinese, Japanese, Korean) take two.
inline constexpr int widestPanelLabel = 48;

}  // namespace vantrel::desktop
