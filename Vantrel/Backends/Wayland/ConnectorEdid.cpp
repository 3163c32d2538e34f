#include "Vantrel/Backends/Wayland/ConnectorEdid.hpp"

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <vector>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"
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
    std::error_code error;
    std::vector<std::filesystem::path> entries;
    for (auto entry = std::filesystem::directory_iterator(directory, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (isOfConnector(entry->path().filename(), connector)) {
            entries.push_back(entry->path());
        }
    }
    std::sort(entries.begin(), entries.end());
    for (const std::filesystem::path& entry : entries) {
        if (std::string identity = identityIn(entry / "edid"); !identity.empty()) {
            return identity;
        }
    }
    return {};
}

}  // namespace vantrel::wayland
