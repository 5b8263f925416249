#include "exchange/board_store.h"

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/membership.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

int membersOf(Connection& store, const QString& theme) {
    const Recordset count(store,
                          u"select count(*) from dzhzhuti where zhutiname="_s + quoted(theme));
    return static_cast<int>(count.value(0).toInteger());
}

void takeAttentionOfTheme(Connection& store, const QString& theme, const QString& date) {
    const QString name = u" where zhutiname="_s + quoted(theme);
    const Recordset most(store, u"select max(guanzhudu) from dzhzhuti"_s + name);
    const qint64 attention = qMax(qint64(1), most.value(0).toInteger());
    store.execute(u"update dzhzhuti set guanzhudu="_s + QString::number(attention) + name +
                  u" and guanzhudu=0 and ztktime="_s + quoted(date));
}

}  // namespace

StoredBoard storeBoard(const Stores& stores, const QString& theme, const QList<ListedStock>& stocks,
                       const QString& date, NewAttention attention) {
    const Activity activity(u"导入概念板块“"_s + theme + u'”', u"已经导入的板块都已保留。"_s);
    Connection store = stores.main.open();
    Transaction transaction(store);
    const int before = membersOf(store, theme);
    StoredBoard stored;
    for (const ListedStock& stock : stocks) {
        const std::optional<QString> known = shortName(store, stock.dm);
        // Those of Beijing are only for who has them in the code table.
        if (!isStockCode(stock.dm) && !(known && isOfBeijing(stock.dm))) {
            ++stored.strangers;
            continue;
        }
        const QString jc = known.value_or(stock.name);
        stored.added += joinIfMissing(store, {theme, stock.dm, jc, date}) ? 1 : 0;
    }
    if (stored.added > 0 && attention == NewAttention::ofTheme) {
        takeAttentionOfTheme(store, theme, date);
    }
    if (stored.added > 0) {
        stampThemes(store, date);
    }
    transaction.commit();
    stored.known = before + stored.added;
    stored.isNewTheme = before == 0 && stored.added > 0;
    return stored;
}

QHash<QString, int> membersOfThemes(const Stores& stores) {
    const Activity activity(u"读取已有的主题"_s);
    Connection store = stores.main.open();
    QHash<QString, int> members;
    const QString query = u"select zhutiname,count(*) from dzhzhuti group by zhutiname"_s;
    for (Recordset row(store, query); !row.atEnd(); row.moveNext()) {
        members[row.value(0).toText()] = static_cast<int>(row.value(1).toInteger());
    }
    return members;
}

}  // namespace guanchao
