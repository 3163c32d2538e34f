#pragma once

#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// Makes the pointer on the root window a white arrow with a dark edge, large enough for a small picture.
void showArrowCursor(XConnection& connection);

}  // namespace vantrel::desk
