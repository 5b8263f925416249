#include "base/values.h"
#include "heat/collector_contract.h"
#include "heat/heat_subjects.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<int> rankingWidths = {
    500, 1200, 1400 + sparklineTwips, 800, 900, 900, 750, 750, 750, 750, 750, 750, 750, 750, 5200};
const QList<int> historyWidths = {500, 1200, 1400, 900, 900, 750, 750,
                                  750, 750,  750,  750, 750, 750};

const QString ranking =
    u"select date(riqi) as 日期,shopname as 商品名称,guanzhudu as 关注度,zongfen as 总分,"
    u"zhangfu as 增长,zhangzi as 涨字,shengzi as 升字,dazhang as 大涨,baozhang as 暴涨,"
    u"diezi as 跌字,jiangzi as 降字,dadie as 大跌,baodie as 暴跌,aboutgegu as 相关股票"
    u" from shopname "_s;
const QString byTotal = u" order by zongfen desc,rowid "_s;

QString rankingOf(const QString& day, const QString&) {
    return ranking + u" where date(riqi)="_s + quoted(day) + byTotal;
}

QString historyOf(const QString& shopname) {
    return u"select date(riqi) as 日期,shopname as 商品名称,zongfen as 总分,zhangfu as 增长,"
           u"zhangzi as 涨字,shengzi as 升字,dazhang as 大涨,baozhang as 暴涨,diezi as 跌字,"
           u"jiangzi as 降字,dadie as 大跌,baodie as 暴跌 from shophq where shopname="_s +
           quoted(shopname) + u"  order by date(riqi) desc "_s;
}

void colourRanking(ResultGrid& grid, int row) {
    colourColumns(grid, row, {1, 3}, themeColour);
    grid.setCellForeColor(row, 2, stockColour);
    colourBySign(grid, row, {4, 5});
    colourColumns(grid, row, {6, 7, 8, 9}, riseColour);
    colourColumns(grid, row, {10, 11, 12, 13}, fallColour);
}

void colourHistory(ResultGrid& grid, int row) {
    grid.setCellForeColor(row, 1, themeColour);
    grid.setCellForeColor(row, 2, stockColour);
    for (int col = 4; col < grid.cols(); ++col) {
        colourBySign(grid, row, {col});
    }
    colourColumns(grid, row, {3, 5, 7}, themeColour);
}

}  // namespace

HeatSubject commodityPrices() {
    return {
        .rankingActivity = u"读取商品排名"_s,
        .historyActivity = u"读取历史涨跌情况"_s,
        .collectWord = collectCommodities,
        .current = &Globals::dangqianshangpin,
        .dayTable = u"shophq"_s,
        .key = u"shopname"_s,
        .ranksToday = true,
        .ofDay = rankingOf,
        .ofAll = ranking + byTotal,
        .ofItem = historyOf,
        .rankingWidths = rankingWidths,
        .historyWidths = historyWidths,
        .dressRanking = colourRanking,
        .dressHistory = colourHistory,
        .lines = {{u"上涨"_s, {u"涨字"_s, u"升字"_s, u"大涨"_s, u"暴涨"_s}},
                  {u"下跌"_s, {u"跌字"_s, u"降字"_s, u"大跌"_s, u"暴跌"_s}},
                  {u"总分"_s, {u"总分"_s}}},
        .fields = {{u"总分"_s, u"d.zongfen"_s}, {u"增长"_s, u"d.zhangfu"_s, {}, true}},
        .kind = u"商品"_s,
        .lastColumnIsTip = true,
        .searchWords = [](const QString& shopname) -> QString { return shopname + u" 价格"_s; }};
}

}  // namespace guanchao
