// 撤消 and 重做 of the main window: each names the edit that it would take back or do again, waits
// for a store that another holds, and says where rows have changed meanwhile.
#pragma once

#include <QAction>
#include <functional>

#include "base/runs.h"
#include "frame/environment.h"

namespace guanchao {

class UndoMenu : public QObject {
    Q_OBJECT

public:
    // `changed` shows what is in the stores then.
    UndoMenu(QAction& undo, QAction& redo, Environment& environment,
             std::function<void(const Edit& edit, Way way)> changed);

    // After deletions have come back, or gone for good, beside the menu.
    void showNext();
    void stop() { runs_.stop(); }

private:
    void showNext(QAction& entry, const QString& word, Way way);
    void start(Way way);
    QCoro::Task<> run(Edit edit, Way way, std::stop_token stop);

    QAction& undo_;
    QAction& redo_;
    Environment& environment_;
    std::function<void(const Edit&, Way)> changed_;
    bool isUnderWay_ = false;
    Runs runs_;
};

}  // namespace guanchao
