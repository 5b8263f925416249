#include "exchange/code_table_changes.h"

#include <QSet>
#include <algorithm>

#include "base/activity.h"
#include "base/values.h"
#include "services/delisted.h"
#include "services/listed_name.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of the known codes of an exchange, those that a list must have.
constexpr int leastPercent = 80;
constexpr int hundred = 100;

struct Exchange {
    QString prefix;
    QString name;
};

QList<Exchange> exchanges(bool withBeijing) {
    QList<Exchange> exchanges = {{u"SH"_s, u"沪市"_s}, {u"SZ"_s, u"深市"_s}};
    if (withBeijing) {
        exchanges << Exchange{u"BJ"_s, u"北交所"_s};
    }
    return exchanges;
}

bool isJudged(const QString& dm, bool withBeijing) {
    return isStockCode(dm) || (withBeijing && isOfBeijing(dm));
}

bool isRenamed(const QString& before, const QString& name) {
    return !hasDayMark(name) && plainName(before) != name;
}

QString insertCode(const ListedStock& stock, const Initials& initials, const QString& now) {
    return u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values("_s +
           quotedList(
               {stock.dm, stock.dm.right(codeDigits), stock.name, initials.of(stock.name), now}) +
           u')';
}

QString renameCode(const ListedStock& stock, const Initials& initials) {
    return u"update dmb set jc="_s + quoted(stock.name) + u",shenmu="_s +
           quoted(initials.of(stock.name)) + u" where dm="_s + quoted(stock.dm);
}

}  // namespace

KnownCodes readKnownCodes(const Stores& stores) {
    const Activity activity(u"读取代码表"_s);
    Connection store = stores.main.open();
    KnownCodes known;
    for (Recordset row(store,
                       u"select dm,jc,dm in "_s + delistedCodes(store) + u" as gone from dmb"_s);
         !row.atEnd(); row.moveNext()) {
        const QString dm = row.value(0).toText();
        known[dm.toUpper()] = {dm, row.value(1).toText(), row.value(2).toInteger() != 0};
    }
    return known;
}

bool isSeedTable(const Stores& stores) {
    const Activity activity(u"读取代码表"_s);
    Connection store = stores.main.open();
    const Recordset times(store, u"select count(distinct newdmtime) from dmb"_s);
    return times.value(0).toInteger() == 1;
}

QString codeListFault(const QList<ListedStock>& list, const KnownCodes& known, bool withBeijing) {
    QSet<QString> listed;
    QHash<QString, int> ofExchange;
    for (const ListedStock& stock : list) {
        listed << stock.dm;
        ++ofExchange[stock.dm.left(2)];
    }
    for (const auto& [prefix, name] : exchanges(withBeijing)) {
        int all = 0;
        int found = 0;
        for (auto it = known.cbegin(); it != known.cend(); ++it) {
            if (it.key().startsWith(prefix) && !it->isDelisted && isJudged(it.key(), withBeijing)) {
                ++all;
                found += listed.contains(it.key()) ? 1 : 0;
            }
        }
        if (ofExchange.value(prefix) == 0) {
            return u"名单里没有%1的股票"_s.arg(name);
        }
        if (found * hundred < all * leastPercent) {
            return u"名单不全：代码表里%1的 %2 只，只有 %3 只在名单里"_s.arg(name).arg(all).arg(
                found);
        }
    }
    return {};
}

CodeTableChanges changesBy(const QList<ListedStock>& list, const KnownCodes& known,
                           bool withBeijing, bool isWhole) {
    CodeTableChanges changes;
    QSet<QString> listed;
    for (const ListedStock& stock : list) {
        listed << stock.dm;
        const auto code = known.constFind(stock.dm);
        const QString name = plainName(stock.name);
        if (!isJudged(stock.dm, withBeijing)) {
            continue;
        }
        if (code == known.cend()) {
            changes.added << ListedStock{stock.dm, name};
            continue;
        }
        if (code->isDelisted) {
            changes.back << ListedStock{code->dm, name};
        }
        if (isRenamed(code->jc, name)) {
            changes.renamed << CodeTableChanges::Renamed{{code->dm, name}, code->jc};
        }
    }
    for (auto it = known.cbegin(); isWhole && it != known.cend(); ++it) {
        if (isJudged(it.key(), withBeijing) && !it->isDelisted && !listed.contains(it.key())) {
            changes.delisted << ListedStock{it->dm, it->jc};
        }
    }
    std::ranges::sort(changes.delisted, {}, &ListedStock::dm);
    return changes;
}

void storeChanges(const Stores& stores, const CodeTableChanges& changes, const Initials& initials,
                  const QString& now) {
    const Activity activity(u"更新代码表"_s);
    if (changes.isEmpty()) {
        return;
    }
    Connection store = stores.main.open();
    Transaction transaction(store);
    for (const ListedStock& stock : changes.added) {
        store.execute(insertCode(stock, initials, now));
    }
    for (const CodeTableChanges::Renamed& it : changes.renamed) {
        store.execute(renameCode(it.stock, initials));
    }
    for (const ListedStock& stock : changes.back) {
        unmarkDelisted(store, stock.dm);
    }
    for (const ListedStock& stock : changes.delisted) {
        markDelisted(store, stock.dm, now);
    }
    transaction.commit();
}

}  // namespace guanchao
