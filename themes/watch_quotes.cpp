#include "themes/watch_quotes.h"

#include "base/activity.h"
#include "base/pause.h"
#include "base/values.h"
#include "market/trading_session.h"
#include "services/delisted.h"
#include "store/failure.h"
#include "store/patience.h"
#include "store/recordset.h"
#include "themes/watch_tables.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

WatchQuotes::WatchQuotes(const Stores& stores, const Globals& globals, const Clock& clock,
                         QuoteFeed& feed)
    : stores_(stores), globals_(globals), clock_(clock), feed_(feed) {}

QList<CodeBatch> WatchQuotes::readBatches(const QString& list) const {
    const Activity activity(u"更新自选股行情"_s);
    Connection store = stores_.main.open();
    if (!list.isEmpty() && !hasWatchTables(store)) {
        return {};
    }
    Recordset codes(store, u"select dmb.dm from dmb where dmb.dm in (select dm from "_s +
                               tableOf(list) + ofList(list) + u") and dmb.dm not in "_s +
                               delistedCodes(store) + u" order by dmb.rowid"_s);
    return codeBatches(codes);
}

QCoro::Task<QuoteTally> WatchQuotes::update(QString list, std::stop_token stop) {
    const auto read = [=, this] { return readBatches(list); };
    const QList<CodeBatch> batches = co_await patiently(read, stop);
    int total = 0;
    for (const CodeBatch& batch : batches) {
        total += batch.count;
    }
    QuoteTally tally(total);
    const QuoteFeed::Note note = [&tally](const CodeBatch&, const MissedQuotes& missed) {
        tally.add(missed);
    };
    co_await feed_.gengxinhq(batches, 0, note, stop);
    co_return tally;
}

bool WatchQuotes::isDue() const {
    return inTradingSession(clock_.now()) && globals_.hqmang == 0;
}

QCoro::Task<QString> WatchQuotes::lackOf(QString list, std::stop_token stop) {
    QString lack;
    try {
        const QuoteTally tally = co_await update(list, stop);
        lack = tally.unanswered() == 0 ? QString() : tally.words().section(u'\n', 0, 0);
    } catch (const std::exception& failure) {
        lack = failureReason(failure);
    }
    co_return lack;
}

QCoro::Task<> WatchQuotes::follow(std::chrono::milliseconds every, List list, Came came,
                                  std::stop_token stop) {
    for (;;) {
        co_await pause(every, stop);
        if (isDue()) {
            const QString shown = list();
            const QString lack = co_await lackOf(shown, stop);
            came(lack);
        }
    }
}

}  // namespace guanchao
