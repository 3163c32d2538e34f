#include "Vantrel/Backends/Common/BusCall.hpp"

#include <algorithm>
#include <cstdint>

namespace vantrel::backend {

GVariantPointer callUntil(Clock::time_point deadline, GDBusConnection* bus, const BusMethod& method,
                          GVariant* arguments, const char* answerType) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return GVariantPointer(g_dbus_connection_call_sync(
        bus, method.service, method.path, method.interface, method.name, arguments, G_VARIANT_TYPE(answerType),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(std::max<std::int64_t>(left, 1)), nullptr, nullptr));
}

}  // namespace vantrel::backend
