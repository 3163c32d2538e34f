#include "Vantrel/Backends/X11/Keymap.hpp"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <span>
#include <string_view>

#include "Vantrel/Backends/Common/KeyPlaces.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::x11 {

namespace {

struct RoleKeysyms {
    std::uint32_t carbonBit;
    std::uint32_t left;
    std::uint32_t right;
};

constexpr std::array<RoleKeysyms, 4> roleKeysyms{{
    {cmdKey, XKB_KEY_Super_L, XKB_KEY_Super_R},
    {shiftKey, XKB_KEY_Shift_L, XKB_KEY_Shift_R},
    {optionKey, XKB_KEY_Alt_L, XKB_KEY_Alt_R},
    {controlKey, XKB_KEY_Control_L, XKB_KEY_Control_R},
}};

constexpr std::uint16_t lockModifier = 1U << 1U;  // the core protocol's Lock: Caps Lock
constexpr std::uint16_t allModifiers = 0xFF;      // without the pointer buttons and the group of an event's state

std::span<const std::uint32_t> keysymsOf(const KeymapDescription& description, std::size_t keycode) {
    if (keycode < description.firstKeycode) {
        return {};
    }
    const std::size_t first = (keycode - description.firstKeycode) * description.keysymsPerKeycode;
    if (first + description.keysymsPerKeycode > description.keysyms.size()) {
        return {};
    }
    return std::span(description.keysyms).subspan(first, description.keysymsPerKeycode);
}

template <typename Predicate>
bool anyKeysym(const KeymapDescription& description, std::size_t keycode, Predicate predicate) {
    const auto keysyms = keysymsOf(description, keycode);
    return std::any_of(keysyms.begin(), keysyms.end(), predicate);
}

bool isGroupSwitch(std::uint32_t keysym) {
    return keysym >= XKB_KEY_ISO_Group_Latch && keysym <= XKB_KEY_ISO_Last_Group_Lock;
}

/// The modifiers that have a key with such a keysym, by the modifier map.
template <typename Predicate>
std::uint16_t modifiersWith(const KeymapDescription& description, Predicate predicate) {
    std::uint16_t mask = 0;
    for (std::size_t index = 0; index < description.modifierKeycodes.size(); ++index) {
        const std::uint8_t keycode = description.modifierKeycodes[index];
        if (keycode != 0 && anyKeysym(description, keycode, predicate)) {
            mask |= static_cast<std::uint16_t>(1U << (index / description.keycodesPerModifier));
        }
    }
    return mask & allModifiers;
}

std::string_view textOf(const KeyName& name) {
    return {name.begin(), std::find(name.begin(), name.end(), '\0')};
}

/// Every subset of the bits of a mask, the empty one and the mask itself included.
std::vector<std::uint16_t> subsetsOf(std::uint16_t mask) {
    std::vector<std::uint16_t> subsets;
    std::uint16_t subset = mask;
    while (true) {
        subsets.push_back(subset);
        if (subset == 0) {
            return subsets;
        }
        subset = static_cast<std::uint16_t>((subset - 1U) & mask);
    }
}

std::vector<std::uint16_t> nonEmptySubsetsOf(std::uint16_t mask) {
    std::vector<std::uint16_t> subsets = subsetsOf(mask);
    subsets.pop_back();
    return subsets;
}

/// Every mask of the first list together with every one of the second, each result once.
std::vector<std::uint16_t> combined(const std::vector<std::uint16_t>& first, const std::vector<std::uint16_t>& second) {
    std::vector<std::uint16_t> all;
    all.reserve(first.size() * second.size());
    for (const std::uint16_t one : first) {
        for (const std::uint16_t other : second) {
            all.push_back(static_cast<std::uint16_t>(one | other));
        }
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

}  // namespace

Keymap::Keymap(const KeymapDescription& description) : names_(description.names) {
    findRoles(description);
    findModifierAndEscapeKeys(description);
    findLocks(description);
}

void Keymap::findRoles(const KeymapDescription& description) {
    int switchingRoles = 0;
    for (std::size_t index = 0; index < roles_.size(); ++index) {
        const RoleKeysyms& keysyms = roleKeysyms[index];
        const auto isRole = [&keysyms](std::uint32_t keysym) {
            return keysym == keysyms.left || keysym == keysyms.right;
        };
        Role& role = roles_[index];
        role.carbonBit = keysyms.carbonBit;
        role.mask = modifiersWith(description, isRole);
        if (role.mask != lockModifier) {
            // A Caps Lock that was made a Control key may be left on Lock: that bit says nothing about Control.
            role.mask = static_cast<std::uint16_t>(role.mask & ~lockModifier);
        }
        for (std::size_t keycode = 0; keycode < role.keys.size(); ++keycode) {
            const auto ofKey = keysymsOf(description, keycode);
            if (!ofKey.empty() && isRole(ofKey.front())) {
                role.keys.set(keycode);
                role.canSwitchLayout = role.canSwitchLayout || std::any_of(ofKey.begin(), ofKey.end(), isGroupSwitch);
            }
        }
        switchingRoles += role.canSwitchLayout ? 1 : 0;
    }
    hidesModifiers_ = switchingRoles > 1;
}

void Keymap::findModifierAndEscapeKeys(const KeymapDescription& description) {
    for (const std::uint8_t keycode : description.modifierKeycodes) {
        if (keycode != 0) {
            modifierKeys_.set(keycode);
        }
    }
    for (std::size_t keycode = 0; keycode < escapeKeys_.size(); ++keycode) {
        const auto keysyms = keysymsOf(description, keycode);
        escapeKeys_.set(keycode, !keysyms.empty() && keysyms.front() == XKB_KEY_Escape);
    }
}

void Keymap::findLocks(const KeymapDescription& description) {
    lockMask_ = lockModifier;
    lockMask_ |= modifiersWith(description, [](std::uint32_t keysym) { return keysym == XKB_KEY_Num_Lock; });
    lockMask_ |= modifiersWith(description, [](std::uint32_t keysym) { return keysym == XKB_KEY_Scroll_Lock; });
    for (const Role& role : roles_) {
        lockMask_ = static_cast<std::uint16_t>(lockMask_ & ~role.mask);
    }
}

KeySet Keymap::keysAt(std::uint32_t keyCode) const {
    KeySet keys;
    for (const std::string_view name : backend::xkbNamesForVirtualKey(keyCode)) {
        for (std::size_t keycode = 0; keycode < names_.size(); ++keycode) {
            if (textOf(names_[keycode]) == name) {
                keys.set(keycode);
            }
        }
    }
    return keys;
}

std::vector<std::uint16_t> Keymap::stateMasksFor(std::uint32_t modifiers) const {
    std::vector<std::uint16_t> masks{0};
    std::uint16_t switching = 0;
    for (const Role& role : roles_) {
        if ((modifiers & role.carbonBit) == 0) {
            continue;
        }
        if (role.mask == 0) {
            return {};
        }
        if (role.canSwitchLayout) {
            switching |= role.mask;
        } else {
            // The left and the right key may set different bits, and either key is enough.
            masks = combined(masks, nonEmptySubsetsOf(role.mask));
        }
    }
    if (switching != 0) {
        // The first of these to go down is set as usual; each further one may switch the layout instead.
        masks = combined(masks, nonEmptySubsetsOf(switching));
    }
    return masks.front() == 0 ? std::vector<std::uint16_t>() : masks;
}

std::optional<std::vector<KeyGrab>> Keymap::grabsFor(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const KeySet keys = keysAt(keyCode);
    const std::vector<std::uint16_t> masks = combined(stateMasksFor(modifiers), subsetsOf(lockMask_));
    if (keys.none() || masks.empty()) {
        return std::nullopt;
    }
    std::vector<KeyGrab> grabs;
    for (std::size_t keycode = 0; keycode < keys.size(); ++keycode) {
        if (keys.test(keycode)) {
            for (const std::uint16_t mask : masks) {
                grabs.push_back({static_cast<std::uint8_t>(keycode), mask});
            }
        }
    }
    return grabs;
}

bool Keymap::hasForeignModifiers(std::uint16_t state) const {
    auto foreign = static_cast<std::uint16_t>(state & allModifiers & ~lockMask_);
    for (const Role& role : roles_) {
        foreign = static_cast<std::uint16_t>(foreign & ~role.mask);
    }
    return foreign != 0;
}

std::uint32_t Keymap::carbonModifiersIn(std::uint16_t state) const {
    std::uint32_t modifiers = 0;
    for (const Role& role : roles_) {
        if ((state & role.mask) != 0) {
            modifiers |= role.carbonBit;
        }
    }
    return modifiers;
}

std::optional<std::uint32_t> Keymap::virtualKeyOf(std::uint8_t keycode) const {
    // Some people have Escape on Caps Lock.
    constexpr std::uint32_t escapeKeyCode = 53;
    if (escapeKeys_.test(keycode)) {
        return escapeKeyCode;
    }
    return backend::virtualKeyForXkbName(textOf(names_.at(keycode)));
}

std::uint32_t Keymap::carbonModifiersOfHeldKeys(const KeySet& held) const {
    std::uint32_t modifiers = 0;
    for (const Role& role : roles_) {
        if ((role.keys & held).any()) {
            modifiers |= role.carbonBit;
        }
    }
    return modifiers;
}

}  // namespace vantrel::x11
