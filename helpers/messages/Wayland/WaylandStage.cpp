#include "helpers/messages/Wayland/WaylandStage.hpp"

#include <utility>

namespace vantrel::overlay {

std::unique_ptr<Stage> WaylandStage::connect() {
    auto compositor = Compositor::connect();
    if (!compositor) {
        return nullptr;
    }
    return std::unique_ptr<Stage>(new WaylandStage(std::move(compositor)));  // NOLINT: private constructor
}

WaylandStage::WaylandStage(std::unique_ptr<Compositor> compositor)
    : compositor_(std::move(compositor)), texts_(*compositor_, typesetter_) {}

void WaylandStage::openMenu(std::vector<MenuRow> rows, Chosen chosen) {
    menu_.reset();
    if (!rows.empty()) {
        menu_ = std::make_unique<LayerMenu>(*compositor_, typesetter_, std::move(rows),
                                            [this, chosen = std::move(chosen)](std::optional<std::size_t> row) {
                                                endedMenu_ = std::move(menu_);
                                                chosen(row);
                                            });
    }
}

void WaylandStage::updateMenu(std::vector<MenuRow> rows) {
    if (menu_) {
        menu_->setRows(std::move(rows));
    }
}

void WaylandStage::serve() {
    compositor_->receive();
    texts_.followOutputs();
    if (menu_) {
        menu_->followOutputs();
    }
    endedMenu_.reset();
    compositor_->flush();
}

std::optional<Stage::Clock::time_point> WaylandStage::nextWork() const {
    return menu_ ? menu_->nextWork() : std::nullopt;
}

void WaylandStage::doDueWork() {
    if (menu_) {
        menu_->doDueWork();
    }
}

}  // namespace vantrel::overlay
