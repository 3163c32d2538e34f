// What the firmware of a monitor might say about it.
#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Common/DisplayIdentity.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string identity = backend::edidIdentity({data, size});
    const auto identifiers = backend::identifiersOf(
        {backend::identityOfOutput(identity, "DP-1"), backend::identityOfOutput(identity, "DP-2")});
    fuzz::require(identifiers[0] != 0 && identifiers[1] != 0 && identifiers[0] != identifiers[1],
                  "twins have identifiers of their own");
    return 0;
}
