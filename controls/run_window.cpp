#include "controls/run_window.h"

#include <QCloseEvent>

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

void RunWindow::closeIfAsked() {
    if (closesAfterRun_ && !runs()) {
        close();
    }
}

}  // namespace guanchao
