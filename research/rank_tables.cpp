#include "research/rank_tables.h"

#include <cmath>

#include "base/values.h"
#include "grid/heat_colour.h"
#include "grid/table_columns.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 600;

constexpr double fullHeat = 8;  // of a week, in %

void putGain(ResultGrid& grid, int row, int col, double gain) {
    grid.setReal(row, col, gain);
    grid.setCellBackColor(row, col, signColour(grid, row, col));
}

bool restsOnFew(const RankedTheme& theme) {
    return theme.membersWithRows * 2 < theme.members;
}

}  // namespace

void fillRanks(const RangeRanks& ranks, ResultGrid& grid) {
    const GridFill fill(grid);
    beginTable(grid,
               {{u"名次"_s, 700},
                {u"主题名称"_s, 2400},
                {u"总涨幅"_s, 1100},
                {u"同日大盘"_s, 1100},
                {u"涨幅差"_s, 1100},
                {u"天数"_s, 800},
                {u"成员"_s, 800},
                {u"有行情"_s, 900}},
               ranks.themes.size(), numberWidth);
    for (int row = 1; row < grid.rows(); ++row) {
        const RankedTheme& theme = ranks.themes[row - 1];
        grid.setInteger(row, 1, row);
        grid.setTextMatrix(row, rankThemeColumn, theme.name);
        grid.setCellForeColor(row, rankThemeColumn, themeColour);
        putGain(grid, row, 3, theme.gain);
        putGain(grid, row, 4, theme.market);
        putGain(grid, row, 5, theme.difference());
        grid.setInteger(row, 6, theme.days);
        grid.setInteger(row, 7, theme.members);
        grid.setInteger(row, 8, theme.membersWithRows);
        if (restsOnFew(theme)) {
            grid.setCellForeColor(row, 8, riseColour);
        }
    }
    grid.setKeyColumns({rankThemeColumn});
}

void fillWeeks(const RangeRanks& ranks, ResultGrid& grid) {
    const GridFill fill(grid);
    QList<TableColumn> columns = {{u"主题名称"_s, 1900}};
    for (const QDate& monday : ranks.weeks) {
        columns << TableColumn{dateText(monday), 1150};
    }
    beginTable(grid, columns, ranks.themes.size(), numberWidth);
    for (int row = 1; row < grid.rows(); ++row) {
        const RankedTheme& theme = ranks.themes[row - 1];
        grid.setTextMatrix(row, weekThemeColumn, theme.name);
        grid.setCellForeColor(row, weekThemeColumn, themeColour);
        for (int week = 0; week < theme.weeks.size(); ++week) {
            const double gain = theme.weeks[week];
            if (!std::isnan(gain)) {
                grid.setReal(row, weekThemeColumn + 1 + week, gain);
                setHeat(grid, row, weekThemeColumn + 1 + week, gain, fullHeat);
            }
        }
    }
    grid.setKeyColumns({weekThemeColumn});
}

QString ranksLine(const RangeRanks& ranks, const RangeQuestion& question) {
    const bool isHistory = question.source == RangeSource::history;
    QString line = dateText(question.first) + u" 至 "_s + dateText(question.last) + u"："_s +
                   QString::number(ranks.days) + u" 个交易日，"_s +
                   QString::number(ranks.themes.size()) + u" 个主题。只按"_s +
                   (isHistory ? u"历史行情库"_s : u"对比时下载的行情"_s) + u"算，不下载。"_s;
    if (ranks.days == 0) {
        line += u"那里没有这段日期的大盘行情，"_s +
                (isHistory ? u"先在“工具 / 历史行情”里补全。"_s : u"先点“开始对比”。"_s);
        return line;
    }
    const auto few = std::ranges::count_if(ranks.themes, restsOnFew);
    if (few > 0) {
        line += QString::number(few) + u" 个主题有行情的成员不到一半，“有行情”标红。"_s;
    }
    if (ranks.withoutRows > 0) {
        line += u"另有 "_s + QString::number(ranks.withoutRows) +
                u" 个主题的股票都没有行情，没有列出。"_s;
    }
    return line;
}

}  // namespace guanchao
