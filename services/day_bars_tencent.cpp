#include "services/day_bars_tencent.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

#include "base/values.h"
#include "services/loose_json.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostDays = 640;
constexpr int calendarDays = mostDays / 5 * 7;  // with no more trading days than those
constexpr qsizetype fewestMembers = 6;

bool isWhole(const QJsonArray& row) {
    return row.size() >= fewestMembers &&
           std::none_of(row.begin(), row.begin() + fewestMembers,
                        [](const QJsonValue& member) { return member.isObject(); });
}

DayBar readBar(const QJsonArray& row) {
    const auto number = [&](qsizetype at) { return numberIn(numberWords(row[at])); };
    DayBar bar;
    bar.day = QDate::fromString(row[0].toString(), Qt::ISODate);
    bar.open = number(1);
    bar.close = number(2);
    bar.high = number(3);
    bar.low = number(4);
    bar.volume = number(5) * sharesPerLot;
    bar.closeText = numberWords(row[2]);
    return bar;
}

// What the service says of itself, where it says something.
QString faultOf(const QJsonObject& reply) {
    const QString words = shortened(reply[u"msg"_s].toString(), longestShownName);
    return words.isEmpty() ? noBars : words;
}

}  // namespace

QStringList TencentDayBars::paths(const BarRange& range) const {
    QStringList paths;
    for (QDate first = range.first; first <= range.last; first = first.addDays(calendarDays)) {
        const QDate last = std::min(range.last, first.addDays(calendarDays - 1));
        paths << u"/appstock/app/fqkline/get?param=%1,day,%2,%3,%4,"_s.arg(
            range.dm.toLower(), dateText(first), dateText(last), QString::number(mostDays));
    }
    return paths;
}

ReadBars TencentDayBars::read(const QByteArray& body, const QString& dm) const {
    const QJsonObject reply = readLooseJson(body).object();
    const QJsonValue days = reply[u"data"_s][dm.toLower()][u"day"_s];
    if (reply[u"code"_s].toInt(-1) != 0 || !days.isArray()) {
        return {{}, faultOf(reply)};
    }
    ReadBars read;
    for (const auto& row : days.toArray()) {
        if (isWhole(row.toArray())) {
            read.bars << readBar(row.toArray());
        }
    }
    return read;
}

}  // namespace guanchao
