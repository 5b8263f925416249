// The menus that open on the rows of a grid.
#pragma once

#include <QMenu>

namespace guanchao {

// Adds the entries in their order, those that delete apart from the others.
void fillRowMenu(QMenu& menu, const QList<QAction*>& entries, const QList<QAction*>& deleting);

}  // namespace guanchao
