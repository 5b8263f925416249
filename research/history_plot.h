// The plot of a theme against the market: the running sums of both, their difference and those of
// the theme's members over the days, in percent, each of which can be switched on and off.
#pragma once

#include <QSet>

#include "frame/day_plot.h"
#include "research/theme_history.h"

namespace guanchao {

class HistoryPlot : public DayPlot {
    Q_OBJECT

public:
    explicit HistoryPlot(QWidget* parent = nullptr);

    // Without a theme only the market's line shows. What was switched before stays so, members by
    // their code; those that are new are off.
    void showHistory(const ThemeHistoryResult& history);

    struct Line {
        QString name;
        QColor colour;  // as it is drawn
        bool hasDays = false;
        bool isOn = false;
    };
    // The theme, the market, the difference, and the members, the best first.
    QList<Line> lines() const;
    void switchLine(qsizetype line, bool on);

private:
    QString keyOf(qsizetype line) const;
    bool hasDays(qsizetype line) const;
    bool isOn(qsizetype line) const;
    void showSwitched();
    DayValues valuesOf(qsizetype day) const;

    ThemeHistoryResult history_;
    QSet<QString> switched_;  // keys of lines that are not as they begin
};

}  // namespace guanchao
