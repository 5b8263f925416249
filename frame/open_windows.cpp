#include "frame/open_windows.h"

#include "base/later.h"
#include "frame/asking_window.h"
#include "frame/told_role.h"

namespace guanchao {

namespace {

// True when the window has gone, false if its user keeps it.
QCoro::Task<bool> isClosed(QPointer<QWidget> window, std::stop_token stop) {
    Later<bool> answer;
    const QObject whileWaiting;
    QObject::connect(window, &QObject::destroyed, &whileWaiting, [&] { answer.deliver(true); });
    if (const auto* asking = qobject_cast<AskingWindow*>(window.data())) {
        QObject::connect(asking, &AskingWindow::stays, &whileWaiting,
                         [&] { answer.deliver(false); });
    }
    // A window that is closing already says yes, though its own question may still stand.
    if (window->close() && !window->isVisible()) {
        co_return true;
    }
    const bool closed = co_await answer.orStop(stop);
    co_return closed;
}

}  // namespace

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

QCoro::Task<bool> OpenWindows::closeAll(std::stop_token stop) {
    bool closed = true;
    const QList<QPointer<QWidget>> windows = open_;
    for (const QPointer<QWidget>& window : windows) {
        if (window) {
            const bool gone = co_await isClosed(window, stop);
            closed = gone && closed;
        }
    }
    co_return closed;
}

void OpenWindows::adopt(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    open_.removeIf([](const QPointer<QWidget>& it) { return it.isNull(); });
    open_ << window;
    memory_.place(*window);
    tellNamesOfBoxes(*window);
    window->show();
    emit opened(window);
}

}  // namespace guanchao
