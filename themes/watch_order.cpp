#include "themes/watch_order.h"

#include <QSet>

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"
#include "themes/watch_tables.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString placesOf(const QString& list) {
    return u" from zixuanshunxu where zu="_s + quoted(list);
}

// Those that have left the list among them.
QStringList storedOrder(Connection& mainStore, const QString& list) {
    QStringList order;
    for (Recordset places(mainStore, u"select dm"_s + placesOf(list) + u" order by weizhi,rowid"_s);
         !places.atEnd(); places.moveNext()) {
        order << places.value(0).toText();
    }
    return order;
}

// What has no place yet comes behind, as it is shown.
QStringList wholeOrder(QStringList order, const QStringList& shown) {
    const QSet<QString> placed(order.cbegin(), order.cend());
    for (const QString& dm : shown) {
        if (!placed.contains(dm)) {
            order << dm;
        }
    }
    return order;
}

}  // namespace

bool hasOwnOrder(Connection& mainStore, const QString& list) {
    return Recordset(mainStore, u"select dm"_s + placesOf(list) + u" limit 1"_s).count() > 0;
}

QStringList movedBefore(const QStringList& order, const QStringList& dms, const QString& before) {
    QStringList left = order;
    left.removeIf([&](const QString& dm) { return dms.contains(dm); });
    const qsizetype place = before.isEmpty() ? -1 : left.indexOf(before);
    const qsizetype at = place < 0 ? left.size() : place;
    return left.first(at) + dms + left.sliced(at);
}

void moveInList(const Stores& stores, const QString& list, const QStringList& shown,
                const QStringList& dms, const QString& before) {
    const Activity activity(u"移动自选股"_s);
    Connection store = stores.main.open();
    Transaction transaction(store);
    makeWatchTables(store);
    const QStringList order = movedBefore(wholeOrder(storedOrder(store, list), shown), dms, before);
    store.execute(u"delete"_s + placesOf(list));
    int place = 0;
    for (const QString& dm : order) {
        store.execute(u"insert into zixuanshunxu(zu,dm,weizhi) values("_s + quoted(list) + u',' +
                      quoted(dm) + u',' + QString::number(++place) + u")"_s);
    }
    transaction.commit();
}

}  // namespace guanchao
