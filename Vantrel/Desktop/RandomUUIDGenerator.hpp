#pragma once

#include "Vantrel/Platform/UUIDGenerator.hpp"

namespace vantrel::desktop {

/// UUIDs by GLib: random ones (RFC 4122, version 4).
class RandomUUIDGenerator final : public UUIDGenerator {
  public:
    UUID makeUUID() override;
};

}  // namespace vantrel::desktop
