#include "app/windows.h"

namespace guanchao {

bool Windows::close(const QString& name) {
    for (const QPointer<QWidget>& window : open_.values(name)) {
        // A window that is closing already says yes, though its own question may still stand.
        if (!window || (window->close() && !window->isVisible())) {
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

QWidget* Windows::endingWindow() const {
    QWidget* ending = nullptr;
    for (const QPointer<QWidget>& window : open_) {
        if (window && window->isVisible()) {
            return nullptr;
        }
        ending = window ? window.data() : ending;
    }
    return ending;
}

void Windows::adopt(const QString& name, QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    open_.removeIf([](const auto& it) { return it.value().isNull(); });
    open_.insert(name, window);
    window->show();
}

}  // namespace guanchao
