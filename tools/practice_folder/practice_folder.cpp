#include "tools/practice_folder/practice_folder.h"

#include "base/values.h"
#include "formats/seed_list.h"
#include "store/bound_insert.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The place of the days ago in a row of each list; the row is kept with its day in their stead.
constexpr int newsDay = 3;
constexpr int wordsDay = 1;

QStringList withDay(QStringList row, int place, const QDateTime& now) {
    row[place] = timeText(now.addDays(-row[place].toInt()));
    return row;
}

bool hasCounts(Connection& store) {
    return !Recordset(store,
                      u"select 1 from xinwenshul union all select 1 from gongsixinwen"
                      u" union all select 1 from shophq limit 1"_s)
                .atEnd();
}

void fillNews(Connection& store, const QList<QStringList>& rows, const QDateTime& now) {
    BoundInsert themes(store, u"insert into xinwenshul values(?2,?1,?3,?4,?5,?6,?7,?8,?9,0)"_s);
    BoundInsert companies(store,
                          u"insert into gongsixinwen values(?3,?1,?2,?4,?5,?6,?7,?8,?9,?10)"_s);
    for (const QStringList& it : rows) {
        QStringList row = withDay(it, newsDay, now).mid(1);
        if (it.first() == u"gongsixinwen") {
            companies.row(row);
        } else {
            row.removeAt(1);
            themes.row(row);
        }
    }
}

void fillWords(Connection& store, const QList<QStringList>& rows, const QDateTime& now) {
    BoundInsert words(store, u"insert into shophq values(?,?,?,?,?,?,?,?,?,?,?,?)"_s);
    for (const QStringList& it : rows) {
        words.row(withDay(it, wordsDay, now));
    }
    for (const QString& column :
         {u"riqi"_s, u"zhangzi"_s, u"dazhang"_s, u"baozhang"_s, u"shengzi"_s, u"diezi"_s,
          u"dadie"_s, u"baodie"_s, u"jiangzi"_s, u"zongfen"_s, u"zhangfu"_s}) {
        store.execute(u"update shopname set "_s + column + u"=(select "_s + column +
                      u" from shophq where shophq.shopname=shopname.shopname order by riqi desc"
                      u" limit 1) where shopname in (select shopname from shophq)"_s);
    }
}

}  // namespace

void leadPagesTo(const QString& folder, const QString& host) {
    const Stores stores = storesIn(applicationFolder(folder));
    stores.main.open().execute(u"update tempcanshu set f10url="_s + quoted(host + u"/600000/"_s) +
                               u" where f10url="_s + quoted(publicF10Pages) +
                               u" or f10url like 'http://127.0.0.1:%'"_s);
    stores.heat.open().execute(u"update canshu set yinqingurl="_s +
                               quoted(host + u"/s?wd=tihuandm"_s) + u" where yinqingurl="_s +
                               quoted(publicSearchPages) +
                               u" or yinqingurl like 'http://127.0.0.1:%'"_s);
}

void fillPracticeCounts(const QString& folder, const QString& dataFolder, const QDateTime& now) {
    Connection store = storesIn(applicationFolder(folder)).heat.open();
    if (hasCounts(store)) {
        return;
    }
    Transaction transaction(store);
    fillNews(store, readSeedList(dataFolder + u"/practice_news.csv"_s, 11), now);
    fillWords(store, readSeedList(dataFolder + u"/practice_words.csv"_s, 12), now);
    transaction.commit();
}

}  // namespace guanchao
