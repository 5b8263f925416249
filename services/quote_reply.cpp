#include "services/quote_reply.h"

#include <cmath>

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestShown = 20;  // of what a refusal shows

// Beyond them no figure of a market lies, and products and ratios of two no longer make sense.
constexpr double largestFigure = 1e18;
constexpr double smallestFigure = 1e-9;

QString codeOf(QStringView variable) {
    QString text = variable.toString();
    text.remove(u'"');
    const qsizetype equals = text.indexOf(u'=');
    return equals < codeLength ? QString() : text.sliced(equals - codeLength, codeLength).toUpper();
}

}  // namespace

bool isMarketFigure(double value) {
    const double size = std::abs(value);
    return size == 0 || (size >= smallestFigure && size <= largestFigure);
}

std::optional<double> marketFigure(QStringView text) {
    const double value = numericPrefix(text);
    return readsAsNumber(text) && isMarketFigure(value) ? std::optional(value) : std::nullopt;
}

QDate dayFrom(const QString& text) {
    const QString day = text.trimmed().section(u' ', 0, 0).section(u'T', 0, 0);
    return QDate::fromString(day, u"yyyy-M-d"_s);
}

QString dayAsTimeText(const QString& text) {
    const QDate day = dayFrom(text);
    return day.isValid() ? timeText(day) : text;
}

QuoteRow::QuoteRow(const QString& reply, QStringView values) : reply_(reply) {
    fields_.reserve(values.count(u',') + 1);
    for (const QStringView text : values.tokenize(u',')) {
        fields_ << text;
    }
    beginning_ = fields_.first();
}

QStringView QuoteRow::field(qsizetype position) const {
    if (position > lastIndex()) {
        throw OperationError(u"行情数据不完整，缺少第"_s + QString::number(position + 1) +
                             u"个字段。"_s);
    }
    return fields_[position];
}

QString QuoteRow::text(qsizetype position) const {
    return shortened(field(position).toString(), longestShownName);
}

std::optional<double> QuoteRow::figure(qsizetype position) const {
    return marketFigure(field(position));
}

double QuoteRow::number(qsizetype position) const {
    const std::optional<double> value = figure(position);
    if (!value) {
        const QString whose = dm_.isEmpty() ? QString() : dm_ + u' ';
        throw OperationError(u"行情数据的第"_s + QString::number(position + 1) +
                             u"个字段不是数字："_s + whose +
                             field(position).trimmed().left(longestShown));
    }
    return *value;
}

QString QuoteRow::numberAsSent(qsizetype position) const {
    number(position);
    return field(position).trimmed().toString();
}

// A line of its own is known by its variable, which stands before the name.
QuoteRow QuoteRow::ofLine(const QString& reply, QStringView line) {
    QuoteRow row(reply, line);
    row.dm_ = codeOf(row.beginning_);
    row.fields_.first() = row.beginning_.sliced(row.beginning_.indexOf(u'"') + 1);
    if (row.fields_.last().endsWith(u'"')) {
        row.fields_.last().chop(1);
    }
    return row;
}

QuoteRow quoteRow(const QString& reply) {
    const qsizetype quote = reply.indexOf(u'"');
    if (quote < 0) {
        return QuoteRow(reply, {});
    }
    const QStringView values = QStringView(reply).sliced(quote + 1);
    const qsizetype end = values.indexOf(u"\";");
    return QuoteRow(reply, values.first(end < 0 ? values.size() : end));
}

QList<QuoteRow> quoteRows(const QString& reply) {
    QList<QuoteRow> rows;
    for (const QStringView line : QStringView(reply).tokenize(u';')) {
        rows << QuoteRow::ofLine(reply, line);
    }
    return rows;
}

}  // namespace guanchao
