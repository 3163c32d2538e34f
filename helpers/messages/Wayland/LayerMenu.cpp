#include "helpers/messages/Wayland/LayerMenu.hpp"

#include <algorithm>
#include <utility>

#include "helpers/messages/PixelGrid.hpp"

namespace vantrel::overlay {

namespace {

constexpr std::chrono::milliseconds longestLook(500);

}  // namespace

/// What lies over a display.
struct LayerMenu::Cover {
    Cover(LayerMenu& owner, const Output& output)
        : global(output.global),
          layer(owner.compositor_, output.handle, LayerSurface::Keyboard::exclusive, [this, &owner](Size given) {
              // A compositor says the same size again and again.
              if (size == given) {
                  return;
              }
              size = given;
              layer.surface().showNothing(given);
              layer.surface().commit();
              owner.covered(*this);
              if (owner.popup_) {
                  owner.place();
              }
          }) {
        layer.coverTheOutput();
        layer.surface().commit();
    }

    std::uint32_t global;
    Size size;  ///< in points; nothing until it is there
    LayerSurface layer;
};

/// The menu itself, which is drawn on a cover: what the pointer does is told about the cover.
struct LayerMenu::Popup {
    Popup(const Compositor& compositor, Cover& shownOn, std::optional<Point> at)
        : cover(&shownOn),
          point(at),
          surface(compositor),
          subsurface(wl_subcompositor_get_subsurface(compositor.subcompositor(), surface.get(),
                                                     cover->layer.surface().get())) {
        surface.ignorePointer();
        // Else it would change only with its cover.
        wl_subsurface_set_desync(subsurface.get());
    }

