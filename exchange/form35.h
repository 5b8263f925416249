// Form35, "更新代码表": brings the code table up to date from the list of all stocks that a public
// service tells. Tables dmb and tuishi of the main store; the rules are in CodeTableUpdate. Whether
// Beijing is wanted, and when the table was updated last, stand in 界面.ini.
#pragma once

#include <QDialog>
#include <QShortcut>
#include <memory>

#include "base/runs.h"
#include "exchange/code_table_update.h"
#include "frame/environment.h"
#include "frame/run_panel.h"
#include "frame/windows.h"

namespace Ui {
class Form35;
}

namespace guanchao {

class Form35 : public QDialog {
    Q_OBJECT

public:
    Form35(Environment& environment, Windows& windows);
    ~Form35() override;

signals:
    // Something has come into the store.
    void imported();

private:
    void connectControls();
    void begin();
    QCoro::Task<> readTable(std::stop_token stop);
    QCoro::Task<> update(std::stop_token stop);
    void stopUpdate();
    void showTable();
    void showResult(const CodeTableResult& result);
    void showChanges(const CodeTableChanges& changes);
    void showState();

    Environment& environment_;
    std::unique_ptr<Ui::Form35> ui_;
    const QString iniPath_;
    std::unique_ptr<RunPanel> panel_;
    KnownCodes known_;
    bool updating_ = false;
    std::unique_ptr<RunControl> control_;      // of the last update
    QShortcut stopKey_{Qt::Key_Escape, this};  // closes the window while nothing is updated
    Runs runs_;
};

}  // namespace guanchao
