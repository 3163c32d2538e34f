#pragma once

#include <memory>
#include <string>
#include <vector>

#include "helpers/messages/Typesetter.hpp"
#include "helpers/messages/Wayland/Compositor.hpp"

namespace vantrel::overlay {

/// The short text near the top of every display: which one the pointer is on cannot be asked without taking it from the
/// program beneath.
class LayerTexts {
  public:
    /// Both outlive this object.
    LayerTexts(const Compositor& compositor, const Typesetter& typesetter);
    ~LayerTexts();
    LayerTexts(const LayerTexts&) = delete;
    LayerTexts& operator=(const LayerTexts&) = delete;

    /// Shows the text in place of the present one.
    void show(const std::string& text, const Font& font);
    void hide();

    /// Takes in what has changed about the displays.
    void followOutputs();

  private:
    class OnOutput;

    void showOnOutputs();

    const Compositor& compositor_;
    const Typesetter& typesetter_;
    std::string text_;
    Font font_;
    bool isShown_ = false;
    unsigned generation_ = 0;  ///< of the outputs that it is shown on
    std::vector<std::unique_ptr<OnOutput>> onOutputs_;
};

}  // namespace vantrel::overlay
