#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Channel/ScreenMessages.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// A windowing system, as far as texts and a menu are shown in it.
class Stage {
  public:
    using Clock = std::chrono::steady_clock;
    /// Gets the row, or none when the menu was left without a choice.
    using Chosen = std::function<void(std::optional<std::size_t> row)>;

    Stage() = default;
    virtual ~Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// Shows the text in place of the present one, where the person looks. It takes neither focus nor clicks.
    virtual void showText(const std::string& text, const Font& font) = 0;
    virtual void hideText() = 0;

    /// Opens a menu at the pointer, in place of an open one, and has the keyboard until it ends. `chosen` is called
    /// once, from serve() or doDueWork(). Without rows an open menu only goes.
    virtual void openMenu(std::vector<MenuRow> rows, Chosen chosen) = 0;
    /// Gives a menu that is open other rows.
    virtual void updateMenu(std::vector<MenuRow> rows) = 0;

    /// Readable when the display server has something for serve().
    [[nodiscard]] virtual int descriptor() const = 0;
    /// Handles what the server has told, and sends it what was asked for.
    virtual void serve() = 0;
    /// Whether the server has gone away.
    [[nodiscard]] virtual bool isLost() const = 0;

    /// When there is something to do without an event; none while there is not.
    [[nodiscard]] virtual std::optional<Clock::time_point> nextWork() const = 0;
    virtual void doDueWork() = 0;
};

}  // namespace vantrel::overlay
