#include "services/day_bars_sina.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

#include "services/loose_json.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 mostDays = 6000;

// At least the trading days from that day to today.
qint64 countSince(const BarRange& range) {
    const qint64 weeks = range.first.daysTo(range.now.date()) / 7 + 1;
    return std::clamp<qint64>(weeks * 5, 5, mostDays);
}

DayBar readBar(const QJsonObject& row) {
    const auto number = [&](const QString& name) { return numberIn(numberWords(row[name])); };
    DayBar bar;
    bar.day = QDate::fromString(row[u"day"_s].toString(), Qt::ISODate);
    bar.open = number(u"open"_s);
    bar.high = number(u"high"_s);
    bar.low = number(u"low"_s);
    bar.close = number(u"close"_s);
    bar.volume = number(u"volume"_s);
    bar.closeText = numberWords(row[u"close"_s]);
    return bar;
}

}  // namespace

QStringList SinaDayBars::paths(const BarRange& range) const {
    return {
        u"/quotes_service/api/json_v2.php/CN_MarketData.getKLineData?symbol=%1&scale=240&ma=no"
        u"&datalen=%2"_s.arg(range.dm.toLower())
            .arg(countSince(range))};
}

ReadBars SinaDayBars::read(const QByteArray& body, const QString&) const {
    const QJsonDocument reply = readLooseJson(body);
    if (!reply.isArray()) {
        return {{}, noBars};
    }
    ReadBars read;
    for (const auto& row : reply.array()) {
        read.bars << readBar(row.toObject());
    }
    return read;
}

}  // namespace guanchao
