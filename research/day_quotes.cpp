#include "research/day_quotes.h"

#include "base/activity.h"
#include "services/quote_reply.h"
#include "services/trading_day.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QDateTime momentOf(const QuoteRow& row) {
    return QDateTime(QDate::fromString(row.text(field::day), Qt::ISODate),
                     QTime::fromString(row.text(field::time).left(8), u"hh:mm:ss"_s));
}

DayQuote dayQuote(const QuoteRow& row) {
    return {row.dm(),
            momentOf(row),
            row.number(field::open),
            row.number(field::high),
            row.number(field::low),
            row.number(field::latest),
            row.number(field::formerClose),
            row.number(field::volume),
            row.number(field::amount)};
}

// One that breaks off or holds no numbers is left to the history.
void addQuotes(const QString& lines, const QStringList& codes, QList<DayQuote>& quotes) {
    for (const QuoteRow& row : quoteRows(lines)) {
        if (!codes.contains(row.dm()) || row.lastIndex() < field::time) {
            continue;
        }
        try {
            quotes << dayQuote(row);
        } catch (const OperationError&) {
            continue;
        }
    }
}

}  // namespace

bool DayQuote::isOfClose() const {
    const bool isTraded = volume > 0 && open > 0 && low > 0;
    const bool fits = close >= low && close <= high && open >= low && open <= high;
    return moment.isValid() && moment.time() >= marketClose && isTraded && fits;
}

QCoro::Task<QList<DayQuote>> DayQuotes::fetch(QStringList codes, Note note, std::stop_token stop) {
    QList<DayQuote> quotes;
    for (qsizetype at = 0; at < codes.size(); at += codesPerRequest) {
        const QStringList batch = codes.mid(at, codesPerRequest);
        const QString list = withCompanion(batch.join(u',').toLower() + u',');
        const QuotesReply reply = co_await source_.fetch(list, stop);
        if (!reply.lack.isEmpty()) {
            break;
        }
        addQuotes(reply.lines, batch, quotes);
        note(static_cast<int>(at + batch.size()));
    }
    co_return quotes;
}

}  // namespace guanchao
