#pragma once

#include "tests/desk/support/Points.hpp"

namespace vantrel::desk {

// Points in the layout that most tests on an X server use (see DisplayLayout::twoDisplays).

inline constexpr MainPoint onMain{.x = 700, .y = 500};
inline constexpr MainPoint elsewhereOnMain{.x = 300, .y = 200};
inline constexpr MainPoint onSecond{.x = -400, .y = 300};
inline constexpr MainPoint centreOfSecond{.x = -512, .y = 484};

}  // namespace vantrel::desk
