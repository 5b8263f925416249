// Form30, "自选股": the watchlist and the further lists beside it, with their quotes. Table
// zixuangu joined with the code table dmb, and the tables of watch_tables; the rules are in
// Watchlist, WatchLists, watch_order, watch_files and WatchQuotes. A press on a row hands its stock
// over in dangqiandm and dangqianjc.
#pragma once

#include <QDialog>
#include <QMenu>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

#include "base/runs.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "grid/row_drag.h"
#include "market/quote_feed.h"
#include "themes/watch_files.h"
#include "themes/watch_lists.h"
#include "themes/watch_quotes.h"
#include "themes/watchlist.h"

namespace Ui {
class Form30;
}

namespace guanchao {

class Form30 : public QDialog {
    Q_OBJECT

public:
    Form30(Environment& environment, Windows& windows);
    ~Form30() override;

    // Shows the list as the store has it now; once a note that is being written is done.
    void refresh();

    // How long a second of the interval of updates lasts; tests shorten it.
    void setSecond(std::chrono::milliseconds second);

protected:
    bool event(QEvent* event) override;

private:
    void setUpGrid();
    void buildRowMenu();
    void connectRows();
    void addKey(QAction* entry, const QKeySequence& key);
    void command(const QAction* entry, void (Form30::*run)());
    void MSHFlexGrid1_RowChosen(int row);
    void kuaimenu_Opens();
    void openQuotes();
    void addMonitor(qint16 mode);
    void 添加个股监控_Click() { addMonitor(0); }
    void 修改个股监控_Click() { addMonitor(1); }
    void 添加自选股_Click();
    void 从自选股删除_Click();
    void 操作个股文章_Click();
    void 编辑备注_Click();
    void 上移_Click();
    void 下移_Click();
    void writeNote(int row, const QString& note);
    void move(const QStringList& dms, const QString& before);
    QString codeIn(int row) const;
    QStringList codesIn(const QList<int>& rows) const;
    QList<int> allRows() const;
    QCoro::Task<> showStored(std::stop_token stop);
    void say(const QString& words);

    // In form30_lists.cpp.
    void setUpLists();
    void showTabs();
    void tabChosen(int index);
    void showList(const QString& list);
    void fillTargets();
    void addTarget(const QString& words, const std::optional<QString>& into, WatchLists::Way way);
    void transfer(const std::optional<QString>& into, WatchLists::Way way);
    QCoro::Task<> transferToNew(QStringList dms, QString from, WatchLists::Way way,
                                std::stop_token stop);
    QCoro::Task<> take(QStringList dms, QString from, QString into, WatchLists::Way way,
                       std::stop_token stop);
    void 新建列表_Click();
    void 重命名列表_Click();
    void 删除列表_Click();
    void 粘贴_Click();
    void 导入列表_Click();
    QCoro::Task<> bring(std::function<WatchImport(const Stores&)> import, QString list,
                        std::stop_token stop);
    void 导出列表_Click();
    QByteArray table() const;
    void showOrder();
    void ownOrder_Click();

    // In form30_quotes.cpp.
    void setUpQuotes();
    void follow();
    void showCame(const QString& lack);
    void showAge();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form30> ui_;
    ResultGrid grid_;
    Watchlist watchlist_;
    WatchLists lists_;
    QuoteFeed feed_;
    WatchQuotes quotes_;
    QString list_;       // the one that is shown; empty: the watchlist itself
    QStringList names_;  // of the further ones
    QMenu kuaimenu_;     // 快捷菜单: on a stock
    QMenu targets_;      // lists to which stocks go
    QMenu listMenu_;
    RowDrag* drag_ = nullptr;
    std::unique_ptr<UndoLine> undoLine_;
    QTimer ages_;
    std::chrono::milliseconds second_{1000};
    bool lacks_ = false;  // what is said is what quotes lack
    Runs runs_;
    Runs refreshRuns_;
    Runs quoteRuns_;
};

}  // namespace guanchao
