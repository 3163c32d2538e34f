#include "tests/fakes/FakeStatusBar.hpp"

#include <algorithm>

namespace vantrel::fake {

std::unique_ptr<StatusItem> FakeStatusBar::statusItem(double length) {
    journal_.push_back("statusItem(" + journalText(length) + ")");
    return std::make_unique<Item>(*this);
}

const MenuItem* FakeStatusBar::row(const std::string& rowTitle) const {
    const auto found =
        std::find_if(menu.begin(), menu.end(), [&rowTitle](const MenuItem& item) { return item.title == rowTitle; });
    return found == menu.end() ? nullptr : &*found;
}

void FakeStatusBar::Button::setTitle(const std::string& newTitle) {
    bar_.journal_.push_back("setTitle(" + newTitle + ")");
    bar_.title = newTitle;
}

void FakeStatusBar::Button::setToolTip(const std::string& newToolTip) {
    bar_.journal_.push_back("setToolTip(" + newToolTip + ")");
    bar_.toolTip = newToolTip;
}

void FakeStatusBar::Button::setFont(double size, FontWeight weight) {
    bar_.journal_.push_back("setFont(" + journalText(size) +
                            (weight == FontWeight::semibold ? ", semibold)" : ", regular)"));
    bar_.fontSize = size;
    bar_.fontWeight = weight;
}

void FakeStatusBar::Item::setMenu(Menu newMenu) {
    bar_.journal_.emplace_back("setMenu");
    bar_.menu = std::move(newMenu);
}

}  // namespace vantrel::fake
