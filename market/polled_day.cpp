#include "market/polled_day.h"

#include <QTime>

namespace guanchao {

namespace {

constexpr int minutesPerHour = 60;
constexpr quint16 lastMinute = 15 * minutesPerHour;

// Quotes go on to be sent after the close; they tell its price.
std::optional<quint16> minuteOf(const QuoteRow& row) {
    const QTime time = QTime::fromString(row.text(field::time).left(8), QStringLiteral("HH:mm:ss"));
    if (!time.isValid()) {
        return std::nullopt;
    }
    const auto minute = static_cast<quint16>(time.hour() * minutesPerHour + time.minute());
    return std::min(minute, lastMinute);
}

}  // namespace

void PolledDay::note(const QString& dm, const QuoteRow& row) {
    if (dm.isEmpty() || row.lastIndex() < field::time) {
        return;
    }
    const QDate day = dayFrom(row.text(field::day));
    const std::optional<quint16> minute = minuteOf(row);
    const double price = row.figure(field::latest).value_or(0);
    const double formerClose = row.figure(field::formerClose).value_or(0);
    if (!day.isValid() || !minute || price <= 0 || formerClose <= 0 || day < day_) {
        return;
    }
    if (day > day_) {
        stocks_.clear();
        day_ = day;
    }
    Series& stock = stocks_[dm];
    stock.formerClose = formerClose;
    if (!stock.points.isEmpty() && stock.points.last().minute > *minute) {
        return;
    }
    if (!stock.points.isEmpty() && stock.points.last().minute == *minute) {
        stock.points.removeLast();
    }
    stock.points << DayPoint{*minute, static_cast<float>(price),
                             static_cast<float>(row.figure(field::volume).value_or(0)),
                             static_cast<float>(row.figure(field::amount).value_or(0))};
    emit noted(dm);
}

DayLine PolledDay::of(const QString& dm) const {
    const auto stock = stocks_.constFind(dm);
    return stock == stocks_.cend() ? DayLine{day_, 0, {}}
                                   : DayLine{day_, stock->formerClose, stock->points};
}

}  // namespace guanchao
