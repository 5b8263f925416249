#include "tools/practice_market/practice_headlines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

#include "tools/practice_market/practice_walk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double fewestADay = 0.5;
constexpr double mostADay = 200;
constexpr int daysOfNews = 400;
constexpr qint64 mostCounted = 10000;
constexpr qint64 secondsADay = 86400;
const QString articles = u"cmsArticleWebOld"_s;

const QString titles[] = {u"%1 今日大涨，成交放大"_s, u"%1 小幅上涨"_s, u"%1 最新消息汇总"_s,
                          u"%1 行情持平，观望为主"_s, u"%1 小幅下跌"_s};
const QString media[] = {u"练习财经"_s, u"练习时报"_s, u"练习证券网"_s};

// The headlines of a day: at even steps of it, shifted by what the key chooses.
class DayOfNews {
public:
    DayOfNews(const QString& keyword, const QDate& day)
        : keyword_(keyword), day_(day), start_(day.startOfDay()), key_(walkKey(keyword)) {
        const double rate = fewestADay * std::pow(mostADay / fewestADay, evenNumber(key_, 1));
        const auto index = static_cast<quint64>(day.toJulianDay());
        number_ = static_cast<int>(rate * (0.5 + evenNumber(key_, index)));
    }

    // How many there are up to a moment.
    int until(const QDateTime& moment) const {
        int number = number_;
        while (number > 0 && timeOf(number - 1) > moment) {
            --number;
        }
        return number;
    }

    QJsonObject hit(int at) const {
        const auto place = static_cast<quint64>(day_.toJulianDay() * secondsADay + at);
        const QString code = day_.toString(u"yyyyMMdd"_s) + QString::number(at);
        return {{u"date"_s, timeOf(at).toString(u"yyyy-MM-dd HH:mm:ss"_s)},
                {u"image"_s, QString()},
                {u"code"_s, code},
                {u"title"_s, chosen(titles, place).arg(keyword_)},
                {u"content"_s, QString()},
                {u"mediaName"_s, chosen(media, place + 1)},
                {u"url"_s, u"http://127.0.0.1/news/%1.html"_s.arg(code)}};
    }

private:
    QDateTime timeOf(int at) const {
        const qint64 step = secondsADay / number_;
        const auto shift =
            static_cast<qint64>(evenNumber(key_, static_cast<quint64>(at) + 2) * double(step));
        return start_.addSecs(at * step + shift);
    }

    template <size_t count>
    const QString& chosen(const QString (&from)[count], quint64 place) const {
        return from[static_cast<size_t>(evenNumber(key_, place) * count)];
    }

    QString keyword_;
    QDate day_;
    QDateTime start_;
    quint64 key_;
    int number_ = 0;
};

}  // namespace

QByteArray practiceHeadlines(const QString& call, const QByteArray& param, const QDateTime& now) {
    const QJsonObject question = QJsonDocument::fromJson(param).object();
    const QString keyword = question[u"keyword"_s].toString();
    const QJsonValue wanted = question[u"param"_s][articles];
    const qint64 size = std::clamp<qint64>(wanted[u"pageSize"_s].toInteger(10), 1, 100);
    const qint64 first = std::max<qint64>(wanted[u"pageIndex"_s].toInteger(1) - 1, 0) * size;
    qint64 total = 0;
    QJsonArray hits;
    for (int back = 0; back < daysOfNews; ++back) {
        const DayOfNews day(keyword, now.date().addDays(-back));
        const int number = day.until(now);
        for (qint64 at = std::max<qint64>(first - total, 0); at < number && hits.size() < size;
             ++at) {
            hits.append(day.hit(number - 1 - static_cast<int>(at)));
        }
        total += number;
    }
    const QJsonObject reply = {{u"bizCode"_s, QString()},
                               {u"bizMsg"_s, QString()},
                               {u"code"_s, 0},
                               {u"extra"_s, QJsonObject()},
                               {u"hitsTotal"_s, std::min(total, mostCounted)},
                               {u"msg"_s, u"OK"_s},
                               {u"result"_s, QJsonObject{{articles, hits}}}};
    return call.toUtf8() + '(' + QJsonDocument(reply).toJson(QJsonDocument::Compact) + ')';
}

}  // namespace guanchao
