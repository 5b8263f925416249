#include "services/quote_tencent.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <optional>

#include "base/values.h"
#include "formats/gbk.h"
#include "services/quote_reply.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

namespace own {
constexpr qsizetype name = 1;
constexpr qsizetype latest = 3;
constexpr qsizetype formerClose = 4;
constexpr qsizetype open = 5;
constexpr qsizetype lots = 6;
constexpr qsizetype time = 30;
constexpr qsizetype high = 33;
constexpr qsizetype low = 34;
constexpr qsizetype tenThousands = 37;
}  // namespace own

constexpr double sharesPerLot = 100;
constexpr double yuanPerTenThousand = 10000;

// What is no number stays, and the line is refused by who reads it.
QString times(const QString& text, double unit) {
    const std::optional<double> figure = marketFigure(text);
    return figure ? numberText(*figure * unit) : text;
}

// The lines of a quote have the volume of this one index in lots.
bool hasLots(const QString& code) {
    return code == u"sh000001";
}

QString line(const QString& code, const QStringList& fields) {
    const QDateTime moment = QDateTime::fromString(fields[own::time], u"yyyyMMddHHmmss"_s);
    QStringList values(field::time + 1, u"0"_s);
    values[field::name] = QString(fields[own::name]).remove(u',');
    values[field::open] = fields[own::open];
    values[field::formerClose] = fields[own::formerClose];
    values[field::latest] = fields[own::latest];
    values[field::high] = fields[own::high];
    values[field::low] = fields[own::low];
    values[field::volume] = times(fields[own::lots], hasLots(code) ? 1 : sharesPerLot);
    values[field::amount] = times(fields[own::tenThousands], yuanPerTenThousand);
    values[field::day] = moment.toString(u"yyyy-MM-dd"_s);
    values[field::time] = moment.toString(u"HH:mm:ss"_s);
    return u"var hq_str_"_s + code + u"=\""_s + values.join(u',') + u"\";\n"_s;
}

QString unknownLines(const QString& codes, const QSet<QString>& told) {
    QString lines;
    for (const QString& code : codes.split(u',', Qt::SkipEmptyParts)) {
        if (!told.contains(code)) {
            lines += u"var hq_str_"_s + code + u"=\"\";\n"_s;
        }
    }
    return lines;
}

}  // namespace

bool TencentQuotes::knows(const QString& codes) const {
    static const QRegularExpression list(u"^((?:s[hz]|bj)\\d{6},?)+$"_s);
    return list.match(codes).hasMatch();
}

QString TencentQuotes::path(const QString& codes) const {
    return u"/q="_s + (codes.endsWith(u',') ? codes.chopped(1) : codes);
}

QString TencentQuotes::lines(const QByteArray& body, const QString& codes) const {
    static const QRegularExpression quote(u"v_((?:s[hz]|bj)\\d{6}|pv_none_match)=\"([^\"]*)\""_s);
    const QString text = textFromGbk(body);
    QString lines;
    QSet<QString> told;
    for (auto it = quote.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QStringList fields = match.captured(2).split(u'~');
        told << match.captured(1);
        if (fields.size() > own::tenThousands && fields[own::time].size() == 14) {
            lines += line(match.captured(1), fields);
        }
    }
    return told.isEmpty() ? QString() : lines + unknownLines(codes, told);
}

}  // namespace guanchao
