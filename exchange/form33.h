// Form33, "导入概念板块": the boards of the day, as a public service tells them, to choose from;
// those that are chosen become themes. Tables dzhzhuti and tempcanshu of the main store; the rules
// are in Boards and BoardImport.
#pragma once

#include <QDialog>
#include <QShortcut>
#include <memory>

#include "base/runs.h"
#include "exchange/board_import.h"
#include "frame/environment.h"
#include "frame/run_panel.h"
#include "frame/windows.h"

class QTreeWidgetItem;

namespace Ui {
class Form33;
}

namespace guanchao {

class Form33 : public QDialog {
    Q_OBJECT

public:
    Form33(Environment& environment, Windows& windows);
    ~Form33() override;

signals:
    // Something has come into the store.
    void imported();

private:
    void prepareControls();
    void connectControls();
    void readAnew();
    QCoro::Task<> readBoards(std::stop_token stop);
    void showBoards(const QHash<QString, int>& members);
    void showSummary();
    void showFound();
    void tickListed(const std::function<bool(const Board&)>& isWanted);
    QList<Board> ticked() const;
    void beginImport();
    QCoro::Task<> importTicked(std::stop_token stop);
    void showProgress(const RunProgress& progress);
    void pauseOrGoOn();
    void stopImport();
    void showOutcome(const BoardOutcome& outcome);
    void showState();

    Environment& environment_;
    std::unique_ptr<Ui::Form33> ui_;
    std::unique_ptr<RunPanel> panel_;
    BoardList boards_;
    QHash<QString, QTreeWidgetItem*> items_;  // by node
    bool reading_ = false;
    bool importing_ = false;
    RunProgress progress_;                     // that the import has told last
    std::unique_ptr<RunControl> control_;      // of the last import
    QShortcut stopKey_{Qt::Key_Escape, this};  // closes the window while nothing is imported
    Runs runs_;
};

}  // namespace guanchao
