#include "themes/review_table.h"

#include <algorithm>
#include <cmath>

#include "base/activity.h"
#include "base/short_amounts.h"
#include "base/values.h"
#include "grid/colours.h"
#include "grid/table_columns.h"
#include "services/stock_code.h"
#include "themes/theme_map.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostTold = 8;  // days, in a line under the pointer
constexpr int gainColumn = 3;
constexpr int gainBeforeColumn = 5;

QList<TableColumn> columns() {
    return {{u"类别"_s, 950}, {u"主题"_s, 2600},        {u"涨幅%"_s, 750},
            {u"名次"_s, 600}, {u"前一天涨幅%"_s, 1150}, {u"前一天名次"_s, 1050},
            {u"涨停"_s, 600}, {u"只数"_s, 600},         {u"领涨"_s, 3200}};
}

QString leaderWords(const BookedTheme& day, const QHash<QString, QString>& names) {
    QStringList words;
    for (const QString& dm : day.leaders) {
        const QString name = names.value(dm);
        words << (name.isEmpty() ? dm : name);
    }
    return words.join(u'、');
}

void setRank(ResultGrid& grid, int row, int col, int rank) {
    if (rank > 0) {
        grid.setInteger(row, col, rank);
    }
}

void fillRow(ResultGrid& grid, int row, const ReviewRow& it, const ReviewData& data) {
    grid.setTextMatrix(row, 1, standingWords(it.standing));
    grid.setTextMatrix(row, reviewThemeColumn, it.day.theme);
    grid.setCellForeColor(row, reviewThemeColumn, themeColour);
    setGain(grid, row, gainColumn, it.day.gain);
    setRank(grid, row, gainColumn + 1, it.rank);
    if (it.gainBefore) {
        setGain(grid, row, gainBeforeColumn, *it.gainBefore);
    }
    setRank(grid, row, gainBeforeColumn + 1, it.rankBefore);
    grid.setInteger(row, 7, it.day.limitUps);
    grid.setInteger(row, 8, it.day.members);
    grid.setTextMatrix(row, 9, leaderWords(it.day, data.names));
}

// What is in the book counts, unless the stored quotes are of a newer day or newer ones of its.
std::optional<BookDay> dayBeyond(const std::optional<BookDay>& now, const QList<QDate>& book,
                                 const BookDay& newest) {
    const bool isNew =
        now && !now->themes.isEmpty() &&
        (book.isEmpty() || now->day > newest.day ||
         (now->day == newest.day && now->asOf.date() == now->day && now->asOf > newest.asOf));
    return isNew ? now : std::nullopt;
}

}  // namespace

ReviewData readReview(const Stores& stores, const QDate& wanted) {
    const Activity activity(u"读取复盘"_s);
    Connection store = stores.main.open();
    ReviewData data;
    data.notes = readDayNotes(store);
    const QList<QDate> book = bookDays(store);
    const QList<BookDay> newest = readBook(store, 1);
    const std::optional<BookDay> now =
        dayBeyond(readDayNow(store), book, newest.isEmpty() ? BookDay() : newest.first());
    data.days = book + data.notes.keys();
    if (now) {
        data.days << now->day;
    }
    std::ranges::sort(data.days, std::greater());
    data.days.erase(std::unique(data.days.begin(), data.days.end()), data.days.end());
    const QDate day = wanted.isValid() ? wanted
                      : now            ? now->day
                      : book.isEmpty() ? data.days.value(0)
                                       : book.first();
    QList<BookDay> days = readBook(store, daysOfLine + 1, day);
    data.isInBook = !days.isEmpty() && days.first().day == day;
    if (now && now->day == day) {
        days.removeIf([&](const BookDay& it) { return it.day == day; });
        days.prepend(*now);
        data.isInBook = false;
    }
    data.day.day = day;
    if (!days.isEmpty() && days.first().day == day) {
        data.day = days.takeFirst();
        data.dayBefore = days.isEmpty() ? QDate() : days.first().day;
        data.daysBefore = static_cast<int>(std::min<qsizetype>(days.size(), daysOfLine - 1));
        data.rows = reviewOf(data.day, days);
        data.front = frontOf(
            static_cast<int>(std::ranges::count_if(data.day.themes, [](const BookedTheme& it) {
                return it.members >= leastRankedMembers;
            })));
        data.names = shortNames(store);
    }
    return data;
}

QString reviewWords(const ReviewData& data) {
    if (!data.day.day.isValid()) {
        return u"还没有行情。按 F9 更新行情；收盘后（15:05 起）有了收盘行情，这一天就记下来。"_s;
    }
    if (data.rows.isEmpty()) {
        return u"这一天没有记下主题，只有备注。"_s;
    }
    QString time = data.day.asOf.toString(u"MM-dd HH:mm"_s);
    if (data.day.asOf.date() != data.day.day) {
        time += data.day.day.toString(u" 取到的 MM-dd"_s);
    }
    const QString state =
        data.isInBook ? u"收盘（%1 的行情）"_s.arg(time)
        : data.day.isOver
            ? u"收盘行情（%1），还没有记下，现在算的"_s.arg(time)
            : u"还没有收盘：按 %1 的行情现在算的，收盘后（15:05 起）有了收盘行情才记下"_s.arg(time);
    const QString before = data.daysBefore > 0 ? u"；前一天是 %1，小线是连前 %2 天的涨幅"_s
                                                     .arg(data.dayBefore.toString(u"MM-dd"_s))
                                                     .arg(data.daysBefore)
                                               : u"；以前的日子还没有记过，明天起可以比较"_s;
    return state + before +
           u"。前列：前 %1 名（至少 %2 只股票的主题才排名）。"_s.arg(data.front)
               .arg(leastRankedMembers);
}

void fillReview(ResultGrid& grid, const ReviewData& data, std::optional<Standing> only) {
    QList<ReviewRow> rows = data.rows;
    rows.removeIf([&](const ReviewRow& it) { return only && it.standing != *only; });
    const GridFill fill(grid, GridFill::Rows::ofTheSameList);
    beginTable(grid, columns(), rows.size());
    for (int row = 1; row < grid.rows(); ++row) {
        fillRow(grid, row, rows[row - 1], data);
    }
}

QHash<QString, QString> lineNotes(const QList<ReviewRow>& rows) {
    QHash<QString, QString> notes;
    for (const ReviewRow& it : rows) {
        QStringList gains;
        for (const double gain : it.line.last(std::min(it.line.size(), mostTold))) {
            gains << (std::isnan(gain) ? u"–"_s : gainWords(gain));
        }
        notes.insert(it.day.theme, u"近 %1 天："_s.arg(gains.size()) + gains.join(u"，"_s));
    }
    return notes;
}

QDate nextNoteWith(const ReviewData& data, const QString& text, const QDate& from) {
    QList<QDate> order = data.days;
    std::rotate(order.begin(), std::ranges::upper_bound(order, from, std::greater()), order.end());
    const auto found = std::ranges::find_if(order, [&](const QDate& day) {
        return data.notes.value(day).contains(text, Qt::CaseInsensitive);
    });
    return found == order.end() ? QDate() : *found;
}

}  // namespace guanchao
