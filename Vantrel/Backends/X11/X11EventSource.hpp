#pragma once

#include <glib.h>

#include <functional>
#include <memory>

#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// Serves a connection from the main loop: events get their turn, requests are sent before the loop sleeps.
class X11EventSource {
  public:
    /// `turnBegan` runs once in each turn of the loop; `connectionLost` once, when the server goes away. The connection
    /// outlives the source.
    X11EventSource(X11Connection& connection, std::function<void()> turnBegan, std::function<void()> connectionLost);
    ~X11EventSource();
    X11EventSource(const X11EventSource&) = delete;
    X11EventSource& operator=(const X11EventSource&) = delete;

  private:
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    Source* source_;
};

}  // namespace vantrel::x11
