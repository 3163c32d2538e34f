#pragma once

#include <cstdint>
#include <string>

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// Draws on the empty desk, so that a screenshot of it says something: the displays and the pointer's ways.
class Canvas {
  public:
    Canvas(XConnection& connection, const DisplayLayout& layout);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void drawDisplay(const MainRect& bounds, const std::string& title);
    void drawMove(MainPoint from, MainPoint to);
    void drawStop(MainPoint point, const std::string& title);

  private:
    void setColour(std::uint32_t colour);
    void drawText(MainPoint point, const std::string& text);

    XConnection& connection_;
    const DisplayLayout& layout_;
    xcb_font_t font_;
    xcb_gcontext_t context_;
};

}  // namespace vantrel::desk
