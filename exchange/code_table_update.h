// 更新代码表: asks a public service for the list of all stocks, page by page at its pace, and
// brings the code table up to date in one transaction at the end: a stop, a failure or a kill
// changes nothing. One object is one run.
#pragma once

#include <functional>

#include "base/run_control.h"
#include "base/run_note.h"
#include "base/run_progress.h"
#include "exchange/code_table_changes.h"
#include "platform/clock.h"
#include "services/stock_list.h"

namespace guanchao {

struct CodeTableResult {
    bool stopped = false;
    bool hasList = false;
    bool isWhole = false;
    int listed = 0;
    QString source;     // the service that has told the list
    QStringList lacks;  // why others have not
    QString reason;     // the last of these, without whose it is
    CodeTableChanges changes;

    // What came of it, in Chinese.
    QString words() const;
};

class CodeTableUpdate {
public:
    // Counts stocks.
    using Progress = std::function<void(const RunProgress&)>;

    // `initialsPath` is the list of exceptions that the initials have.
    CodeTableUpdate(const Stores& stores, const Clock& clock, HttpClient& http,
                    QList<Service> services, QString initialsPath, RunControl& control,
                    Progress progress);

    // To its end, or until the control stops it. Raises StoreError.
    QCoro::Task<CodeTableResult> run(bool withBeijing, std::stop_token stop);

private:
    QCoro::Task<> carryOut(bool withBeijing, std::stop_token stop);
    QCoro::Task<> store(std::stop_token stop);
    void noteEnd(RunNote& note) const;
    void showPages(qsizetype stocks, std::optional<qsizetype> total);

    Stores stores_;
    QString now_;
    QString initialsPath_;
    RunControl& control_;
    Progress progress_;
    StockList list_;

    CodeTableResult result_;
    WorkTime working_;
};

}  // namespace guanchao
