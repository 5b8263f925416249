// The reply of the quote service, cut by position: a line a code,
// `var hq_str_sh600000="name,open,…";`. Prices in yuan or points, volume and turnover as the
// service gives them. What a reader needs and can't have raises OperationError.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace guanchao {

// The positions of a stock's fields; a domestic index has them too, without bids and asks.
namespace field {
inline constexpr qsizetype name = 0;
inline constexpr qsizetype open = 1;
inline constexpr qsizetype formerClose = 2;
inline constexpr qsizetype latest = 3;
inline constexpr qsizetype high = 4;
inline constexpr qsizetype low = 5;
inline constexpr qsizetype volume = 8;
inline constexpr qsizetype amount = 9;
inline constexpr qsizetype firstBid = 10;  // five pairs of volume and price
inline constexpr qsizetype firstAsk = 20;  // likewise
inline constexpr qsizetype day = 30;
inline constexpr qsizetype time = 31;
}  // namespace field

// Those of an outside index.
namespace outsideField {
inline constexpr qsizetype name = 0;
inline constexpr qsizetype index = 1;
inline constexpr qsizetype change = 2;
inline constexpr qsizetype gain = 3;
}  // namespace outsideField

// The number that the whole text reads as; nothing where it is none, and where it is too large or
// too small for a figure of a market.
std::optional<double> marketFigure(QStringView text);
bool isMarketFigure(double value);

// The day at the start of the text, with or without zeros before month and day; invalid if none
// stands there.
QDate dayFrom(const QString& text);

// The day as time text; a text that is no day comes back as it is.
QString dayAsTimeText(const QString& text);

// The fields of one code.
class QuoteRow {
public:
    // In upper case, as the variable of the line ends; empty where the line names none.
    const QString& dm() const { return dm_; }
    // Up to its first comma, as it came.
    QStringView beginning() const { return beginning_; }

    // 0 where the service doesn't know the code.
    qsizetype lastIndex() const { return fields_.size() - 1; }

    // As it is shown. Raises for a field that isn't there.
    QString text(qsizetype position) const;
    // Nothing for a text that is no number.
    std::optional<double> figure(qsizetype position) const;
    // Raises for it.
    double number(qsizetype position) const;
    // The number as the service wrote it, without blanks around it.
    QString numberAsSent(qsizetype position) const;

private:
    friend QuoteRow quoteRow(const QString& reply);
    friend QList<QuoteRow> quoteRows(const QString& reply);

    QuoteRow(const QString& reply, QStringView values);
    static QuoteRow ofLine(const QString& reply, QStringView line);
    QStringView field(qsizetype position) const;

    QString reply_;  // shared: what the views look at
    QString dm_;
    QStringView beginning_;
    QList<QStringView> fields_;
};

// The reply to one code, whose line is read by no variable: a row without a code.
QuoteRow quoteRow(const QString& reply);

// The reply to several codes: a row a line, and one more for what stands behind the last.
QList<QuoteRow> quoteRows(const QString& reply);

}  // namespace guanchao
