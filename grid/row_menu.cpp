#include "grid/row_menu.h"

namespace guanchao {

void fillRowMenu(QMenu& menu, const QList<QAction*>& entries, const QList<QAction*>& deleting) {
    const QAction* last = entries.first();
    for (QAction* it : entries) {
        if (deleting.contains(it) != deleting.contains(last)) {
            menu.addSeparator();
        }
        menu.addAction(it);
        last = it;
    }
}

}  // namespace guanchao
