#include "research/indexed_copies.h"

#include <utility>

#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dayTerm = u"date(shijian)"_s;

}  // namespace

IndexedCopies::IndexedCopies(Connection& history, std::function<void()> meanwhile)
    : history_(history), meanwhile_(std::move(meanwhile)) {
    // The copies may be larger than the memory; the library would hold them there.
    history.execute(u"pragma temp_store=file"_s);
    coveredByDay_ = tablesIndexedBy(dayTerm);
}

QSet<QString> IndexedCopies::tablesIndexedBy(const QString& term) const {
    QSet<QString> tables;
    Recordset index(history_,
                    u"select tbl_name from sqlite_master where type='index' and"
                    u" replace(sql,' ','') like "_s +
                        quoted(u"%("_s + term + u'%'));
    for (; !index.atEnd(); index.moveNext()) {
        tables.insert(index.value(0).toText());
    }
    return tables;
}

void IndexedCopies::coverByDay(const QString& table, const QString& columns,
                               const QString& condition) {
    if (coveredByDay_.contains(table)) {
        return;
    }
    copy(table, columns, condition);
    index(table, u"day"_s, dayTerm);
    coveredByDay_.insert(table);
}

void IndexedCopies::coverMemberships() {
    const QString table = u"dzhzhuti"_s;
    if (tablesIndexedBy(u"dm"_s).contains(table) &&
        tablesIndexedBy(u"zhutiname"_s).contains(table)) {
        return;
    }
    copy(table, u"zhutiname,dm"_s, u"1"_s);
    index(table, u"code"_s, u"dm,zhutiname"_s);
    index(table, u"theme"_s, u"zhutiname"_s);
}

void IndexedCopies::copy(const QString& table, const QString& columns, const QString& condition) {
    meanwhile_();
    history_.execute(u"create temp table "_s + quotedName(table) + u" as select "_s + columns +
                         u" from main."_s + quotedName(table) + u" where "_s + condition,
                     meanwhile_);
}

void IndexedCopies::index(const QString& table, const QString& name, const QString& terms) {
    history_.execute(u"create index temp."_s + quotedName(table + u'_' + name) + u" on "_s +
                         quotedName(table) + u"("_s + terms + u")"_s,
                     meanwhile_);
}

}  // namespace guanchao
