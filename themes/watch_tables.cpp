#include "themes/watch_tables.h"

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString shownNameOf(const QString& list) {
    return list.isEmpty() ? watchlistName : list;
}

// They are made together.
bool hasWatchTables(Connection& mainStore) {
    return hasTable(mainStore, u"gegubeizhu"_s);
}

void makeWatchTables(Connection& mainStore) {
    for (const QString& table :
         {u"table if not exists zixuanzu (zu text)"_s,
          u"table if not exists zixuanzugu (zu text,dm text)"_s,
          u"index if not exists zixuanzugu_zu on zixuanzugu (zu,dm)"_s,
          u"table if not exists zixuanshunxu (zu text,dm text,weizhi integer)"_s,
          u"index if not exists zixuanshunxu_zu on zixuanshunxu (zu,dm)"_s,
          u"table if not exists gegubeizhu (dm text,beizhu text)"_s,
          u"index if not exists gegubeizhu_dm on gegubeizhu (dm)"_s}) {
        mainStore.execute(u"create "_s + table);
    }
}

QString tableOf(const QString& list) {
    return list.isEmpty() ? u"zixuangu"_s : u"zixuanzugu"_s;
}

QString ofList(const QString& list) {
    return u" where "_s + (list.isEmpty() ? u"1"_s : u"zu="_s + quoted(list));
}

QString membersOf(const QString& list) {
    return list.isEmpty() ? u"zixuangu"_s : u"zixuanzugu as zixuangu"_s;
}

QString andOfList(const QString& list) {
    return list.isEmpty() ? QString() : u" and zixuangu.zu="_s + quoted(list);
}

bool isOnList(Connection& mainStore, const QString& list, const QString& dm) {
    if (list.isEmpty()) {
        return Recordset(mainStore, u"select dm from zixuangu  where dm="_s + quoted(dm)).count() >
               0;
    }
    return hasWatchTables(mainStore) &&
           Recordset(mainStore,
                     u"select dm from zixuanzugu"_s + ofList(list) + u" and dm="_s + quoted(dm))
                   .count() > 0;
}

void addToList(Connection& mainStore, const QString& list, const QString& dm, const QString& jc) {
    if (list.isEmpty()) {
        mainStore.execute(u"insert into zixuangu(dm,jc) values("_s + quoted(dm) + u',' +
                          quoted(jc) + u")"_s);
    } else {
        mainStore.execute(u"insert into zixuanzugu(zu,dm) values("_s + quoted(list) + u',' +
                          quoted(dm) + u")"_s);
    }
}

QStringList furtherLists(Connection& mainStore) {
    QStringList names;
    if (!hasWatchTables(mainStore)) {
        return names;
    }
    for (Recordset lists(mainStore, u"select zu from zixuanzu order by rowid"_s); !lists.atEnd();
         lists.moveNext()) {
        names << lists.value(0).toText();
    }
    return names;
}

void writeNote(Connection& mainStore, const QString& dm, const QString& note) {
    makeWatchTables(mainStore);
    mainStore.execute(u"delete from gegubeizhu where dm="_s + quoted(dm));
    const QString words = trimBlanks(note);
    if (!words.isEmpty()) {
        mainStore.execute(u"insert into gegubeizhu(dm,beizhu) values("_s + quoted(dm) + u',' +
                          quoted(words) + u")"_s);
    }
}

}  // namespace guanchao
