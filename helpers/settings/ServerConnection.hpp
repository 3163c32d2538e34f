#pragma once

#include <xcb/xcb.h>

#include <QGuiApplication>

namespace vantrel::qt {

/// Qt's own connection to the X server; null on other windowing systems.
inline xcb_connection_t* serverConnection() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

}  // namespace vantrel::qt
