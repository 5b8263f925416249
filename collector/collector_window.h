// The window of the collector: the items of a run with what has become of each, progress, pause and
// stop. Reads no table itself: it shows a Collection, whose steps its timer calls.
#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>

#include "base/runs.h"
#include "collector/collection.h"
#include "grid/result_grid.h"
#include "platform/dialogs.h"

namespace Ui {
class CollectorWindow;
}

namespace guanchao {

class CollectorWindow : public QDialog {
    Q_OBJECT

public:
    // The run must have begun. `title` is that of the job.
    CollectorWindow(Collection& collection, Dialogs& dialogs, Failures& failures,
                    const QString& title);
    ~CollectorWindow() override;

    // Begins to call the steps of the run.
    void start();

    // Called when the run has ended.
    std::function<void()> ended;

protected:
    // Closing ends a run, after a question; a request at hand is broken off first.
    void reject() override;

private:
    void pauseButton_Click();
    void stopButton_Click();
    QCoro::Task<> askAndClose(std::stop_token stop);
    void takeStep();
    void showItems();
    void showItem(qsizetype item);
    void followItem(qsizetype item);
    void showFigures();
    void showEnd();

    Collection& collection_;
    Dialogs& dialogs_;
    std::unique_ptr<Ui::CollectorWindow> ui_;
    ResultGrid grid_;
    QTimer timer_;
    bool stepping_ = false;  // a request lets events happen, which must not begin another step
    Runs closing_;
};

}  // namespace guanchao
