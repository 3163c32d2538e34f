#include "helpers/messages/Wayland/LayerTexts.hpp"

#include <algorithm>
#include <optional>

#include "helpers/messages/PixelGrid.hpp"
#include "helpers/messages/TextBox.hpp"
#include "helpers/messages/Wayland/LayerSurface.hpp"

namespace vantrel::overlay {

/// The text on one display.
class LayerTexts::OnOutput {
  public:
    OnOutput(const Compositor& compositor, const Output& output)
        : output_(output), layer_(compositor, output.handle, LayerSurface::Keyboard::none, [this](Size /*size*/) {
              isConfigured_ = true;
              // A compositor says the same size again and again.
              if (!isDrawn_) {
                  draw();
              }
          }) {
        layer_.surface().ignorePointer();
    }

    void show(const Typesetter& typesetter, const std::string& text, const Font& font, const Output& output) {
        const Size former = size();
        output_ = output;
        isDrawn_ = false;
        box_.emplace(typesetter, text, font, output.bounds);
        bounds_ = onPixelEdges(box_->bounds(), output.scale);
        layer_.standAt(bounds_);
        if (isConfigured_ && size() == former) {
            draw();
        } else {
            // It is drawn when the compositor has given it the new size.
            layer_.surface().commit();
        }
    }

    [[nodiscard]] std::uint32_t global() const { return output_.global; }
    [[nodiscard]] bool isClosed() const { return layer_.isClosed(); }

  private:
    [[nodiscard]] Size size() const { return {.width = bounds_.width, .height = bounds_.height}; }

    void draw() {
        isDrawn_ = true;
        layer_.surface().show(box_->bounds(), bounds_, output_.scale,
                              [this](cairo_t* context) { box_->draw(context, true); });
        layer_.surface().commit();
    }

    Output output_;
    std::optional<TextBox> box_;
    Rect bounds_;  ///< of the surface
    bool isConfigured_ = false;
    bool isDrawn_ = false;
    LayerSurface layer_;
};

LayerTexts::LayerTexts(const Compositor& compositor, const Typesetter& typesetter)
    : compositor_(compositor), typesetter_(typesetter) {}

LayerTexts::~LayerTexts() = default;

void LayerTexts::show(const std::string& text, const Font& font) {
    text_ = text;
    font_ = font;
    isShown_ = true;
    showOnOutputs();
}

void LayerTexts::hide() {
    isShown_ = false;
    onOutputs_.clear();
}

void LayerTexts::followOutputs() {
    std::erase_if(onOutputs_, [](const auto& each) { return each->isClosed(); });
    if (isShown_ && generation_ != compositor_.outputs().generation()) {
        showOnOutputs();
    }
}

void LayerTexts::showOnOutputs() {
    generation_ = compositor_.outputs().generation();
    const auto outputs = compositor_.outputs().current();
    std::erase_if(onOutputs_, [&](const auto& each) {
        return std::none_of(outputs.begin(), outputs.end(),
                            [&](const Output& output) { return output.global == each->global(); });
    });
    for (const Output& output : outputs) {
        auto found = std::find_if(onOutputs_.begin(), onOutputs_.end(),
                                  [&](const auto& each) { return each->global() == output.global; });
        if (found == onOutputs_.end()) {
            found = onOutputs_.insert(found, std::make_unique<OnOutput>(compositor_, output));
        }
        (*found)->show(typesetter_, text_, font_, output);
    }
}

}  // namespace vantrel::overlay
