#include "controls/run_window.h"

#include <QCloseEvent>

namespace guanchao {

void RunWindow::closeEvent(QCloseEvent* event) {
    if (!runs()) {
        event->accept();
        return;
    }
    closeAfterRun_ = true;
    cancelRun();
    hide();
    event->ignore();
}

void RunWindow::closeIfAsked() {
    if (closeAfterRun_ && !runs()) {
        close();
    }
}

}  // namespace guanchao
