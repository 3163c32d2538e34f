#include "Vantrel/Backends/Wayland/ConnectorEdid.hpp"

#include <cstdint>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"
#include "Vantrel/Handles/DirectoryEntries.hpp"
#include "Vantrel/Handles/FileContents.hpp"

namespace vantrel::wayland {

namespace {

std::string identityIn(const std::filesystem::path& file) {
    constexpr std::size_t baseBlock = 128;
    const std::string edid = contentsOf(file).value_or("");
    return edid.size() < baseBlock
               ? std::string()
               : backend::edidIdentity({reinterpret_cast<const std::uint8_t*>(edid.data()), baseBlock});
}

/// "card0-HDMI-A-1" is the connector HDMI-A-1 of a card.
bool isOfConnector(const std::string& entry, const std::string& connector) {
    const std::size_t dash = entry.find('-');
    return entry.starts_with("card") && dash != std::string::npos && entry.substr(dash + 1) == connector;
}

}  // namespace

std::string edidIdentityOfConnector(const std::string& connector, const std::filesystem::path& directory) {
    for (const std::filesystem::path& entry : entriesOf(directory)) {
        if (!isOfConnector(entry.filename(), connector)) {
            continue;
        }
        if (std::string identity = identityIn(entry / "edid"); !identity.empty()) {
            return identity;
        }
    }
    return {};
}

}  // namespace vantrel::wayland
