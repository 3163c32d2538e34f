#pragma once

#include <cairo/cairo.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/desk/support/Points.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// What the viewer of the demo sees: two labelled displays and, below them, the keys. Drawn on the root window, whose
/// corner is the main display's.
class DemoStage {
  public:
    static constexpr int width = 960;
    static constexpr int height = 430;
    static constexpr MainRect mainDisplay{.x = 0, .y = 0, .width = 552, .height = 350};
    static constexpr MainRect secondDisplay{.x = 552, .y = 30, .width = 408, .height = 300};

    explicit DemoStage(XConnection& connection);
    DemoStage(const DemoStage&) = delete;
    DemoStage& operator=(const DemoStage&) = delete;

    /// Draws everything anew: a ring at each place that was left, the first so many keys of Hyper + D held, and the
    /// sentence beside them.
    void draw(const std::vector<MainPoint>& places, int heldKeys, const std::string& sentence);

  private:
    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    struct ContextDeleter {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };

    void setColour(unsigned colour);
    void drawText(double x, double y, double size, unsigned colour, const std::string& text);
    void drawDisplay(const MainRect& bounds, unsigned colour, const std::string& title);
    void drawPlace(MainPoint place);
    /// Returns where the next key goes.
    double drawKey(double x, const std::string& title, bool isHeld);
    void roundedRectangle(double x, double y, double rectangleWidth, double rectangleHeight, double radius);

    XConnection& connection_;
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface_;
    std::unique_ptr<cairo_t, ContextDeleter> context_;
};

}  // namespace vantrel::desk
