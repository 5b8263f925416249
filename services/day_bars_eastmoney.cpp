#include "services/day_bars_eastmoney.h"

#include <QJsonArray>
#include <QJsonObject>

#include "services/loose_json.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dayForm = u"yyyyMMdd"_s;

QString marketOf(const QString& dm) {
    return isOfShanghai(dm) ? u"1"_s : u"0"_s;
}

bool isOf(const QJsonObject& data, const QString& dm) {
    return data[u"code"_s].toString() == dm.right(codeDigits) &&
           numberWords(data[u"market"_s]) == marketOf(dm);
}

DayBar readBar(const QString& line) {
    const QStringList fields = line.split(u',');
    const auto number = [&](qsizetype at) { return numberIn(fields.value(at)); };
    DayBar bar;
    bar.day = QDate::fromString(fields[0], Qt::ISODate);
    bar.open = number(1);
    bar.close = number(2);
    bar.high = number(3);
    bar.low = number(4);
    bar.volume = number(5) * sharesPerLot;
    bar.turnover = number(6);
    bar.closeText = fields.value(2).trimmed();
    return bar;
}

}  // namespace

QStringList EastmoneyDayBars::paths(const BarRange& range) const {
    return {
        u"/api/qt/stock/kline/get?secid=%1.%2&klt=101&fqt=0&beg=%3&end=%4&lmt=5000"
        u"&fields1=f1,f2,f3,f4,f5,f6&fields2=f51,f52,f53,f54,f55,f56,f57,f58,f59,f60,f61"_s.arg(
            marketOf(range.dm), range.dm.right(codeDigits), range.first.toString(dayForm),
            range.last.toString(dayForm))};
}

ReadBars EastmoneyDayBars::read(const QByteArray& body, const QString& dm) const {
    const QJsonObject reply = readLooseJson(body).object();
    if (reply.contains(u"data"_s) && reply[u"data"_s].isNull()) {
        return {};
    }
    const QJsonObject data = reply[u"data"_s].toObject();
    if (!isOf(data, dm) || !data[u"klines"_s].isArray()) {
        return {{}, noBars};
    }
    ReadBars read;
    for (const auto& line : data[u"klines"_s].toArray()) {
        read.bars << readBar(line.toString());
    }
    return read;
}

}  // namespace guanchao
