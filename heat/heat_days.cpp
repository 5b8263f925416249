#include "heat/heat_days.h"

#include <QHash>
#include <QMap>
#include <algorithm>
#include <cmath>

#include "base/values.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Day after day, as DaysReading takes them.
QString statementOf(Connection& heat, const HeatSubject& subject, const DayField& field,
                    const QDate& first) {
    const bool hasNotes = hasTable(heat, u"xinwenshuoming"_s);
    const QString bound =
        hasNotes && !field.lowerBound.isEmpty() ? u"n."_s + field.lowerBound : u"0"_s;
    const QString notes = hasNotes ? u" left join xinwenshuoming as n on n.biao="_s +
                                         quoted(subject.dayTable) + u" and n.item=d."_s +
                                         subject.key + u" and n.riqi=date(d.riqi)"_s
                                   : QString();
    return u"select date(d.riqi),d.%1,%2,%3,%4,%5 from %6 as d%7 where datetime(d.riqi)>=%8"
           u" order by date(d.riqi),d.rowid"_s.arg(
               subject.key, subject.name.isEmpty() ? u"''"_s : u"d."_s + subject.name, field.column,
               bound, hasNotes ? u"n.laiyuan"_s : u"''"_s, subject.dayTable, notes,
               quoted(timeText(first.startOfDay())));
}

QDate latestDay(Connection& heat, const HeatSubject& subject) {
    const Recordset latest(heat, u"select date(riqi) as riqi from "_s + subject.dayTable +
                                     u" order by datetime(riqi) desc limit 1"_s);
    return latest.atEnd() ? QDate()
                          : QDate::fromString(latest.value(u"riqi").toText(), Qt::ISODate);
}

class DaysReading {
public:
    void add(RowCursor& row) {
        const QString item = row.string(1);
        if (item.isEmpty() || row.isNull(3)) {
            return;
        }
        const QDate day = QDate::fromString(row.string(0), Qt::ISODate);
        if (read_.days.isEmpty() || read_.days.last() != day) {
            read_.days << day;
        }
        ItemDays& days = itemOf(item);
        days.name = row.string(2);
        days.figures.resize(read_.days.size());
        days.figures.last() = {row.number(3), row.number(4) > 0, row.string(5)};
    }

    HeatDays take() {
        for (ItemDays& it : read_.items) {
            it.figures.resize(read_.days.size());
        }
        return std::move(read_);
    }

private:
    ItemDays& itemOf(const QString& item) {
        const auto known = places_.constFind(item);
        if (known != places_.cend()) {
            return read_.items[*known];
        }
        places_.insert(item, read_.items.size());
        return read_.items.emplaceBack(ItemDays{item, {}, {}});
    }

    HeatDays read_;
    QHash<QString, qsizetype> places_;
};

}  // namespace

HeatDays readHeatDays(Connection& heat, const HeatSubject& subject, const DayField& field,
                      int calendarDays) {
    DaysReading reading;
    const QDate latest = latestDay(heat, subject);
    if (latest.isValid()) {
        RowCursor row(heat, statementOf(heat, subject, field, latest.addDays(1 - calendarDays)));
        while (row.next()) {
            reading.add(row);
        }
    }
    return reading.take();
}

QList<double> comparableFigures(const ItemDays& item) {
    const auto newest = std::find_if(item.figures.crbegin(), item.figures.crend(),
                                     [](const DayFigure& it) { return !std::isnan(it.value); });
    QList<double> figures;
    for (const DayFigure& it : item.figures) {
        figures << (it.source == newest->source ? it.value : DayFigure().value);
    }
    return figures;
}

QString sparklineWords(const DayField& field, const ItemDays& item) {
    QList<double> figures = comparableFigures(item);
    figures.removeIf([](double it) { return std::isnan(it); });
    const auto [least, most] = std::ranges::minmax(figures);
    return u"近%1天 %2：采集 %3 天，最少 %4，最多 %5，最近 %6"_s.arg(
        QString::number(sparklineDays), field.words, QString::number(figures.size()),
        numberText(least), numberText(most), numberText(figures.last()));
}

}  // namespace guanchao
