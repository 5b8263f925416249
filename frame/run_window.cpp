#include "frame/run_window.h"

#include <QCloseEvent>
#include <QScopeGuard>
#include <utility>

namespace guanchao {

void RunWindow::closeEvent(QCloseEvent* event) {
    if (!runs()) {
        event->accept();
        return;
    }
    closesAfterRun_ = true;
    cancelRun();
    hide();
    event->ignore();
}

void RunWindow::doRun(const std::function<void()>& job) {
    const auto end = qScopeGuard([this] {
        if (!runs() && std::exchange(closesAfterRun_, false)) {
            close();
        }
    });
    job();
}

}  // namespace guanchao
