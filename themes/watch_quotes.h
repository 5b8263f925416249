// The quotes of one list of the watchlist, asked for again and again while the market is open: its
// own codes only, by the quote feed, into the code table dmb.
#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <QString>
#include <chrono>
#include <functional>
#include <stop_token>

#include "base/globals.h"
#include "market/quote_feed.h"
#include "market/quote_run.h"
#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

class WatchQuotes {
public:
    WatchQuotes(const Stores& stores, const Globals& globals, const Clock& clock, QuoteFeed& feed);

    // The codes of the list as the code table has them, without those that are delisted.
    QCoro::Task<QuoteTally> update(QString list, std::stop_token stop);

    // Each time as long after the last answer, outside of sessions not at all, and not while others
    // write quotes. `list` tells which is shown then; `came` hears what the quotes lack, nothing if
    // they lack none. A failure is told there too, and the next time is tried again.
    using List = std::function<QString()>;
    using Came = std::function<void(const QString& lack)>;
    QCoro::Task<> follow(std::chrono::milliseconds every, List list, Came came,
                         std::stop_token stop);

private:
    bool isDue() const;
    QCoro::Task<QString> lackOf(QString list, std::stop_token stop);
    QList<CodeBatch> readBatches(const QString& list) const;

    const Stores& stores_;
    const Globals& globals_;
    const Clock& clock_;
    QuoteFeed& feed_;
};

}  // namespace guanchao
