#include "helpers/settings/FormLayout.hpp"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "Vantrel/Interface/PreferencesWindowLayout.hpp"
#include "helpers/settings/QtObjects.hpp"

namespace vantrel::qt {

using Layout = PreferencesWindowLayout;

namespace {

/// The row with its label.
QHBoxLayout& startFormRow(QWidget& row, TintedLabel& label, QWidget& labelled) {
    label.setWordWrap(false);
    label.setBuddy(&labelled);
    auto& stack = makeOwnedByParent<QHBoxLayout>(&row);
    stack.setContentsMargins(0, 0, 0, 0);
    stack.setSpacing(Layout::formRowSpacing);
    stack.addWidget(&label, 0, Qt::AlignVCenter);
    return stack;
}

}  // namespace

QGroupBox& makeSection(const char* title, std::initializer_list<QWidget*> arrangedSubviews) {
    auto& box = makeOwnedByParent<QGroupBox>(title);
    auto& stack = makeOwnedByParent<QVBoxLayout>(&box);
    stack.setContentsMargins(Layout::sectionMargin, Layout::sectionMargin, Layout::sectionMargin,
                             Layout::sectionMargin);
    stack.setSpacing(Layout::sectionSpacing);
    for (QWidget* const view : arrangedSubviews) {
        stack.addWidget(view);
    }
    return box;
}

QWidget& makeFormRow(TintedLabel& label, QWidget& control) {
    auto& row = makeOwnedByParent<QWidget>();
    startFormRow(row, label, control).addWidget(&control, 1, Qt::AlignVCenter);
    return row;
}

QWidget& makeFormRow(TintedLabel& label, QWidget& control, QWidget& secondControl) {
    auto& row = makeOwnedByParent<QWidget>();
    // A layout, not a widget: a screen reader's label and control have to be siblings.
    auto& controls = makeOwnedByParent<QHBoxLayout>();
    controls.setSpacing(Layout::recorderSpacing);
    startFormRow(row, label, control).addLayout(&controls, 1);
    controls.addWidget(&control, 0, Qt::AlignVCenter);
    controls.addWidget(&secondControl, 0, Qt::AlignVCenter);
    controls.addStretch(1);
    return row;
}

void alignFormLabels(std::initializer_list<TintedLabel*> labels) {
    int width = Layout::formLabelWidth;
    for (TintedLabel* const label : labels) {
        width = std::max(width, label->sizeHint().width());
    }
    for (TintedLabel* const label : labels) {
        label->setFixedWidth(width);
    }
}

}  // namespace vantrel::qt
