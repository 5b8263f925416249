#include "tools/practice_market/practice_search.h"

#include <QLocale>
#include <cmath>

#include "tools/practice_market/practice_walk.h"

namespace guanchao {

namespace {

constexpr int headlinesPerPage = 10;
constexpr double fewestResults = 2000;
constexpr double mostResults = 90e6;
constexpr double daysOfNews = 800;

const QString headlines[] = {
    QStringLiteral("%1 今日大涨，成交放大"), QStringLiteral("%1 暴涨，多地报价上升"),
    QStringLiteral("%1 小幅上涨"),           QStringLiteral("%1 稳中有升"),
    QStringLiteral("%1 行情持平，观望为主"), QStringLiteral("%1 最新消息汇总"),
    QStringLiteral("%1 小幅下跌"),           QStringLiteral("%1 稳中有降"),
    QStringLiteral("%1 今日大跌，买家观望"), QStringLiteral("%1 暴跌，库存增加"),
};

qint64 resultsOf(quint64 key, int days, quint64 today) {
    const double whole = fewestResults * std::pow(mostResults / fewestResults, evenNumber(key, 1));
    const double part = days > 0 ? std::min(1.0, days / daysOfNews) : 1.0;
    const double ofToday = 0.8 + 0.4 * evenNumber(key, today * 2 + (days > 0 ? 1 : 0));
    return static_cast<qint64>(whole * part * ofToday);
}

// Rising headlines come first in the list: the mood of the day chooses the part that is drawn from.
QString headline(quint64 key, quint64 today, quint64 place) {
    const double mood = 0.6 * evenNumber(key, today);
    const double drawn = mood + 0.4 * evenNumber(key ^ (today << 8), place);
    return headlines[static_cast<size_t>(drawn * std::size(headlines))];
}

}  // namespace

QString practiceSearchPage(const QString& words, int days, const QDate& today) {
    const auto day = static_cast<quint64>(today.toJulianDay());
    const QString shown = words.toHtmlEscaped();
    QString results;
    for (quint64 place = 0; place < headlinesPerPage; ++place) {
        results += QStringLiteral("<h3>%1</h3>\n")
                       .arg(headline(walkKey(words), day, place)
                                .arg(QStringLiteral("<em>%1</em>").arg(shown)));
    }
    const QString number = QLocale(QLocale::English).toString(resultsOf(walkKey(words), days, day));
    return QStringLiteral(
               "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>%1_练习搜索</title>"
               "</head>\n<body><p>为您找到相关结果约%2个</p>\n%3</body></html>\n")
        .arg(shown, number, results);
}

}  // namespace guanchao
