#include "tools/practice_market/practice_bars.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>

#include "services/stock_code.h"
#include "tools/practice_market/practice_events.h"
#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostOfTencent = 640;

using Days = std::vector<PracticeDay>;

// A request, with the market that answers.
struct Question {
    const PracticeQuotes& quotes;
    QDateTime now;
    QUrl url;

    QString parameter(const QString& name) const {
        return QUrlQuery(url).queryItemValue(name, QUrl::FullyDecoded);
    }
    bool knows(const QString& code) const { return !quotes.name(code).isEmpty(); }
    QString price(const QString& code, double value) const {
        return QString::number(value, 'f', quotes.priceDecimals(code));
    }
};

QString lots(const PracticeDay& day) {
    return QString::number(day.shares / sharesPerLot);
}

// The lines, each between the brackets, with commas between all.
QString listOf(QStringList items, QChar open, QChar close) {
    return open + items.join(u',') + close;
}

// "600000.ss" names sh600000.
QString codeOfSymbol(const QString& symbol) {
    return (symbol.endsWith(u".ss"_s) ? u"sh"_s : u"sz"_s) + symbol.section(u'.', 0, 0);
}

// Months come counted from 0. No date for words that make none.
QDate dayIn(const Question& question, const QString& year, const QString& month,
            const QString& day) {
    return {question.parameter(year).toInt(), question.parameter(month).toInt() + 1,
            question.parameter(day).toInt()};
}

std::optional<QString> csvTable(const Question& question) {
    const QString code = codeOfSymbol(question.parameter(u"s"_s));
    if (!question.knows(code)) {
        return std::nullopt;
    }
    const Days days = question.quotes.days(code, dayIn(question, u"c"_s, u"a"_s, u"b"_s),
                                           dayIn(question, u"f"_s, u"d"_s, u"e"_s), question.now);
    QString lines = u"Date,Open,High,Low,Close,Volume,Adj Close\n"_s;
    for (auto day = days.rbegin(); day != days.rend(); ++day) {
        QStringList fields = {day->day.toString(Qt::ISODate)};
        for (const double price : {day->open, day->high, day->low, day->close}) {
            fields << question.price(code, price);
        }
        fields << QString::number(day->shares) << question.price(code, day->close);
        lines += fields.join(u',') + u'\n';
    }
    return lines;
}

QString sinaRow(const Question& question, const QString& code, const PracticeDay& day) {
    return u"{\"day\":\"%1\",\"open\":\"%2\",\"high\":\"%3\",\"low\":\"%4\",\"close\":\"%5\","
           u"\"volume\":\"%6\"}"_s.arg(
               day.day.toString(Qt::ISODate), question.price(code, day.open),
               question.price(code, day.high), question.price(code, day.low),
               question.price(code, day.close), QString::number(day.shares));
}

// The newest days, as many as are asked for.
QString sinaDays(const Question& question) {
    const QString code = question.parameter(u"symbol"_s);
    const auto count = question.parameter(u"datalen"_s).toLongLong();
    if (!question.knows(code)) {
        return u"null"_s;
    }
    const QDate today = question.now.date();
    const Days days =
        question.quotes.days(code, today.addDays(-2 * count - 7), today, question.now);
    const auto dropped = std::max<qint64>(0, std::ssize(days) - count);
    QStringList rows;
    std::for_each(days.begin() + dropped, days.end(),
                  [&](const PracticeDay& day) { rows << sinaRow(question, code, day); });
    return listOf(rows, u'[', u']');
}

