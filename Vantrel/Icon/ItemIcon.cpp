#include "Vantrel/Icon/ItemIcon.hpp"

#include <algorithm>

namespace vantrel {

const ItemIcon& itemIconFitting(int width, int height) {
    const std::span<const ItemIcon> icons = itemIcons();
    const auto tooLarge = std::find_if(icons.begin(), icons.end(),
                                       [&](const ItemIcon& icon) { return icon.size > std::min(width, height); });
    return tooLarge == icons.begin() ? icons.front() : *(tooLarge - 1);
}

}  // namespace vantrel
