#include "tools/practice_market/practice_tencent.h"

#include "services/quote_reply.h"
#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

namespace {

constexpr qsizetype fieldsOfALine = 50;

// The first index counts in lots in the usual lines too.
double lotsOf(const QString& code, const QuoteRow& row) {
    const double volume = row.number(field::volume);
    return code == QStringLiteral("sh000001") ? volume : volume / 100;
}

QString line(const QString& code, const QuoteRow& row) {
    QStringList values(fieldsOfALine, QString());
    values[0] = QStringLiteral("1");
    values[1] = row.text(field::name);
    values[2] = code.mid(2);
    values[3] = row.text(field::latest);
    values[4] = row.text(field::formerClose);
    values[5] = row.text(field::open);
    values[6] = QString::number(lotsOf(code, row), 'f', 0);
    values[30] = QString(row.text(field::day) + row.text(field::time)).remove(u'-').remove(u':');
    values[33] = row.text(field::high);
    values[34] = row.text(field::low);
    values[37] = QString::number(row.number(field::amount) / 10000, 'f', 2);
    return QStringLiteral("v_%1=\"%2\";\n").arg(code, values.join(u'~'));
}

}  // namespace

QString practiceTencentReply(const PracticeQuotes& quotes, const QStringList& lowerCaseCodes,
                             const QDateTime& now) {
    QString lines;
    for (const QString& code : lowerCaseCodes) {
        const QuoteRow row = quoteRow(quotes.line(code, now));
        if (row.lastIndex() >= field::time) {
            lines += line(code, row);
        }
    }
    return lines.isEmpty() ? QStringLiteral("v_pv_none_match=\"1\";\n") : lines;
}

}  // namespace guanchao
