#include "app/windows.h"

namespace guanchao {

void Windows::close(const QString& name) {
    if (const QPointer<QWidget> window = open_.take(name)) {
        window->close();
    }
}

void Windows::closeAll() {
    for (const QString& name : open_.keys()) {
        close(name);
    }
}

void Windows::adopt(const QString& name, QWidget* window) {
    // Closing the former one may have shown a message, and an alarm opened another under it.
    close(name);
    window->setAttribute(Qt::WA_DeleteOnClose);
    open_.insert(name, window);
    window->show();
}

}  // namespace guanchao
