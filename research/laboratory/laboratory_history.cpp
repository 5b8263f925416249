#include "research/laboratory/laboratory_history.h"

#include "research/history_store.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

LaboratoryHistory::LaboratoryHistory(const Stores& stores, HistoryColumns& columns,
                                     ResearchWork& work)
    : columns_(columns),
      firstHistory_(stores.firstHistory.open()),
      secondHistory_(stores.secondHistory.open()),
      calendar_(firstHistory_),
      tables_(tablesOf(secondHistory_)) {
    const auto tell = [&work](int done, int total) { work.reading(done, total); };
    work.showStep(u"正在读入历史行情…"_s);
    columns.take(stores.firstHistory, stores.secondHistory);
    columns.readAll(stores.firstHistory, stores.secondHistory, tell);
    work.showStep(u"正在统计各天的题材…"_s);
    themeDays_ = &columns.themeDays(tell);
}

const StockColumns* LaboratoryHistory::stock(const QString& dm) {
    StocksByCode& stocks = columns_.stocks();
    if (const auto known = stocks.find(dm); known != stocks.end()) {
        return &known->second;
    }
    if (!tables_.contains(dm.toUpper())) {
        return nullptr;
    }
    return &stocks.try_emplace(dm, secondHistory_, dm).first->second;
}

}  // namespace guanchao
