#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vantrel::qt {

/// The shortcut's text in as many lines as it takes to fit the width, broken after plus signs only:
/// "Ctrl + Option +\nCommand + Right Arrow". `textWidth` measures a line. A line with nothing to break may be wider.
std::string wrappedShortcut(const std::string& text, int width, const std::function<int(std::string_view)>& textWidth);

}  // namespace vantrel::qt
