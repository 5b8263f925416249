#include "market/quote_feed.h"

#include <QScopedValueRollback>
#include <QStringList>
#include <deque>

#include "base/values.h"
#include "market/stored_quote.h"
#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Nothing, with the reason noted, for a row that can't be read.
std::optional<StoredQuote> quoteOrRefusal(const QuoteRow& row, QStringList& refusals) {
    try {
        return storedQuote(row);
    } catch (const OperationError& refusal) {
        refusals << refusal.reason();
        return std::nullopt;
    }
}

// What the user reads of a batch that can't be written.
Activity updating(qint16 tojiankong) {
    if (tojiankong < 1) {
        return Activity(u"更新行情数据"_s, u"读到的行情已经写入并保留，出错的没有写入。"_s);
    }
    return Activity(u"监控行情"_s, u"已经写入并保留：失败之前各步的结果。其余没有写入。"_s);
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
                               u"处也读不出）"_s) {}

QuoteFeed::QuoteFeed(const Stores& stores, Globals& globals, const Clock& clock, QuoteSource source)
    : stores_(stores), globals_(globals), clock_(clock), source_(std::move(source)) {}

QCoro::Task<QuotesReply> QuoteFeed::ask(CodeBatch batch, std::stop_token stop) {
    return source_.fetch(withCompanion(batch.list), stop);
}

QCoro::Task<MissedQuotes> QuoteFeed::write(CodeBatch batch, QuotesReply reply, qint16 tojiankong,
                                           std::stop_token stop) {
    const auto step = [=, this] { return writeReply(batch, reply, tojiankong); };
    const MissedQuotes missed = co_await patiently(step, stop);
    co_return missed;
}

// A service that refuses is asked for one batch at a time from then on.
QCoro::Task<> QuoteFeed::gengxinhq(QList<CodeBatch> batches, qint16 tojiankong, Note note,
                                   std::stop_token stop) {
    qsizetype ahead = source_.ahead();
    qsizetype asked = 0;
    std::deque<QCoro::Task<QuotesReply>> onTheirWay;
    for (const CodeBatch& batch : batches) {
        while (asked < batches.size() && std::ssize(onTheirWay) < ahead) {
            onTheirWay.push_back(ask(batches[asked++], stop));
        }
        const QuotesReply reply = co_await std::move(onTheirWay.front());
        onTheirWay.pop_front();
        if (reply.turnedAway) {
            ahead = 1;
        }
        const MissedQuotes missed = co_await write(batch, reply, tojiankong, stop);
        note(batch, missed);
    }
}

MissedQuotes QuoteFeed::writeReply(const CodeBatch& batch, const QuotesReply& reply,
                                   qint16 tojiankong) {
    const Activity activity = updating(tojiankong);
    if (!reply.lack.isEmpty()) {
        return {batch.count, reply.lack, {}, 0};
    }
    return writeRows(batch, quoteRows(reply.lines), tojiankong);
}

void QuoteFeed::notePrices(const QList<QuoteRow>& rows) {
    if (polledDay_) {
        for (const QuoteRow& row : rows) {
            polledDay_->note(row);
        }
    }
}

MissedQuotes QuoteFeed::writeRows(const CodeBatch& batch, const QList<QuoteRow>& rows,
                                  qint16 tojiankong) {
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    const auto update = tojiankong < 1 ? updateCodeTable : updatePollList;
    Connection connection = stores_.main.open();
    Transaction transaction(connection);
    const QString now = timeText(clock_.now());
    QStringList missing = batch.list.toUpper().split(u',', Qt::SkipEmptyParts);
    QStringList refusals;
    int unknown = 0;
    for (const QuoteRow& row : rows) {
        if (isUnknownCode(row) && missing.contains(row.dm())) {
            ++unknown;
        }
        if (!hasQuote(row)) {
            continue;
        }
        if (const std::optional<StoredQuote> quote = quoteOrRefusal(row, refusals)) {
            connection.execute(update(*quote, now));
            missing.removeAll(row.dm());
        }
    }
    transaction.commit();
    notePrices(rows);
    return {static_cast<int>(missing.size()), {}, refusals, unknown};
}

}  // namespace guanchao
