#include "helpers/messages/OverlayMessage.hpp"

namespace vantrel::desktop {

namespace {

constexpr std::string_view kinds = "THMUPRCW";
constexpr std::size_t fieldsPerRow = 3;
constexpr auto separatorMark = "-";
constexpr auto enabledMark = "e";
constexpr auto disabledMark = "d";

}  // namespace

std::string encodedPacket(const OverlayMessage& message) {
    std::string packet(1, static_cast<char>(message.kind));
    for (const std::string& field : message.fields) {
        packet += field;
        packet += '\0';
    }
    return packet;
}

std::optional<OverlayMessage> decodedPacket(std::string_view packet) {
    if (packet.empty() || kinds.find(packet.front()) == std::string_view::npos ||
        (packet.size() > 1 && packet.back() != '\0')) {
        return std::nullopt;
    }
    OverlayMessage message{.kind = OverlayMessage::Kind{packet.front()}, .fields = {}};
    packet.remove_prefix(1);
    while (!packet.empty()) {
        const std::size_t end = packet.find('\0');
        message.fields.emplace_back(packet.substr(0, end));
        packet.remove_prefix(end + 1);
    }
    return message;
}

std::vector<std::string> rowFields(const std::vector<OverlayRow>& rows) {
    std::vector<std::string> fields;
    for (const OverlayRow& row : rows) {
        fields.emplace_back(row.isSeparator ? separatorMark : row.isEnabled ? enabledMark : disabledMark);
        fields.push_back(row.title);
        fields.push_back(row.keyEquivalent);
    }
    return fields;
}

std::vector<OverlayRow> rowsFromFields(const std::vector<std::string>& fields) {
    std::vector<OverlayRow> rows;
    for (std::size_t first = 0; first + fieldsPerRow <= fields.size(); first += fieldsPerRow) {
        rows.push_back({.isSeparator = fields[first] == separatorMark,
                        .isEnabled = fields[first] == enabledMark,
                        .title = fields[first + 1],
                        .keyEquivalent = fields[first + 2]});
    }
    return rows;
}

}  // namespace vantrel::desktop
