#pragma once

#include <QComboBox>

namespace vantrel::qt {

/// A pop-up button. The wheel chooses nothing while its list is closed, where nobody sees what there is to choose and
/// the choice would be stored at once: it goes to what the button stands in.
class PopUpButton final : public QComboBox {
  public:
    PopUpButton();

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace vantrel::qt
