#include "research/stock_history.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

StockHistory::StockHistory(const StoreFile& secondHistory, StocksByCode& stocks)
    : connection_(secondHistory.open()), stocks_(stocks) {
    for (Recordset names(connection_, u"select distinct tbl_name from sqlite_master"_s);
         !names.atEnd(); names.moveNext()) {
        tables_.insert(names.value(0).toText());
    }
}

const StockColumns& StockHistory::of(const QString& dm) {
    const auto known = stocks_.find(dm);
    if (known != stocks_.end()) {
        return known->second;
    }
    makeTableIfMissing(dm);
    return stocks_.try_emplace(dm, connection_, dm).first->second;
}

void StockHistory::makeTableIfMissing(const QString& dm) {
    if (tables_.contains(dm)) {
        return;
    }
    const Recordset table(connection_,
                          u"select sql from sqlite_master where tbl_name="_s + quoted(dm));
    if (table.atStart() && table.atEnd()) {
        createTableFromContent(connection_, dm, u"select *  from   nishihq2"_s);
    }
    tables_.insert(dm);
}

}  // namespace guanchao
