#include "helpers/settings/StatusLabel.hpp"

#include <QAccessible>

#include "helpers/settings/AccessibleRole.hpp"
#include "helpers/settings/SemanticColors.hpp"

namespace vantrel::qt {

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
    // Screen readers speak a notification when it shows.
    giveAccessibleRole<StatusLabel, QAccessible::Notification>();
}

void StatusLabel::announce(const QString& text, SemanticColor color) {
    const bool isNew = text != this->text();
    setText(text);
    setAccessibleName(text);
    setSemanticColor(color);
    if (isNew && isVisible()) {
        QAccessibleEvent event(this, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&event);
    }
}

}  // namespace vantrel::qt
