#pragma once

#include <QAccessibleWidget>
#include <memory>

namespace vantrel::qt {

/// Gives all widgets of that class a role of their own for screen readers, whose name is Qt's or what the widget sets.
template <typename Widget, QAccessible::Role role>
void giveAccessibleRole() {
    struct Accessible final : QAccessibleWidget {
        using QAccessibleWidget::QAccessibleWidget;
    };
    QAccessible::installFactory([](const QString& /*className*/, QObject* object) -> QAccessibleInterface* {
        auto* const widget = dynamic_cast<Widget*>(object);
        // Qt's cache of interfaces takes it over.
        return widget != nullptr ? std::make_unique<Accessible>(widget, role).release() : nullptr;
    });
}

}  // namespace vantrel::qt
