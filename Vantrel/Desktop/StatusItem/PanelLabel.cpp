#include "Vantrel/Desktop/StatusItem/PanelLabel.hpp"

#include <glib.h>

namespace vantrel::desktop {

namespace {

int columnsOf(gunichar character) {
    if (g_unichar_iszerowidth(character)) {
        return 0;
    }
    return g_unichar_iswide(character) ? 2 : 1;
}

std::string onOneLine(std::string text) {
    for (char& byte : text) {
        byte = g_ascii_iscntrl(byte) ? ' ' : byte;
    }
    return text;
}

}  // namespace

std::string panelLabel(const std::string& title) {
    constexpr int widestBeginning = widestPanelLabel - 1;
    int columns = 0;
    const char* beginningEnd = title.c_str();
    for (const char* next = title.c_str(); *next != '\0'; next = g_utf8_next_char(next)) {
        columns += columnsOf(g_utf8_get_char(next));
        if (columns > widestPanelLabel) {
            return onOneLine(title.substr(0, static_cast<std::size_t>(beginningEnd - title.c_str()))) + "…";
        }
        if (columns <= widestBeginning) {
            beginningEnd = g_utf8_next_char(next);
        }
    }
    return onOneLine(title);
}

}  // namespace vantrel::desktop
