#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vantrel::backend {

/// What a display's identifier is made of: what it is, and where it is plugged in, to tell equals apart.
struct DisplayIdentity {
    std::string what;
    std::string where;
};

/// The maker, model and serial number of an EDID (VESA E-EDID, base block) as one text; empty for anything else.
std::string edidIdentity(std::span<const std::uint8_t> edid);

/// A display with that edidIdentity() (may be empty) on that connector.
DisplayIdentity identityOfOutput(const std::string& edid, const std::string& connector);

/// An identifier for each display of a layout: never 0, unique within the layout and the same in every session,
/// whatever the windowing system. Of equal displays the first by connector keeps the plain identifier, so that it does
/// not change when its twin is unplugged.
std::vector<std::uint32_t> identifiersOf(const std::vector<DisplayIdentity>& identities);

}  // namespace vantrel::backend
