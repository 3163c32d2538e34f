#pragma once

#include "Vantrel/Platform/UUIDGenerator.hpp"

namespace vantrel::desktop {

/// UUIDs from the kernel's random numbers.
class RandomUUIDGenerator final : public UUIDGenerator {
  public:
    UUID makeUUID() override;
};

}  // namespace vantrel::desktop
