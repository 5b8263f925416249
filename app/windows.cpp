#include "app/windows.h"

namespace guanchao {

bool Windows::close(const QString& name) {
    for (const QPointer<QWidget>& window : open_.values(name)) {
        if (!window || window->close()) {
            open_.remove(name, window);
        }
    }
    return !open_.contains(name);
}

bool Windows::closeAll() {
    bool closed = true;
    for (const QString& name : open_.uniqueKeys()) {
        closed = close(name) && closed;
    }
    return closed;
}

void Windows::adopt(const QString& name, QWidget* window) {
    // Closing the former one may have shown a message, and an alarm opened another under it.
    close(name);
    window->setAttribute(Qt::WA_DeleteOnClose);
    open_.removeIf([](const auto& it) { return it.value().isNull(); });
    open_.insert(name, window);
    window->show();
}

}  // namespace guanchao
