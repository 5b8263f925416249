// The look of the whole program: one dark style sheet over Fusion, and the pictures of its buttons.
#pragma once

#include <QApplication>
#include <QIcon>

namespace guanchao {

void applyLooks(QApplication& application);

QIcon programIcon();
QIcon searchIcon();
QIcon updateIcon();

}  // namespace guanchao
