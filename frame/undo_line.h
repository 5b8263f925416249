// A line in a window that says what was deleted last there, with the button that takes it back. It
// shows while there is such a deletion.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <functional>

#include "base/runs.h"
#include "frame/environment.h"

namespace guanchao {

class UndoLine : public QObject {
    Q_OBJECT

public:
    // `place` is that of the deletions. `cameBack` shows what has come back.
    UndoLine(QLabel& words, QPushButton& button, Environment& environment, QString place,
             std::function<void()> cameBack);

    // After a deletion of the window.
    void showLast();

protected:
    // Another window of the same place may have deleted or brought back.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QCoro::Task<> undo(std::stop_token stop);

    QLabel& words_;
    QPushButton& button_;
    Removals& removals_;
    QString place_;
    std::function<void()> cameBack_;
    Runs runs_;
};

}  // namespace guanchao
