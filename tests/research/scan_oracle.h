// What the scans of the themes must store, read from a history row by row.
#pragma once

#include <QStringList>
#include <algorithm>
#include <set>

#include "base/values.h"
#include "tests/support/test_history.h"
#include "tests/support/test_stores.h"

namespace guanchao {

class ScanOracle {
public:
    ScanOracle(const MarketHistory& history, TestStores& store)
        : history_(history), store_(store) {}

    void chooseThemes() {
        for (const HistoryRow& index : history_.stocks[QStringLiteral("SH000001")]) {
            if (index.day > QStringLiteral("2017-04-06")) {
                chooseThemesOf(index);
            }
        }
    }

    void addStocks(bool fallenOnly) {
        for (const auto& [day, theme] : chosen) {
            for (const QString& dm : membersOf(theme)) {
                const QString D = fallenOnly ? dayAfterFall(dm, day) : QString(day);
                if (!D.isEmpty()) {
                    addStock(dm, D, day, theme, true);
                }
            }
        }
    }

    QList<QPair<QString, QString>> chosen;  // day and theme
    QStringList themes;
    QStringList stocks;

private:
    using Rows = QList<HistoryRow>;

    struct Theme {
        QString name;
        int count = 0;
        int atLimit = 0;
        int onePrice = 0;
        double sum = 0;
        double best = -1000;
        int key() const { return atLimit - count / 4 - 2; }
    };

    static double percent(const HistoryRow& row) {
        return (static_cast<double>(row.sp) / row.qiansp - 1) * 100;
    }
    static double rounded(double value) { return QString::number(value, 'f', 2).toDouble(); }

    // Means of a few values with two decimals are often ties, which only the store settles.
    QString meanOf(const Theme& theme) const {
        return store_
            .rows(QStringLiteral("select round(%1,2)").arg(theme.sum / theme.count, 0, 'g', 17))
            .first();
    }

    QStringList membersOf(const QString& theme) const {
        QStringList codes;
        for (const auto& [name, dm] : history_.members) {
            if (name == theme) {
                codes << dm;
            }
        }
        return codes;
    }

    Theme themeOn(const QString& name, const QString& day) const {
        Theme theme{.name = name};
        for (const QString& dm : membersOf(name)) {
            for (const HistoryRow& row : history_.stocks[dm]) {
                if (row.day == day) {
                    ++theme.count;
                    theme.atLimit += percent(row) > 9.5 && row.zg == row.sp ? 1 : 0;
                    theme.onePrice += percent(row) > 9.5 && row.zg == row.zd ? 1 : 0;
                    theme.sum += rounded(percent(row));
                    theme.best = std::max(theme.best, rounded(percent(row)));
                }
            }
        }
        return theme;
    }

    void chooseThemesOf(const HistoryRow& index) {
        std::set<QString> names;
        for (const auto& member : history_.members) {
            names.insert(member.first);
        }
        QList<Theme> ranking;
        for (const QString& name : names) {
            ranking << themeOn(name, index.day);
        }
        std::stable_sort(ranking.begin(), ranking.end(),
                         [](const Theme& a, const Theme& b) { return a.key() > b.key(); });
        for (const Theme& theme : ranking) {
            if (theme.atLimit < theme.count / 4.0 + 2) {
                return;
            }
            addTheme(theme, index);
        }
    }

    void addTheme(const Theme& theme, const HistoryRow& index) {
        chosen << qMakePair(index.day, theme.name);
        themes << QStringList{index.day + QStringLiteral(" 00:00:00"),
                              theme.name,
                              meanOf(theme),
                              QString::number(theme.atLimit),
                              QString::number(theme.onePrice),
                              QString::number(theme.count),
                              numberText(rounded(percent(index))),
                              numberText(theme.best)}
                      .join(u'|');
        for (const QString& dm : membersOf(theme.name)) {
            addStock(dm, index.day, index.day, theme.name, false);
        }
    }

    QString dayAfterFall(const QString& dm, const QString& day) const {
        Rows days;
        for (const HistoryRow& row : history_.stocks[dm]) {
            if (row.day >= day) {
                days << row;
            }
        }
        return days.size() >= 3 && close(days, 3) / close(days, 1) <= 0.93 ? days[2].day
                                                                           : QString();
    }

    // Of the row with that number, counted from 1; 0 if there is none.
    static double close(const Rows& rows, qsizetype number) {
        return rows.size() < number ? 0 : rows[number - 1].fuquanyz * rows[number - 1].sp;
    }
    static double open(const Rows& rows, qsizetype number) {
        return rows.size() < number ? 0 : rows[number - 1].fuquanyz * rows[number - 1].kp;
    }

    void addStock(const QString& dm, const QString& D, const QString& day, const QString& theme,
                  bool withHigh) {
        Rows back;
        Rows after;
        for (const HistoryRow& row : history_.stocks[dm]) {
            row.day <= D ? back.prepend(row) : after.append(row);
        }
        back = back.mid(0, 30);
        after = after.mid(0, 10);
        if (back.size() < 10 || after.isEmpty()) {
            return;
        }
        double volumes = 0;
        for (const HistoryRow& row : back.first(10)) {
            volumes += row.chengjiaol;
        }
        QStringList values = {day + QStringLiteral(" 00:00:00"), dm, QStringLiteral("股") + dm,
                              theme};
        values << numberText(close(back, 1)) << QString::number(back[0].sp)
               << (withHigh ? QString::number(back[0].zg) : QStringLiteral("null"));
        for (const double value :
             {close(back, 2), close(back, 4), close(back, 11),
              back.size() >= 29 ? close(back, back.size()) : 0, open(back, 1),
              double(back[0].chengjiaol), volumes / 10, open(after, 1), open(after, 2),
              close(after, 1), close(after, 2), close(after, 6),
              after.size() >= 9 ? close(after, after.size()) : 0, double(after[0].chengjiaol)}) {
            values << numberText(value);
        }
        stocks << values.join(u'|');
    }

    const MarketHistory& history_;
    TestStores& store_;
};

}  // namespace guanchao
