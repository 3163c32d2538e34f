#include "helpers/settings/ServerConnection.hpp"

#include <QGuiApplication>

namespace vantrel::qt {

xcb_connection_t* serverConnection() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

}  // namespace vantrel::qt
