#include "controls/run_window.h"

#include <QCloseEvent>
#include <QScopeGuard>

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
        if (closesAfterRun_ && !runs()) {
            close();
        }
    });
    job();
}

}  // namespace guanchao
