// The edits of earnings forecasts in Form12: summary, attention and removal of the row of yejiyugao
// (main store) whose rowid is dangqianjilu, and the export of a grid's codes into a text file.
// Failed statements raise StoreError.
#pragma once

#include <QString>
#include <functional>

#include "base/date_trio.h"
#include "base/globals.h"
#include "grid/result_grid.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class EarningsForecast {
public:
    // Runs the search of the window anew, behind what has been written.
    using Search = std::function<QCoro::Task<>(QString written, std::stop_token stop)>;

    EarningsForecast(const Stores& stores, const Globals& globals, Dialogs& dialogs, Search search);

    // 修改摘要 (Command6), with the text as it stands.
    QCoro::Task<> changeSummary(QString text, std::stop_token stop);
    // 修改关注度: asks for the figure; an empty answer ends it.
    QCoro::Task<> changeAttention(std::stop_token stop);
    // 删除一个, after a question.
    QCoro::Task<> remove(std::stop_token stop);

    // 导出自选股: code and short name of each row that the grid has now, into a file that the user
    // names. A file that can't be written raises OperationError.
    QCoro::Task<> exportCodes(const ResultGrid& grid, DateTexts date, std::stop_token stop);

private:
    // Taken before a question: while it stands another record may be chosen.
    QString ofRecord() const;
    QCoro::Task<> edit(QString name, QString statement, std::stop_token stop);

    const Stores& stores_;
    const Globals& globals_;
    Dialogs& dialogs_;
    Search search_;
};

}  // namespace guanchao
