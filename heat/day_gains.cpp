#include "heat/day_gains.h"

#include <cmath>

#include "base/values.h"
#include "heat/collector_contract.h"
#include "research/range_ranks.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// As long as they are of the day.
DayGains quotedGains(Connection& main, const QDate& day) {
    const Recordset newest(main, u"select max(datetime(newhqtime)) from dmb"_s);
    const QString time = newest.value(0).toText();
    if (!time.startsWith(dateText(day))) {
        return {};
    }
    DayGains quoted;
    RowCursor row(main, u"select dm,zhangfu from dmb"_s);
    while (row.next()) {
        quoted.gains.insert(row.string(0), row.isNull(1) ? 0 : row.number(1));
    }
    quoted.source = u"涨幅取自行情列表（"_s + time.sliced(11, 5) + u" 更新）"_s;
    return quoted;
}

DayGains stockGains(const Stores& stores, Connection& main, const QDate& day) {
    DayGains quoted = quotedGains(main, day);
    if (!quoted.gains.isEmpty()) {
        return quoted;
    }
    const QHash<QString, double> downloaded = gainsOfStocks(stores, RangeSource::downloaded, day);
    const QHash<QString, double> history = gainsOfStocks(stores, RangeSource::history, day);
    if (downloaded.isEmpty() && history.isEmpty()) {
        return {};
    }
    return history.size() >= downloaded.size()
               ? DayGains{history, u"涨幅取自历史行情库"_s}
               : DayGains{downloaded, u"涨幅取自与大盘对比时下载的行情"_s};
}

// As the main window has it: a member that has no quote doesn't count.
QHash<QString, double> themeGains(Connection& main, const QHash<QString, double>& ofStocks) {
    struct Sum {
        double gains = 0;
        int members = 0;
    };
    QHash<QString, Sum> sums;
    RowCursor row(main, u"select zhutiname,dm from dzhzhuti"_s);
    while (row.next()) {
        const auto gain = ofStocks.constFind(row.string(1));
        if (gain != ofStocks.cend()) {
            Sum& sum = sums[row.string(0)];
            sum.gains += *gain;
            ++sum.members;
        }
    }
    QHash<QString, double> gains;
    for (auto it = sums.cbegin(); it != sums.cend(); ++it) {
        gains.insert(it.key(), it->gains / it->members);
    }
    return gains;
}

bool isKnown(const DayField& field, const DayFigure& figure) {
    return !std::isnan(figure.value) && !(field.isGrowth && figure.value == noGrowth);
}

QString lineOf(const DayOfNews& day, const DayGains& gains, int withoutGain, const QString& kind) {
    if (gains.source.isEmpty()) {
        return u"没有 "_s + dateText(day.day) +
               u" 的涨幅：行情列表不是这一天的，历史行情库和与大盘对比时下载的行情里也没有。"
               u"交易日可以在“工具 / 历史行情”里补全。"_s;
    }
    QString line =
        gains.source + u"，共 "_s + QString::number(day.items.size()) + u" 个"_s + kind + u"。"_s;
    if (withoutGain > 0) {
        line += u"另有 "_s + QString::number(withoutGain) + u" 个没有涨幅，没有画。"_s;
    }
    return line;
}

}  // namespace

DayGains gainsOfDay(const Stores& stores, bool ofThemes, const QDate& day) {
    Connection main = stores.main.open();
    DayGains gains = stockGains(stores, main, day);
    if (ofThemes) {
        gains.gains = themeGains(main, gains.gains);
    }
    return gains;
}

DayOfNews newsAgainstGain(const Stores& stores, const HeatSubject& subject, const DayField& field,
                          const HeatDays& days, const QDate& day) {
    DayOfNews news;
    news.day = day;
    const qsizetype at = days.days.indexOf(day);
    if (at < 0) {
        return news;
    }
    const DayGains gains = gainsOfDay(stores, subject.name.isEmpty(), day);
    int withoutGain = 0;
    for (const ItemDays& it : days.items) {
        if (!isKnown(field, it.figures[at])) {
            continue;
        }
        const auto gain = gains.gains.constFind(it.item);
        if (gain == gains.gains.cend()) {
            ++withoutGain;
        } else {
            news.items << NewsAndGain{it.item, it.name, it.figures[at], *gain};
        }
    }
    news.line = lineOf(news, gains, withoutGain, subject.kind);
    return news;
}

}  // namespace guanchao