    Cover* cover;
    std::optional<Point> point;  ///< of its corner; none for the middle
    Rect bounds;                 ///< of the surface, on the cover
    Surface surface;
    Handle<wl_subsurface> subsurface;
};

LayerMenu::LayerMenu(const Compositor& compositor, const Typesetter& typesetter, std::vector<MenuRow> rows,
                     std::function<void(std::optional<std::size_t>)> ended)
    : compositor_(compositor),
      view_(typesetter, std::move(rows), {.changed = [this] { draw(); }, .ended = std::move(ended)}),
      cursor_(compositor),
      // Asked for before the covers, so that their entries are heard.
      seat_(compositor,
            {.pointed = [this](wl_surface* surface, Point place) { pointed(surface, place); },
             .entered =
                 [this](wl_pointer& pointer, std::uint32_t serial, wl_surface* surface) {
                     if (const Cover* const cover = coverOf(surface)) {
                         cursor_.giveTo(pointer, serial, scaleOf(*cover));
                     }
                 },
             .button =
                 [this](bool isPressed) {
                     if (popup_ && isPressed) {
                         view_.buttonPressed(pointer_);
                     } else if (popup_) {
                         view_.buttonReleased(pointer_);
                     }
                 },
             .key = [this](auto keysyms, bool isControlHeld) { view_.keyPressed(keysyms, isControlHeld); }}),
      lastLook_(Clock::now() + longestLook) {
    for (const Output& output : compositor.outputs().current()) {
        covers_.push_back(std::make_unique<Cover>(*this, output));
    }
}

LayerMenu::~LayerMenu() {
    popup_.reset();
    last_.reset();
    covers_.clear();
    compositor_.lookUnderPointer();
}

void LayerMenu::covered(const Cover& latest) {
    const bool allAre =
        std::all_of(covers_.begin(), covers_.end(), [](const auto& cover) { return cover->size.width > 0; });
    if (allAre && !popup_ && !milestone_) {
        milestone_ = std::make_unique<Milestone>(compositor_, [this, global = latest.global] { look(global); });
    }
}

// sway does not tell the surface that came last that the pointer is on it. So another one comes after it, a point that
// the pointer never enters.
void LayerMenu::look(std::uint32_t latest) {
    const auto outputs = compositor_.outputs().current();
    const auto output = std::find_if(outputs.begin(), outputs.end(),
                                     [latest](const Output& candidate) { return candidate.global == latest; });
    if (popup_ || output == outputs.end()) {
        return;
    }
    constexpr Size point{.width = 1, .height = 1};
    last_ =
        std::make_unique<LayerSurface>(compositor_, output->handle, LayerSurface::Keyboard::none, [this, point](Size) {
            last_->surface().showNothing(point);
            last_->surface().commit();
        });
    last_->surface().ignorePointer();
    last_->askFor(point);
    last_->surface().commit();
}

void LayerMenu::openOn(Cover& cover, std::optional<Point> point) {
    lastLook_.reset();
    popup_ = std::make_unique<Popup>(compositor_, cover, point);
    place();
}

void LayerMenu::place() {
    const Rect display{.x = 0, .y = 0, .width = popup_->cover->size.width, .height = popup_->cover->size.height};
    if (popup_->point) {
        view_.placeAt(*popup_->point, display);
    } else {
        view_.placeInTheMiddleOf(display);
    }
    popup_->bounds = onPixelEdges(view_.bounds(), scaleOf(*popup_->cover));
    wl_subsurface_set_position(popup_->subsurface.get(), popup_->bounds.x, popup_->bounds.y);
    draw();
    // The position comes into force with the cover.
    popup_->cover->layer.surface().commit();
}

void LayerMenu::draw() {
    if (!popup_) {
        return;
    }
    popup_->surface.show(view_.bounds(), popup_->bounds, scaleOf(*popup_->cover),
                         [this](cairo_t* context) { view_.draw(context, true); });
    popup_->surface.commit();
}

void LayerMenu::setRows(std::vector<MenuRow> rows) {
    view_.setRows(std::move(rows));
    if (popup_) {
        place();
    }
}

void LayerMenu::pointed(wl_surface* surface, Point onSurface) {
    Cover* const cover = coverOf(surface);
    if (!popup_ && cover != nullptr && cover->size.width > 0) {
        pointer_ = onSurface;
        openOn(*cover, onSurface);
        return;
    }
    pointer_ = popup_ && cover == popup_->cover ? std::optional(onSurface) : std::nullopt;
    view_.pointerMoved(pointer_);
}

void LayerMenu::followOutputs() {
    // Some compositors only say that the display is gone.
    const auto outputs = compositor_.outputs().current();
    const auto isGone = [&outputs](const Cover& cover) {
        return cover.layer.isClosed() || std::none_of(outputs.begin(), outputs.end(), [&cover](const Output& output) {
                   return output.global == cover.global;
               });
    };
    if (popup_ && isGone(*popup_->cover)) {
        popup_.reset();
        view_.leave();
    }
    std::erase_if(covers_, [&isGone](const auto& cover) { return isGone(*cover); });
}

std::optional<LayerMenu::Clock::time_point> LayerMenu::nextWork() const {
    const auto repeat = seat_.nextRepeat();
    return lastLook_ && repeat ? std::min(*lastLook_, *repeat) : lastLook_ ? lastLook_ : repeat;
}

void LayerMenu::doDueWork() {
    const auto now = Clock::now();
    if (lastLook_ && *lastLook_ <= now) {
        lastLook_.reset();
        const auto shown =
            std::find_if(covers_.begin(), covers_.end(), [](const auto& cover) { return cover->size.width > 0; });
        if (shown == covers_.end() || !seat_.hasDevice()) {
            // It could not be left.
            view_.leave();
            return;
        }
        openOn(**shown, std::nullopt);
    }
    if (seat_.nextRepeat() && *seat_.nextRepeat() <= now) {
        seat_.repeatKey();
    }
}

LayerMenu::Cover* LayerMenu::coverOf(wl_surface* surface) const {
    const auto found = std::find_if(covers_.begin(), covers_.end(),
                                    [surface](const auto& cover) { return cover->layer.surface().get() == surface; });
    return found == covers_.end() ? nullptr : found->get();
}

double LayerMenu::scaleOf(const Cover& cover) const {
    for (const Output& output : compositor_.outputs().current()) {
        if (output.global == cover.global) {
            return output.scale;
        }
    }
    return 1;
}

}  // namespace vantrel::overlay
