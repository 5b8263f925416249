#include "research/history_candles.h"

#include <QFileInfo>

#include "base/values.h"
#include "base/worker.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString daysStatement = QStringLiteral(
    "select date(shijian) as shijian,ifnull(kp,sp)/100.0 as kp,ifnull(zg,sp)/100.0 as zg,zd/100.0"
    " as zd,sp/100.0 as sp,ifnull(chengjiaol,0) as chengjiaol,ifnull(chengjiaoe,0) as chengjiaoe,"
    "fuquanyz from %1 where zd>0 and sp>0 and fuquanyz>0 and date(shijian) is not null"
    " order by date(shijian),rowid");

Candle candleOf(const Recordset& row) {
    const double turnover = row.value(u"chengjiaoe").toNumber();
    return {QDate::fromString(row.value(u"shijian").toText(), Qt::ISODate),
            row.value(u"kp").toNumber(),
            row.value(u"zg").toNumber(),
            row.value(u"zd").toNumber(),
            row.value(u"sp").toNumber(),
            row.value(u"chengjiaol").toNumber(),
            turnover > 0 ? std::optional(turnover) : std::nullopt,
            row.value(u"fuquanyz").toNumber()};
}

// A day without prices is none of a chart; of a day that is stored twice the later row stands.
QList<Candle> readCandles(const StoreFile& history, const QString& dm) {
    QList<Candle> days;
    if (!QFileInfo::exists(history.path) || !isWholeCode(dm)) {
        return days;
    }
    Connection connection = history.open();
    if (!hasTable(connection, dm)) {
        return days;
    }
    Recordset rows(connection, daysStatement.arg(quotedName(dm)));
    for (; !rows.atEnd(); rows.moveNext()) {
        const Candle day = candleOf(rows);
        if (!days.isEmpty() && days.last().day == day.day) {
            days.removeLast();
        }
        days << day;
    }
    return days;
}

}  // namespace

QCoro::Task<QList<Candle>> HistoryCandles::of(QString dm, std::stop_token stop) const {
    const StoreFile history = stores_.secondHistory;
    const auto read = [history, dm](const Work<std::monostate>&) {
        return readCandles(history, dm);
    };
    const QList<Candle> days = co_await inWorker(read, stop);
    co_return QList<Candle>(days);
}

}  // namespace guanchao
