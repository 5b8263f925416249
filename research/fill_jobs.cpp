#include "research/fill_jobs.h"

#include "research/history_rows.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Activity filling() {
    return Activity(u"补全历史行情"_s, u"已经补上的日线都已保留。"_s);
}

HistoryState levelledState(const HistoryFiles& files, const QStringList& codes, const QDate& today,
                           const BetweenCodes& between) {
    const Activity activity = filling();
    HistoryState state = readHistoryState(files, codes, today, between);
    for (qsizetype at = 0; at < state.behind.size(); at += codesInABatch) {
        between();
        levelSecond(files, state.behind.mid(at, codesInABatch));
    }
    return state;
}

QList<DayRow> rowsThatGoOn(const HistoryFiles& files, const QList<DayQuote>& quotes) {
    const Activity activity = filling();
    Connection first(files.first, {});
    QList<DayRow> rows;
    for (const DayQuote& quote : quotes) {
        const auto last = neighbourBefore(first, quote.dm, quote.moment.date());
        if (last && last->close == hundredths(quote.formerClose)) {
            rows << closeRow(quote, last->factor);
        }
    }
    return rows;
}

QList<CodeGap> gapsOf(const HistoryFiles& files, const HistoryState& state,
                      const WantedDays& wanted, bool withFactors, const BetweenCodes& between) {
    const Activity activity = filling();
    Connection first(files.first, {});
    QList<CodeGap> gaps;
    for (const auto& [dm, days] : wanted) {
        between();
        const StoredDays stored = state.codes.value(dm);
        std::optional<CodeGap> gap = gapOf(first, dm, stored, state.marketDays, days);
        if (!gap && withFactors && isStockCode(dm)) {
            gap = factorGapOf(first, dm, stored);
        }
        if (gap) {
            gaps << *gap;
        }
    }
    return gaps;
}

}  // namespace guanchao
