// What a window shows of a run in the background: its buttons, what it is at and how far, and what
// it came to.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "base/run_control.h"
#include "base/run_progress.h"

namespace guanchao {

class RunPanel {
public:
    struct Controls {
        QPushButton* pause;  // null for a run that is only stopped
        QPushButton* stop;
        QLabel* step;
        QProgressBar* progress;
        QLabel* words;
    };

    explicit RunPanel(const Controls& controls);

    void show(const ShownRun& run);
    void show(const RunProgress& progress);
    // Nothing is shown of empty words.
    void say(const QString& words);

private:
    Controls controls_;
};

}  // namespace guanchao
