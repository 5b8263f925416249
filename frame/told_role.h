// What assistive tools are told of a control whose own class tells them too little.
#pragma once

#include <QAccessible>
#include <QWidget>
#include <functional>

namespace guanchao {

// The control is told with this role, as one thing without parts; `press` is what pressing it
// does while it can have the focus.
void tellRole(QWidget& control, QAccessible::Role role, std::function<void()> press = {});

// A box with a list tells on this desktop the chosen text in place of its name, which therefore
// goes into its description, before its tool tip.
void tellNamesOfBoxes(const QWidget& window);

}  // namespace guanchao
