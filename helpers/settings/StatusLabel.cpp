#include "helpers/settings/StatusLabel.hpp"

#include <QAccessible>
#include <QAccessibleWidget>
#include <memory>

#include "helpers/settings/SemanticColors.hpp"

namespace vantrel::qt {

namespace {

/// Screen readers speak a notification when it shows.
class AccessibleStatus final : public QAccessibleWidget {
  public:
    explicit AccessibleStatus(QWidget* label) : QAccessibleWidget(label, QAccessible::Notification) {}

    [[nodiscard]] QString text(QAccessible::Text which) const override {
        return which == QAccessible::Name ? static_cast<const QLabel*>(widget())->text()
                                          : QAccessibleWidget::text(which);
    }
};

QAccessibleInterface* makeAccessibleStatus(const QString& /*className*/, QObject* object) {
    auto* const label = dynamic_cast<StatusLabel*>(object);
    // Qt's cache of interfaces takes it over.
    return label != nullptr ? std::make_unique<AccessibleStatus>(label).release() : nullptr;
}

}  // namespace

TintedLabel::TintedLabel(SemanticColor color, const QString& text) : QLabel(text), color_(color) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
}

void TintedLabel::tint(const QPalette& theme) {
    QPalette own = palette();
    own.setColor(QPalette::WindowText, semanticColor(color_, theme));
    setPalette(own);
}

StatusLabel::StatusLabel() : TintedLabel(SemanticColor::secondaryLabel) {
    setObjectName("shortcutStatus");
    QAccessible::installFactory(makeAccessibleStatus);
}

void StatusLabel::announce(const QString& text, SemanticColor color) {
    const bool isNew = text != this->text();
    setText(text);
    setSemanticColor(color);
    if (isNew && isVisible()) {
        QAccessibleEvent event(this, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&event);
    }
}

}  // namespace vantrel::qt
