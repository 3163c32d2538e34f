#include "helpers/messages/Wayland/LayerTexts.hpp"

#include <algorithm>
#include <optional>

#include "helpers/messages/TextBox.hpp"
#include "helpers/messages/Wayland/LayerSurface.hpp"

namespace vantrel::overlay {

/// The text on one display.
class LayerTexts::OnOutput {
  public:
    OnOutput(const Compositor& compositor, const Output& output)
        : output_(output), layer_(compositor, output.handle, LayerSurface::Keyboard::none, [this](Size /*size*/) {
              isConfigured_ = true;
              draw();
          }) {
        layer_.surface().ignorePointer();
    }

    void show(const Typesetter& typesetter, const std::string& text, const Font& font, const Output& output) {
        const Size former = box_ ? size() : Size{};
        output_ = output;
        box_.emplace(typesetter, text, font, output.bounds);
        layer_.standAtTheTop(box_->bounds().y, size());
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
    [[nodiscard]] Size size() const { return {.width = box_->bounds().width, .height = box_->bounds().height}; }

    void draw() {
        layer_.surface().show(size(), output_.scale, [this](cairo_t* context) { box_->draw(context, true); });
        layer_.surface().commit();
    }

    Output output_;
    std::optional<TextBox> box_;
    bool isConfigured_ = false;
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
