#include "research/laboratory/backtest_rule.h"

#include <algorithm>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

const QList<RuleField>& ruleFields() {
    using R = BacktestRule;
    const QString range = u"范围"_s, theme = u"题材"_s, index = u"大盘"_s, stock = u"个股"_s;
    const QString sale = u"卖出"_s, money = u"资金和费用"_s;
    const QString percent = u" %"_s, days = u" 天"_s;
    static const QList<RuleField> fields = {
        {range,
         u"信号"_s,
         &R::source,
         0,
         1,
         0,
         {},
         u"从哪里得到要买的股票"_s,
         {u"涨停多的题材"_s, u"业绩预约日"_s}},
        {range, u"从哪年"_s, &R::firstYear, 1990, 2099, 0, u" 年"_s, u"从这一年的第一天算起"_s, {}},
        {range, u"到哪年"_s, &R::lastYear, 1990, 2099, 0, u" 年"_s, u"算到这一年的最后一天"_s, {}},
        {theme,
         u"涨停数至少"_s,
         &R::limitUps,
         1,
         200,
         0,
         u" 只"_s,
         u"当天题材里收在涨停价的股票数"_s,
         {},
         true},
        {theme,
         u"涨停占比至少"_s,
         &R::limitUpShare,
         0,
         100,
         1,
         percent,
         u"涨停的占当天有交易的百分之几"_s,
         {},
         true},
        {theme,
         u"题材涨幅至少"_s,
         &R::themeGain,
         -100,
         100,
         1,
         percent,
         u"题材里股票当天的平均涨幅；-100 不限"_s,
         {},
         true},
        {index,
         u"大盘涨幅从"_s,
         &R::indexGainFrom,
         -100,
         100,
         1,
         percent,
         u"上证指数当天的涨幅；-100 不限"_s,
         {}},
        {index,
         u"大盘涨幅到"_s,
         &R::indexGainTo,
         -100,
         100,
         1,
         percent,
         u"上证指数当天的涨幅；100 不限"_s,
         {}},
        {index,
         u"大盘均线"_s,
         &R::indexMeanDays,
         0,
         250,
         0,
         days,
         u"上证指数收在这么多天的均线之上；0 不限"_s,
         {}},
        {stock,
         u"涨停"_s,
         &R::atLimit,
         0,
         2,
         0,
         {},
         u"股票当天是否收在涨停价"_s,
         {u"不限"_s, u"只要涨停的"_s, u"只要没涨停的"_s}},
        {stock,
         u"个股涨幅从"_s,
         &R::gainFrom,
         -100,
         1000,
         1,
         percent,
         u"股票当天的涨幅；-100 不限"_s,
         {}},
        {stock,
         u"个股涨幅到"_s,
         &R::gainTo,
         -100,
         1000,
         1,
         percent,
         u"股票当天的涨幅；1000 不限"_s,
         {}},
        {stock,
         u"量比从"_s,
         &R::volumeRatioFrom,
         0,
         100,
         2,
         {},
         u"当天的成交量除以 10 天平均（含当天）"_s,
         {}},
        {stock,
         u"量比到"_s,
         &R::volumeRatioTo,
         0,
         100,
         2,
         {},
         u"当天的成交量除以 10 天平均（含当天）"_s,
         {}},
        {stock,
         u"位置天数"_s,
         &R::positionDays,
         1,
         500,
         0,
         days,
         u"收盘价的位置在多少天的最低和最高之间算"_s,
         {}},
        {stock,
         u"位置从"_s,
         &R::positionFrom,
         0,
         100,
         0,
         percent,
         u"0 是这些天的最低，100 是最高"_s,
         {}},
        {stock,
         u"位置到"_s,
         &R::positionTo,
         0,
         100,
         0,
         percent,
         u"0 是这些天的最低，100 是最高"_s,
         {}},
        {sale,
         u"持有天数"_s,
         &R::holdDays,
         1,
         500,
         0,
         days,
         u"买入以后第几个交易日收盘卖出；停牌的日子不算"_s,
         {},
         true},
        {sale, u"止损"_s, &R::stopLoss, 0, 90, 1, percent, u"比买入价低百分之几就卖；0 不设"_s, {}},
        {sale,
         u"止盈"_s,
         &R::takeProfit,
         0,
         1000,
         1,
         percent,
         u"比买入价高百分之几就卖；0 不设"_s,
         {}},
        {sale,
         u"首次下跌"_s,
         &R::firstFall,
         0,
         1,
         0,
         {},
         u"收盘第一次低于前一天，下一个交易日开盘卖"_s,
         {u"不管"_s, u"卖出"_s}},
        {money,
         u"持股数"_s,
         &R::positions,
         1,
         100,
         0,
         u" 只"_s,
         u"资金分成几份，最多同时持有几只"_s,
         {}},
        {money, u"佣金"_s, &R::commission, 0, 5, 3, percent, u"买入和卖出各收一次"_s, {}},
        {money, u"印花税"_s, &R::stampTax, 0, 5, 3, percent, u"只在卖出时收"_s, {}},
        {money,
         u"滑点"_s,
         &R::slippage,
         0,
         10,
         2,
         percent,
         u"买得比价格高、卖得比价格低百分之几"_s,
         {}},
    };
    return fields;
}

const RuleField* ruleField(const QString& words) {
    const QList<RuleField>& fields = ruleFields();
    const auto found = std::ranges::find(fields, words, &RuleField::words);
    return found == fields.end() ? nullptr : &*found;
}

QString contradictionIn(const BacktestRule& rule) {
    using R = BacktestRule;
    constexpr std::pair<double R::*, double R::*> ranges[] = {
        {&R::firstYear, &R::lastYear},
        {&R::indexGainFrom, &R::indexGainTo},
        {&R::gainFrom, &R::gainTo},
        {&R::volumeRatioFrom, &R::volumeRatioTo},
        {&R::positionFrom, &R::positionTo}};
    const auto wordsOf = [](double R::*value) {
        return std::ranges::find(ruleFields(), value, &RuleField::value)->words;
    };
    for (const auto& [from, to] : ranges) {
        if (rule.*from > rule.*to) {
            return u"“%1”大于“%2”，中间什么也没有，请改其中一项。"_s.arg(wordsOf(from),
                                                                         wordsOf(to));
        }
    }
    return {};
}

QString valueWords(const RuleField& field, const BacktestRule& rule) {
    const double value = rule.*field.value;
    if (field.choices.isEmpty()) {
        return numberText(value) + field.unit;
    }
    return field.choices.value(static_cast<qsizetype>(value));
}

QString valueText(const RuleField& field, double value) {
    BacktestRule rule;
    rule.*field.value = value;
    return valueWords(field, rule);
}

}  // namespace guanchao
