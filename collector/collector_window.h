// The window of the collector: the items of a run with what has become of each, how far the run is
// and what it waits for, pause and stop. Reads no table itself: it shows a Collection, whose run it
// owns.
#pragma once

#include <QDialog>
#include <QShortcut>
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
    // The items must be there. `title` is that of the job.
    CollectorWindow(Collection& collection, Dialogs& dialogs, Failures& failures,
                    const Clock& clock, const QString& title);
    ~CollectorWindow() override;

    // Begins the run.
    void start();

    // Called when the run has ended.
    std::function<void()> ended;
    // Called when the user wants another run once this one has ended; never once the main program
    // is gone, without which none begins.
    std::function<void(Scope)> again;
    // Called when the user wants to read about this window.
    std::function<void()> help;

protected:
    // Closing ends a run, after a question; a request at hand is broken off first.
    void reject() override;

private:
    void pauseButton_Toggled(bool paused);
    void stopButton_Click();
    QCoro::Task<> askAndClose(std::stop_token stop);
    QCoro::Task<> collect(std::stop_token stop);
    void showItems();
    void showItem(qsizetype item);
    void showChanged(qsizetype item);
    void followItem(qsizetype item);
    void showFigures();
    void showSkipped(const QStringList& names);
    void showEnd();
    void showTime();
    bool showWhetherWanted();
    void beginAgain(Scope scope);

    Collection& collection_;
    Dialogs& dialogs_;
    const Clock& clock_;
    std::unique_ptr<Ui::CollectorWindow> ui_;
    ResultGrid grid_;
    qsizetype followed_ = 0;  // the item that the list has followed last
    QTimer second_;
    QShortcut helpKey_{Qt::Key_F1, this};
    Runs runs_;
    Runs closing_;
};

}  // namespace guanchao
