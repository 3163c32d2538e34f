#include "Vantrel/Backends/Gnome/GnomeHotKeyBinder.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Backends/Gnome/Accelerators.hpp"

namespace vantrel::gnome {

namespace {

/// The arguments of Grab.
GVariant* grabOf(std::uint32_t number, const std::vector<std::string>& accelerators) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
    for (const std::string& accelerator : accelerators) {
        g_variant_builder_add(&list, "s", accelerator.c_str());
    }
    return g_variant_new("(uas)", number, &list);
}

}  // namespace

GnomeHotKeyBinder::GnomeHotKeyBinder(ShellExtension& extension, const wayland::Registry& registry,
                                     wayland::ReadKeymap readKeymap)
    : extension_(extension),
      keymap_(std::move(readKeymap)),
      layouts_(registry, [this] { following_ = LoopSource::whenIdle([this] { followKeymap(); }); }) {}

std::vector<std::string> GnomeHotKeyBinder::acceleratorsFor(const backend::KeyCombination& combination,
                                                            Clock::time_point deadline) {
    xkb_keymap* const keymap = keymap_.get(deadline);
    return keymap == nullptr ? std::vector<std::string>() : acceleratorsOf(combination, keymap);
}

OSStatus GnomeHotKeyBinder::bind(const backend::KeyCombination& combination) {
    if (!extension_.isPresent()) {
        lacksHotKeys_ = true;
        return eventHotKeyInvalidErr;
    }
    const auto deadline = patience_.deadline();
    BoundKey key{
        .combination = combination, .number = ++lastNumber_, .accelerators = acceleratorsFor(combination, deadline)};
    if (key.accelerators.empty()) {
        return eventHotKeyInvalidErr;
    }
    const auto answer = extension_.ask("Grab", grabOf(key.number, key.accelerators), "(b)", deadline);
    if (!answer) {
        // The answer may only be late.
        extension_.tell("Ungrab", g_variant_new("(u)", key.number));
        return eventHotKeyInvalidErr;
    }
    gboolean isGrabbed = FALSE;
    g_variant_get(answer.get(), "(b)", &isGrabbed);
    if (isGrabbed == FALSE) {
        return eventHotKeyExistsErr;
    }
    bound_.push_back(std::move(key));
    return 0;
}

void GnomeHotKeyBinder::unbind(const backend::KeyCombination& combination) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.combination == combination; });
    if (key != bound_.end()) {
        extension_.tell("Ungrab", g_variant_new("(u)", key->number));
        bound_.erase(key);
    }
}

void GnomeHotKeyBinder::press(std::uint32_t number) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.number == number; });
    if (key != bound_.end() && pressed_) {
        pressed_(backend::KeyCombination(key->combination));
    }
}

void GnomeHotKeyBinder::restore() {
    for (const BoundKey& key : bound_) {
        extension_.tell("Grab", grabOf(key.number, key.accelerators));
    }
}

/// Another keyboard may have the place elsewhere, and other layouts may hide modifiers.
void GnomeHotKeyBinder::followKeymap() {
    const auto deadline = Clock::now() + backend::answerTime;
    if (keymap_.get(deadline) == nullptr) {
        following_ = LoopSource::after(std::chrono::seconds(1), [this] { followKeymap(); });
        return;
    }
    for (BoundKey& key : bound_) {
        auto accelerators = acceleratorsFor(key.combination, deadline);
        if (!accelerators.empty() && accelerators != key.accelerators) {
            key.accelerators = std::move(accelerators);
            extension_.tell("Grab", grabOf(key.number, key.accelerators));
        }
    }
}

}  // namespace vantrel::gnome
