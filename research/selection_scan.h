// 题材选股: the three scans of Form12 over the day history. They fill xuanticai and xuanticaigu of
// the main store from both history databases in columns, which they take from the shelf. Where rows
// stand there already the user is asked what becomes of them: 添加 stores every row again behind
// them. 替换 puts those of each theme-day in the place of its former ones, in the transaction of
// that day, and takes what is left of the former ones away behind the last day: a stop or a failure
// leaves the new rows up to that day and the former ones of the days behind it. A row for which a
// number is missing in a history is passed over; the last words of the run count what it did and
// passed over, and name the first few. A failed statement raises StoreError and ends the scan; the
// days committed before stay.
#pragma once

#include "platform/dialogs.h"
#include "research/history_shelf.h"
#include "research/research_run.h"
#include "store/stores.h"

namespace guanchao {

class SelectionScan {
public:
    SelectionScan(const Stores& stores, const Globals& globals, Dialogs& dialogs, ResearchRun& run,
                  std::shared_ptr<HistoryShelf> shelf);

    // Each of the three raises OperationError if the run is in use. It ends without a message when
    // the user stops it, and doesn't begin while an import writes.

    // 选历年主题 (Command1): the themes with unusually many stocks at their limit, day by day of
    // the index, and a row for each of their stocks.
    QCoro::Task<> chooseThemes(std::stop_token stop);

    // 根据选中的主题补充股票 (Command3): the stock rows of the chosen themes once more, by today's
    // members.
    QCoro::Task<> addStocks(std::stop_token stop);

    // 选后2天跌7%的 (Command4): the same, of the stocks that fell by 7 % within the next two days,
    // as they stand on the second of these. Tells 完成! at its end.
    QCoro::Task<> addFallenStocks(std::stop_token stop);

private:
    using MakeJob = std::function<ResearchRun::Job(bool replaces)>;

    QCoro::Task<bool> scan(QString name, bool holds, MakeJob make, std::stop_token stop);

    const Stores& stores_;
    const Globals& globals_;
    Dialogs& dialogs_;
    ResearchRun& run_;
    std::shared_ptr<HistoryShelf> shelf_;
};

}  // namespace guanchao
