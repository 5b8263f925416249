// 回测规则: what a back-test buys, when it sells, and at what cost. Each field is a number, so that
// one table of fields serves the window, the file in which rules are kept, and the sweep over
// their values.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

struct BacktestRule {
    // What gives the signals: 0 the themes of a day, 1 the report dates of yejiyuyuejinqi.
    double source = 0;
    double firstYear = 1990;
    double lastYear = 2099;

    // Of the theme on the day, by the stocks that traded.
    double limitUps = 3;       // at least so many at their limit
    double limitUpShare = 25;  // at least that percentage of them
    double themeGain = -100;   // mean gain in percent, at least

    // Of the index, SH000001, on the day.
    double indexGainFrom = -100;  // percent
    double indexGainTo = 100;
    double indexMeanDays = 0;  // it closes above its mean of so many days; 0: not asked

    // Of the stock on the day.
    double gainFrom = -100;  // percent
    double gainTo = 1000;
    double volumeRatioFrom = 0;  // volume over the mean of 10 days, the day among them
    double volumeRatioTo = 100;
    double positionDays = 60;
    double positionFrom = 0;  // of the close between low and high of those days, in percent
    double positionTo = 100;
    double atLimit = 0;  // 0 either, 1 only at its limit, 2 only below it

    double holdDays = 5;    // days on which it trades behind the day of the buy
    double stopLoss = 0;    // percent under the buy; 0: none
    double takeProfit = 0;  // percent over the buy; 0: none
    double firstFall = 0;   // 1: sold after the first close below the one before

    double positions = 5;       // parts of the capital
    double commission = 0.025;  // percent, of a buy and of a sale
    double stampTax = 0.05;     // percent, of a sale
    double slippage = 0.1;      // percent, against the rule in a buy and in a sale

    bool operator==(const BacktestRule&) const = default;
};

struct RuleField {
    QString group;
    QString words;  // its name, also in the file
    double BacktestRule::*value;
    double least;
    double most;
    int decimals;
    QString unit;
    QString tip;
    QStringList choices;        // the words of 0, 1, …; empty for a number
    bool ofThemesOnly = false;  // of no account where report dates give the signals
};

const QList<RuleField>& ruleFields();

// Null if none has the name.
const RuleField* ruleField(const QString& words);

// Which two fields of the rule leave nothing between them, in Chinese; empty if none do.
QString contradictionIn(const BacktestRule& rule);

// The value in words: "25 %", or that of the choice.
QString valueWords(const RuleField& field, const BacktestRule& rule);
QString valueText(const RuleField& field, double value);

}  // namespace guanchao
