// The collector's own settings: caijiqi.ini in the application folder, with usable values where the
// file or an entry is missing. Pauses in milliseconds (the file has seconds).
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>

namespace guanchao {

// 总分: what one occurrence of each word adds to a commodity's score, or takes from it.
struct ScoreWeights {
    double zhangzi = 1;   // 涨
    double shengzi = 1;   // 升
    double dazhang = 2;   // 大涨, over and above its 涨
    double baozhang = 4;  // 暴涨
    double diezi = -1;    // 跌
    double jiangzi = -1;  // 降
    double dadie = -2;    // 大跌
    double baodie = -4;   // 暴跌
};

struct CollectorSettings {
    // What is added to a search address to limit it to a period; "tihuantianshu" stands for days.
    QString onePeriod = QStringLiteral("&lm=1");
    QString allPeriod;
    QString customPeriod = QStringLiteral("&lm=tihuantianshu");

    // How a page tells its number of results (the first group), and that there are none; an empty
    // pattern for the latter means that a page never tells it.
    QRegularExpression results{QStringLiteral("相关结果约?\\s*([0-9][0-9,]*)\\s*个")};
    QRegularExpression noResults{QStringLiteral("没有找到.{0,60}相关")};
    // The question whether a person is asking; empty: there is none.
    QRegularExpression person{QStringLiteral("验证码|安全验证|完成.{0,4}验证|captcha"),
                              QRegularExpression::CaseInsensitiveOption};

    ScoreWeights weights;

    int pause = 3000;                             // before each page
    int randomPause = 2000;                       // up to so much more
    QList<int> retries = {10000, 60000, 300000};  // before each further try of a failed item
    int giveUpAfter = 20;                         // failed pages in a row; 0: never
    int timeoutSeconds = 15;                      // of a page, where services.ini has none
    int headlinePages = 3;  // at most, of headlines of an item: the days behind them are left out
};

// Raises OperationError, naming each line and entry, for what can't be read or would be passed
// over, and for a pattern or a number that is none.
CollectorSettings readCollectorSettings(const QString& iniPath);

}  // namespace guanchao
