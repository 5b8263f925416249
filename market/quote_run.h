// The update of all stocks: every code of the code table, in batches, into the code table.
#pragma once

#include <QCoro/QCoroTask>
#include <QMap>
#include <QString>
#include <functional>
#include <stop_token>

#include "market/quote_feed.h"
#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

// How far a run is, in stocks.
struct QuoteProgress {
    int asked = 0;
    int updated = 0;
    int total = 0;

    // 已更新股票只数, for the time label; empty before the first batch.
    QString words() const;
    // For a run that is stopped.
    QString stoppedWords() const;
};

// What a run came to, in stocks.
class QuoteTally {
public:
    explicit QuoteTally(int total = 0) : total_(total) {}

    void add(const MissedQuotes& missed);

    bool nothingCame() const { return missed_ >= total_; }
    // Where there was something to ask for.
    bool failed() const { return missed_ > 0 && nothingCame(); }
    // Those that the service has not even said of that it doesn't know them.
    int unanswered() const { return missed_ - unknown_; }
    // Why most of those that are missing didn't come.
    QString reason() const;
    // 5400 / 5403 只
    QString counts() const;
    // 更新行情数据完成！ where there are none, or how many of how many came; and why the others
    // didn't.
    QString words() const;

private:
    QString heading() const;

    int total_;
    int missed_ = 0;
    int unknown_ = 0;
    QMap<QString, int> byReason_;
    QStringList refusals_;
};

class QuoteRun {
public:
    using Report = std::function<void(const QuoteProgress&)>;

    QuoteRun(const Stores& stores, const Clock& clock, QuoteFeed& feed)
        : stores_(stores), clock_(clock), feed_(feed) {}

    // The whole code table but for what is delisted, indexes included. Some requests are on their
    // way at a time; their replies are written in order, a batch a transaction, and stay if the run
    // is stopped. `report` is called at the beginning and after each batch. Raises StoreError.
    QCoro::Task<QuoteTally> run(Report report, std::stop_token stop);

    // 更新全部: the same without the three indexes. No control runs it at present.
    QCoro::Task<QuoteTally> gengxinquanbu(Report report, std::stop_token stop);

private:
    QCoro::Task<QuoteTally> update(QString condition, Report report, std::stop_token stop);
    QCoro::Task<QuoteTally> updateBatches(QList<CodeBatch> batches, Report report,
                                          std::stop_token stop);
    QList<CodeBatch> readBatches(const QString& condition) const;
    void storeTime();

    const Stores& stores_;
    const Clock& clock_;
    QuoteFeed& feed_;
};

}  // namespace guanchao
