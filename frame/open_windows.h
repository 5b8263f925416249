// Remembers the windows that are open, and closes them. Closed windows delete themselves; one that
// asks its user whether to close may stay open.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <stop_token>

#include "frame/window_memory.h"

namespace guanchao {

// On the screen, above the others and with the keyboard.
void bringToFront(QWidget& window);

class OpenWindows : public QObject {
    Q_OBJECT

public:
    explicit OpenWindows(WindowMemory memory = WindowMemory()) : memory_(std::move(memory)) {}

    // Shows the window where it was the last time, and remembers it until it is closed.
    void adopt(QWidget* window);

    // An open one of the class; null if there is none.
    template <typename Form>
    Form* find() const {
        for (const QPointer<QWidget>& window : open_) {
            auto* form = qobject_cast<Form*>(window.data());
            if (form && form->isVisible()) {
                return form;
            }
        }
        return nullptr;
    }

    // All windows of the class.
    template <typename Form>
    void close() {
        const QList<QPointer<QWidget>> windows = open_;
        for (const QPointer<QWidget>& window : windows) {
            if (auto* form = qobject_cast<Form*>(window.data())) {
                form->close();
            }
        }
    }

    // Every window that was adopted, one after the other; the main window is not among them. Waits
    // for those that ask, and for those whose run ends first. False if a user keeps one.
    QCoro::Task<bool> closeAll(std::stop_token stop);

    const WindowMemory& memory() const { return memory_; }

signals:
    // A window is on the screen, whoever has opened it.
    void opened(QWidget* window);

private:
    WindowMemory memory_;
    QList<QPointer<QWidget>> open_;
};

}  // namespace guanchao
