#include "research/laboratory/laboratory_history.h"

#include "research/history_store.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

LaboratoryHistory::LaboratoryHistory(const Stores& stores, LaboratoryColumns& kept,
                                     ResearchWork& work)
    : kept_(kept),
      firstHistory_(stores.firstHistory.open()),
      secondHistory_(stores.secondHistory.open()),
      calendar_(firstHistory_),
      tables_(tablesOf(secondHistory_)) {
    const FileStamp stamp = stampOf(stores.firstHistory);
    if (stamp != kept.counted) {
        kept.themeDays.reset();
    }
    kept.columns.take(stores.firstHistory, stores.secondHistory);
    readMarket(work);
    kept.counted = stamp;
}

void LaboratoryHistory::readMarket(ResearchWork& work) {
    const auto tell = [&work](int done, int total) { work.reading(done, total); };
    work.showLabel3(u"正在读入历史行情…"_s);
    market_ = &kept_.columns.market(firstHistory_, tell);
    if (!kept_.themeDays) {
        work.showLabel3(u"正在统计各天的题材…"_s);
        kept_.themeDays.emplace(*market_, tell);
    }
}

const StockColumns* LaboratoryHistory::stock(const QString& dm) {
    HistoryColumns::Stocks& stocks = kept_.columns.stocks();
    if (const auto known = stocks.find(dm); known != stocks.end()) {
        return &known->second;
    }
    if (!tables_.contains(dm.toUpper())) {
        return nullptr;
    }
    return &stocks.try_emplace(dm, secondHistory_, dm).first->second;
}

}  // namespace guanchao
