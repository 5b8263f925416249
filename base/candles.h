// The days of one stock as a chart shows them: adjusted or not, with their means, and which of them
// are in sight. Prices in yuan or points, volume in shares, turnover in yuan.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace guanchao {

struct Candle {
    QDate day;
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;
    std::optional<double> turnover;  // not every source has it
    double factor = 1;  // 复权因子: prices times this are comparable from day to day

    bool operator==(const Candle&) const = default;
};

// 不复权, 前复权, 后复权.
enum class Adjustment : std::uint8_t { none, forward, backward };

// The same days, oldest first, with adjusted prices and without factors: forward adjustment leaves
// the last day as it is, backward the days before the first dividend.
QList<Candle> adjusted(const QList<Candle>& days, Adjustment adjustment);

// In percent against the day before, by comparable prices, however the days are adjusted; nothing
// for the first day.
std::optional<double> gainOf(const QList<Candle>& days, qsizetype at);

// 均线: the mean close of so many days up to each of them; NaN where there are too few.
QList<double> meanCloses(const QList<Candle>& days, int length);

struct PriceRange {
    double low = 0;
    double high = 0;
};

// About four to eight round values within the range, in their order; none if it has no height.
QList<double> roundValues(const PriceRange& range);

// Which of the days are in sight: a run of neighbours.
class VisibleDays {
public:
    static constexpr qsizetype usual = 120;
    static constexpr qsizetype fewest = 10;

    // So many days are there; the last ones, the usual count of them, come into sight.
    void setTotal(qsizetype total);

    qsizetype first() const { return first_; }
    qsizetype count() const { return count_; }

    // So many of the last ones, as far as there are.
    void showLast(qsizetype count);

    // The one at this part (0 to 1) of the width.
    qsizetype dayAt(double part) const;
    // By this factor of days; the day at this part of the width stays there.
    void zoom(double factor, double part);
    // Puts the day at this part of the width, as far as there are days.
    void bringTo(qsizetype day, double part);
    // As far as there are days.
    void moveTo(qsizetype first);
    // No further than it needs.
    void bringIntoSight(qsizetype day);

private:
    qsizetype total_ = 0;
    qsizetype first_ = 0;
    qsizetype count_ = 0;
};

// The lowest and the highest price of the days in sight, of which there must be one.
PriceRange pricesOf(const QList<Candle>& days, const VisibleDays& sight);

}  // namespace guanchao
