// The quote feed: one request for up to 99 codes, written into the code table or the poll list.
// Prices in yuan, gains in percent, volume and turnover as the service gives them.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <stop_token>

#include "base/activity.h"
#include "base/globals.h"
#include "market/polled_day.h"
#include "platform/clock.h"
#include "platform/http_client.h"
#include "services/quote_reply.h"
#include "services/quote_source.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

// Codes for one request, in lower case and each followed by a comma.
struct CodeBatch {
    QString list;
    int count = 0;
};

// The codes in the field dm of the recordset; the last batch may be a smaller one.
QList<CodeBatch> codeBatches(Recordset& codes);

// The codes of a request for which no quote was written, and why.
struct MissedQuotes {
    int count = 0;
    QString reason;        // why the service gave no quotes at all; empty if it did
    QStringList refusals;  // why lines of the reply can't be read
    int unknown = 0;       // how many of them the service doesn't know
};

// Lines or monitors that could not be read, once all others are written.
class RefusedLines : public OperationError {
public:
    explicit RefusedLines(const QStringList& reasons);
};

class QuoteFeed {
public:
    QuoteFeed(const Stores& stores, Globals& globals, const Clock& clock, QuoteSource source);

    // From now on the prices of each reply are noted there too.
    void alsoNote(PolledDay& day) { polledDay_ = &day; }

    // 更新行情: asks for the batches, some at a time, so that silent ones cost no time each, and
    // writes the quotes of each reply in one transaction and in order: into dmb if tojiankong is
    // below 1, else into jiankonghq, with patience for a store that another holds. `note` hears of
    // each batch. Raises StoreError, which leaves nothing of its batch.
    using Note = std::function<void(const CodeBatch& batch, const MissedQuotes& missed)>;
    QCoro::Task<> gengxinhq(QList<CodeBatch> batches, qint16 tojiankong, Note note,
                            std::stop_token stop);

private:
    QCoro::Task<QuotesReply> ask(CodeBatch batch, std::stop_token stop);
    QCoro::Task<MissedQuotes> write(CodeBatch batch, QuotesReply reply, qint16 tojiankong,
                                    std::stop_token stop);
    MissedQuotes writeReply(const CodeBatch& batch, const QuotesReply& reply, qint16 tojiankong);
    void notePrices(const QList<QuoteRow>& rows);
    MissedQuotes writeRows(const CodeBatch& batch, const QList<QuoteRow>& rows, qint16 tojiankong);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    QuoteSource source_;
    PolledDay* polledDay_ = nullptr;
};

}  // namespace guanchao
