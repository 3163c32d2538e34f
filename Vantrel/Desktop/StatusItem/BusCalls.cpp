#include "Vantrel/Desktop/StatusItem/BusCalls.hpp"

#include <utility>

namespace vantrel::desktop {

namespace {

void deliver(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<BusCalls::Answer> answer(static_cast<BusCalls::Answer*>(data));
    GError* rawError = nullptr;
    const GVariantPointer arguments(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &rawError));
    const GErrorPointer error(rawError);
    // A cancelled call belongs to an object that is gone.
    if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
        return;
    }
    (*answer)(arguments.get());
}

}  // namespace

BusCalls::BusCalls(GDBusConnection* bus) : bus_(shareObject(bus)), cancellable_(g_cancellable_new()) {}

BusCalls::~BusCalls() {
    g_cancellable_cancel(cancellable_.get());
}

void BusCalls::call(const BusMethod& method, GVariant* arguments, Answer answer) {
    auto pending = std::make_unique<Answer>(std::move(answer));
    g_dbus_connection_call(bus_.get(), method.destination.c_str(), method.objectPath.c_str(), method.interface.c_str(),
                           method.name.c_str(), arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                           cancellable_.get(), deliver, pending.release());
}

}  // namespace vantrel::desktop
