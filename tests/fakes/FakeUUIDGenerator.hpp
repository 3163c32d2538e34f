#pragma once

#include "Vantrel/Platform/UUIDGenerator.hpp"

namespace vantrel::fake {

/// Counts: the first UUID ends in 01, the next in 02, up to 255 of them.
class FakeUUIDGenerator final : public UUIDGenerator {
  public:
    UUID makeUUID() override {
        UUID uuid;
        uuid.bytes.back() = ++count_;
        return uuid;
    }

  private:
    std::uint8_t count_ = 0;
};

}  // namespace vantrel::fake