// Without a dividend Shanghai's stocks have the one row of all, Shenzhen's have no page.
std::optional<QString> sinaFactors(const Question& question) {
    const QString code = question.url.path().section(u'/', -2, -2);
    if (!question.knows(code) || !(isOfShanghai(code))) {
        return std::nullopt;
    }
    QStringList rows = {u"{\"d\":\"1900-01-01\",\"f\":\"1.0000000000000000\"}"_s};
    if (code == dividendCode) {
        rows.prepend(u"{\"d\":\"%1\",\"f\":\"%2\"}"_s.arg(exDividendDay.toString(Qt::ISODate))
                         .arg(dividendRatio, 0, 'f', 10));
    }
    return u"var %1hfq={\"total\":%2,\"data\":%3}\n/* practice */\n"_s.arg(code)
        .arg(rows.size())
        .arg(listOf(rows, u'[', u']'));
}

// param=sh600519,day,2026-06-01,2026-07-20,640,
QString tencentDays(const Question& question) {
    const QStringList words = question.parameter(u"param"_s).split(u',');
    const QString code = words.value(0);
    if (!question.knows(code) || words.value(4).toLongLong() > mostOfTencent) {
        return u"{\"code\":1,\"msg\":\"param error\",\"data\":[]}"_s;
    }
    const Days days =
        question.quotes.days(code, QDate::fromString(words.value(2), Qt::ISODate),
                             QDate::fromString(words.value(3), Qt::ISODate), question.now);
    const auto dropped = std::max<qint64>(0, std::ssize(days) - words.value(4).toLongLong());
    QStringList rows;
    std::for_each(days.begin() + dropped, days.end(), [&](const PracticeDay& day) {
        QStringList members = {u'"' + day.day.toString(Qt::ISODate) + u'"'};
        for (const double price : {day.open, day.close, day.high, day.low}) {
            members << u'"' + question.price(code, price) + u'"';
        }
        members << u'"' + lots(day) + u".000\""_s;
        rows << listOf(members, u'[', u']');
    });
    return u"{\"code\":0,\"msg\":\"\",\"data\":{\"%1\":{\"day\":%2,\"qt\":{},\"version\":\"18\"}}}"_s
        .arg(code, listOf(rows, u'[', u']'));
}

QString eastmoneyLine(const Question& question, const QString& code, const PracticeDay& day) {
    QStringList fields = {day.day.toString(Qt::ISODate)};
    for (const double price : {day.open, day.close, day.high, day.low}) {
        fields << question.price(code, price);
    }
    fields << lots(day) << QString::number(day.amount, 'f', 2) << u"1.00,0.50,0.10,0.20"_s;
    return u'"' + fields.join(u',') + u'"';
}

// secid=1.600000&beg=20260601&end=20260720
QString eastmoneyDays(const Question& question) {
    const QStringList words = question.parameter(u"secid"_s).split(u'.');
    const QString code = (words[0] == u"1"_s ? u"sh"_s : u"sz"_s) + words.value(1);
    if (!question.knows(code)) {
        return u"{\"rc\":0,\"data\":null}"_s;
    }
    const auto day = [&](const QString& name) {
        return QDate::fromString(question.parameter(name), u"yyyyMMdd"_s);
    };
    QStringList lines;
    for (const PracticeDay& it :
         question.quotes.days(code, day(u"beg"_s), day(u"end"_s), question.now)) {
        lines << eastmoneyLine(question, code, it);
    }
    return u"{\"rc\":0,\"data\":{\"code\":\"%1\",\"market\":%2,\"klines\":%3}}"_s.arg(
        words.value(1), words[0], listOf(lines, u'[', u']'));
}

}  // namespace

std::optional<QString> practiceBars(const PracticeQuotes& quotes, const QString& target,
                                    const QDateTime& now) {
    const Question question = {quotes, now, QUrl(target)};
    const QString path = question.url.path();
    if (path.endsWith(u".csv"_s)) {
        return csvTable(question);
    }
    if (path.endsWith(u"getKLineData"_s)) {
        return sinaDays(question);
    }
    if (path.endsWith(u"hfq.js"_s)) {
        return sinaFactors(question);
    }
    return path.contains(u"fqkline"_s) ? tencentDays(question) : eastmoneyDays(question);
}

}  // namespace guanchao
