#pragma once

#include <string>
#include <vector>

#include "Vantrel/Platform/StatusItem.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A panel with room for one item, whose looks stay readable as long as the panel lives.
class FakeStatusBar final : public StatusBar {
  public:
    explicit FakeStatusBar(Journal& journal) : journal_(journal), button_(*this) {}
    FakeStatusBar(const FakeStatusBar&) = delete;
    FakeStatusBar& operator=(const FakeStatusBar&) = delete;

    std::unique_ptr<StatusItem> statusItem(double length) override;

    /// The row of the menu with that title; null when there is none.
    [[nodiscard]] const MenuItem* row(const std::string& rowTitle) const;

    std::string title;
    std::string toolTip;
    double fontSize = 0;
    FontWeight fontWeight = FontWeight::regular;
    Menu menu;
    bool hasButton = true;  ///< whether the item has a visible part
    bool isVisible = true;  ///< whether the item says that it is seen

  private:
    class Button final : public StatusBarButton {
      public:
        explicit Button(FakeStatusBar& bar) : bar_(bar) {}
        void setTitle(const std::string& newTitle) override;
        void setToolTip(const std::string& newToolTip) override;
        void setFont(double size, FontWeight weight) override;

      private:
        FakeStatusBar& bar_;
    };

    class Item final : public StatusItem {
      public:
        explicit Item(FakeStatusBar& bar) : bar_(bar) {}
        StatusBarButton* button() override { return bar_.hasButton ? &bar_.button_ : nullptr; }
        void setMenu(Menu newMenu) override;
        [[nodiscard]] bool isVisible() const override { return bar_.isVisible; }
        void popUpMenu() override { bar_.journal_.emplace_back("popUpMenu"); }

      private:
        FakeStatusBar& bar_;
    };

    Journal& journal_;
    Button button_;
};

}  // namespace vantrel::fake
