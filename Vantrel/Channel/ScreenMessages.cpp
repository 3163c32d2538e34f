#include "Vantrel/Channel/ScreenMessages.hpp"

namespace vantrel::screen_messages {

namespace {

constexpr auto rowsType = "a(bbss)";

Message rowsMessage(const char* name, const std::vector<MenuRow>& rows) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE(rowsType));
    for (const MenuRow& row : rows) {
        g_variant_builder_add(&builder, "(bbss)", static_cast<gboolean>(row.isSeparator),
                              static_cast<gboolean>(row.isEnabled), row.title.c_str(), row.keyEquivalent.c_str());
    }
    return {name, g_variant_builder_end(&builder)};
}

std::optional<std::vector<MenuRow>> rowsOf(const Message& message, const char* name) {
    if (!message.is(name, rowsType)) {
        return std::nullopt;
    }
    std::vector<MenuRow> rows;
    GVariantIter iterator;
    g_variant_iter_init(&iterator, message.body.get());
    gboolean isSeparator = FALSE;
    gboolean isEnabled = FALSE;
    const gchar* title = nullptr;
    const gchar* keyEquivalent = nullptr;
    while (g_variant_iter_next(&iterator, "(bb&s&s)", &isSeparator, &isEnabled, &title, &keyEquivalent) != FALSE) {
        rows.push_back({.isSeparator = isSeparator != FALSE,
                        .isEnabled = isEnabled != FALSE,
                        .title = title,
                        .keyEquivalent = keyEquivalent});
    }
    return rows;
}

constexpr auto showTextName = "show-text";
constexpr auto openMenuName = "open-menu";
constexpr auto updateMenuName = "update-menu";
constexpr auto rowChosenName = "row-chosen";

}  // namespace

Message showText(const ScreenText& text) {
    return {showTextName,
            g_variant_new("(sdb)", text.text.c_str(), text.fontSize, static_cast<gboolean>(text.isSemibold))};
}

std::optional<ScreenText> shownText(const Message& message) {
    if (!message.is(showTextName, "(sdb)")) {
        return std::nullopt;
    }
    const gchar* text = nullptr;
    gboolean isSemibold = FALSE;
    ScreenText result;
    g_variant_get(message.body.get(), "(&sdb)", &text, &result.fontSize, &isSemibold);
    result.text = text;
    result.isSemibold = isSemibold != FALSE;
    return result;
}

Message openMenu(const std::vector<MenuRow>& rows) {
    return rowsMessage(openMenuName, rows);
}

std::optional<std::vector<MenuRow>> openedMenu(const Message& message) {
    return rowsOf(message, openMenuName);
}

Message updateMenu(const std::vector<MenuRow>& rows) {
    return rowsMessage(updateMenuName, rows);
}

std::optional<std::vector<MenuRow>> updatedMenu(const Message& message) {
    return rowsOf(message, updateMenuName);
}

Message chooseRow(std::uint32_t row) {
    return {rowChosenName, g_variant_new("u", row)};
}

std::optional<std::uint32_t> chosenRow(const Message& message) {
    if (!message.is(rowChosenName, "u")) {
        return std::nullopt;
    }
    return g_variant_get_uint32(message.body.get());
}

}  // namespace vantrel::screen_messages
