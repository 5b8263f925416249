// What the two index panels of the stock quote window show: domestic indexes with the fields of a
// stock, outside ones with four. Bad replies raise OperationError.
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "market/quote_figures.h"

namespace guanchao {

struct HomeIndex {
    QStringView name;
    QStringView code;
    QStringView turnoverCode;  // the index whose turnover is shown; empty: its own
    QStringView chartPath;
    bool hasRatio;
};

struct WorldIndex {
    QStringView name;
    QStringView code;
    QStringView chartPath;
};

// The entries of the two selectors, in their order. The number behind a chart's path belongs to it.
inline constexpr std::array<HomeIndex, 3> homeIndexes = {{
    {u"上证指数", u"sh000001", u"", u"/newchart/small/nsh000001.gif?1236996310078", true},
    {u"深证成指", u"sz399001", u"sz399106", u"/newchart/small/nsz399001.gif?1236996379187", true},
    {u"沪深300", u"sh000300", u"", u"/newchart/small/nsh000300.gif?1236996379187", false},
}};
inline constexpr std::array<WorldIndex, 3> worldIndexes = {{
    {u"恒生指数", u"r_HSI", u"/newchart/hk_stock/min_small/HSI.gif?1236995100156"},
    {u"道琼斯", u"int_dji", u"/newchart/v5/usstock/min_idx_s/.dji.gif?1236995650718"},
    {u"纳斯达克", u"int_nasdaq", u"/newchart/v5/usstock/min_idx_s/.ixic.gif?1236995846203"},
}};

struct Turnover {
    double lots = 0;
    QString volume;  // 成交量
    QString amount;  // 成交金额
};

struct HomeIndexPanel {
    QString name;
    PriceTexts prices;
    QString change;  // 增长
    QString gain;    // 涨幅
    QString time;
    Turnover turnover;
    std::optional<QString> ratio;  // 量比; missing: its label stays as it stands
};

// A reply with an index; one for an unknown code has fewer fields.
bool hasHomeIndex(const QuoteRow& fields);

// All but the ratio.
HomeIndexPanel homeIndexPanel(const QuoteRow& fields);

// Of the composite index, whose volume is taken for shares, the others' for lots.
Turnover compositeTurnover(const QuoteRow& fields);

// 量比 of an index from its lots and the mean volume in shares.
std::optional<QString> indexRatio(const QuoteRow& fields, const Turnover& turnover,
                                  double meanVolume, bool marketOpen);

struct WorldIndexPanel {
    QString name;
    QString index;
    QString change;
    QString gain;
    Colour colour = textColour;  // of both
};

bool hasWorldIndex(const QuoteRow& fields);
WorldIndexPanel worldIndexPanel(const QuoteRow& fields);

}  // namespace guanchao
