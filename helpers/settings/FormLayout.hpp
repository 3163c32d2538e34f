#pragma once

#include <QGroupBox>
#include <QWidget>
#include <initializer_list>

#include "helpers/settings/StatusLabel.hpp"

namespace vantrel::qt {

/// A titled box with the views below each other, each as wide as the box. It belongs to the layout that it is put into.
QGroupBox& makeSection(const char* title, std::initializer_list<QWidget*> arrangedSubviews);

/// A label and a control that takes the rest of the row. For a screen reader the label names the control.
QWidget& makeFormRow(TintedLabel& label, QWidget& control);

/// A label and two controls of their own widths. For a screen reader the label names the first.
QWidget& makeFormRow(TintedLabel& label, QWidget& control, QWidget& secondControl);

/// Gives the labels one width: the layout's, or the widest label's where the desktop's font needs more.
void alignFormLabels(std::initializer_list<TintedLabel*> labels);

}  // namespace vantrel::qt
