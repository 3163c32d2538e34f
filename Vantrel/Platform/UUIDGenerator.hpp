#pragma once

#include "VantrelCore/UUID.hpp"

namespace vantrel {

class UUIDGenerator {
  public:
    virtual ~UUIDGenerator() = default;

    /// A fresh random UUID (RFC 4122, version 4).
    virtual UUID makeUUID() = 0;
};

}  // namespace vantrel
