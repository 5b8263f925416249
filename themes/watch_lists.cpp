#include "themes/watch_lists.h"

#include "base/activity.h"
#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/watch_tables.h"
#include "themes/watchlist.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestName = 20;

}  // namespace

QString refusalOfListName(const QString& name, const QStringList& others) {
    if (name.size() > longestName) {
        return u"列表的名称最多 %1 个字。"_s.arg(longestName);
    }
    return name == watchlistName || others.contains(name)
               ? u"已经有名为“%1”的列表，请换一个名称。"_s.arg(name)
               : QString();
}

WatchLists::WatchLists(const Stores& stores, Dialogs& dialogs, Removals& removals)
    : stores_(stores), dialogs_(dialogs), removals_(removals) {}

QStringList WatchLists::names() const {
    const Activity activity(u"读取自选股的列表"_s);
    Connection store = stores_.main.open();
    return furtherLists(store);
}

QCoro::Task<std::optional<QString>> WatchLists::askName(QString title, QString offered,
                                                        std::stop_token stop) {
    const QString typed = co_await dialogs_.input(stop, u"请输入列表的名称"_s, title, offered);
    const QString name = trimBlanks(typed);
    if (name.isEmpty() || name == offered) {
        co_return std::nullopt;
    }
    const QString refusal = refusalOfListName(name, names());
    if (!refusal.isEmpty()) {
        dialogs_.tell(refusal);
        co_return std::nullopt;
    }
    co_return name;
}

QCoro::Task<std::optional<QString>> WatchLists::create(std::stop_token stop) {
    const QString title = u"新建列表"_s;
    const std::optional<QString> name = co_await askName(title, {}, stop);
    if (name) {
        const Activity activity(title);
        Connection store = stores_.main.open();
        Transaction transaction(store);
        makeWatchTables(store);
        store.execute(u"insert into zixuanzu(zu) values("_s + quoted(*name) + u")"_s);
        transaction.commit();
    }
    co_return name;
}

QCoro::Task<std::optional<QString>> WatchLists::rename(QString list, std::stop_token stop) {
    Q_ASSERT(!list.isEmpty());
    const std::optional<QString> name = co_await askName(u"重命名列表"_s, list, stop);
    if (name) {
        const Activity activity(u"重命名列表"_s);
        Connection store = stores_.main.open();
        Transaction transaction(store);
        for (const QString& table : {u"zixuanzu"_s, u"zixuanzugu"_s, u"zixuanshunxu"_s}) {
            store.execute(u"update "_s + table + u" set zu="_s + quoted(*name) + ofList(list));
        }
        transaction.commit();
    }
    co_return name;
}

qint64 WatchLists::countOf(const QString& list) const {
    const Activity activity(u"删除列表"_s);
    Connection store = stores_.main.open();
    return Recordset(store, u"select count(*) from "_s + tableOf(list) + ofList(list))
        .value(0)
        .toInteger();
}

QCoro::Task<bool> WatchLists::remove(QString list, std::stop_token stop) {
    Q_ASSERT(!list.isEmpty());
    const QString words = u"列表“%1”（%2 只股票）"_s.arg(list).arg(countOf(list));
    const bool agreed = co_await dialogs_.ask(stop, u"确实要删除"_s + words + u"吗?"_s);
    if (agreed) {
        removeList(list, words);
    }
    co_return agreed;
}

void WatchLists::removeList(const QString& list, const QString& words) {
    const Activity activity(u"删除列表"_s);
    Connection store = stores_.main.open();
    Removal removal(removals_, store, stores_.main);
    Transaction transaction(store);
    const QStringList ofStock = {u"zu"_s, u"dm"_s};
    for (const RemovedRows::Table& table : {RemovedRows::Table{u"zixuanzu"_s, {u"zu"_s}},
                                            RemovedRows::Table{u"zixuanzugu"_s, ofStock},
                                            RemovedRows::Table{u"zixuanshunxu"_s, ofStock}}) {
        removal.keep(table, ofList(list));
        store.execute(u"delete from "_s + table.name + ofList(list));
    }
    transaction.commit();
    removal.complete(watchlistPlace, words);
}

QString WatchLists::transfer(const QStringList& dms, const QString& from, const QString& into,
                             Way way) {
    const bool moves = way == Way::move;
    const QString verb = moves ? u"移动"_s : u"复制"_s;
    const Activity activity(verb + u"自选股"_s);
    Connection store = stores_.main.open();
    Transaction transaction(store);
    makeWatchTables(store);
    qsizetype came = 0;
    for (const QString& dm : dms) {
        if (!isOnList(store, into, dm)) {
            addToList(store, into, dm, shortName(store, dm).value_or(QString()));
            ++came;
        }
        if (moves) {
            store.execute(u"delete from "_s + tableOf(from) + ofList(from) + u" and dm="_s +
                          quoted(dm));
        }
    }
    transaction.commit();
    const qsizetype before = dms.size() - came;
    return u"%1了 %2 只股票到“%3”"_s.arg(verb).arg(came).arg(shownNameOf(into)) +
           (before > 0 ? u"，%1 只原来就在那里"_s.arg(before) : QString());
}

}  // namespace guanchao
