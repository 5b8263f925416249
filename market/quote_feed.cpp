#include "market/quote_feed.h"

#include <QScopedValueRollback>
#include <QStringList>

#include "base/values.h"
#include "formats/gbk.h"
#include "market/stored_quote.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Nothing for a row without a quote and, with the reason noted, for one that can't be read.
std::optional<StoredQuote> quoteOrRefusal(const QuoteRow& row, QStringList& refusals) {
    try {
        return hasQuote(row) ? std::optional(storedQuote(row)) : std::nullopt;
    } catch (const OperationError& refusal) {
        refusals << refusal.reason();
        return std::nullopt;
    }
}

}  // namespace

QList<CodeBatch> codeBatches(Recordset& codes) {
    QList<CodeBatch> batches;
    for (; !codes.atEnd(); codes.moveNext()) {
        if (batches.isEmpty() || batches.last().count == codesPerRequest) {
            batches << CodeBatch();
        }
        batches.last().list += codes.value(u"dm").toText().toLower() + u',';
        ++batches.last().count;
    }
    return batches;
}

// The first reason is shown: the others are mostly the same.
RefusedLines::RefusedLines(const QStringList& reasons)
    : OperationError(reasons.size() == 1
                         ? reasons.first()
                         : reasons.first() + u"（还有"_s + QString::number(reasons.size() - 1) +
                               u"只股票的行情也读不出）"_s) {}

QuoteFeed::QuoteFeed(const Stores& stores, Globals& globals, const Clock& clock, Http& http,
                     const Service& service, EventPump& pump)
    : stores_(stores),
      globals_(globals),
      clock_(clock),
      http_(http),
      service_(service),
      pump_(pump) {}

void QuoteFeed::gengxinhq(const QString& list, qint16 tojiankong) {
    Connection connection = stores_.main.open();
    const std::optional<QByteArray> body = http_.get(service_, u"/list="_s + list);
    if (!body) {
        return;
    }
    const QList<QuoteRow> rows = quoteRows(textFromGbk(*body));
    // The reply for a single code has two rows only and is not written: a batch of one code never
    // brings a quote.
    if (rows.size() < 3) {
        return;
    }
    writeRows(connection, rows, tojiankong);
    if (tojiankong < 1) {
        pump_.runPendingEvents();
    } else {
        // A click may not change the monitors in the middle of their poll, and no box hold it up.
        pump_.runPendingEventsButInput();
    }
}

void QuoteFeed::writeRows(Connection& connection, const QList<QuoteRow>& rows, qint16 tojiankong) {
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    const auto update = tojiankong < 1 ? updateCodeTable : updatePollList;
    Transaction transaction(connection);
    const QString now = timeText(clock_.now());
    QStringList refusals;
    for (const QuoteRow& row : rows) {
        if (const std::optional<StoredQuote> quote = quoteOrRefusal(row, refusals)) {
            connection.execute(update(*quote, now));
        }
    }
    transaction.commit();
    if (!refusals.isEmpty()) {
        throw RefusedLines(refusals);
    }
}

}  // namespace guanchao
