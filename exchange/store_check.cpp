#include "exchange/store_check.h"

#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

qint64 number(Connection& store, const QString& query) {
    return Recordset(store, query).value(0).toInteger();
}

}  // namespace

QString StoreCounts::words() const {
    return u"%1 个主题，%2 条，%3 只股票，%4 篇文章，%5 个监控"_s.arg(themes)
        .arg(memberships)
        .arg(stocks)
        .arg(articles)
        .arg(monitors);
}

void requireWhole(const StoreFile& store) {
    Connection connection = store.open();
    const QString check = u"pragma quick_check(1)"_s;
    const QString result = Recordset(connection, check).value(0).toText();
    if (result != u"ok"_s) {
        throw StoreError(result, store.path, check, StoreFault::damaged);
    }
}

StoreCounts readCounts(const Stores& stores) {
    StoreCounts counts;
    Connection main = stores.main.open();
    counts.themes = number(main, u"select count(distinct zhutiname) from dzhzhuti"_s);
    counts.memberships = number(main, u"select count(*) from dzhzhuti"_s);
    counts.stocks = number(main, u"select count(*) from dmb"_s);
    counts.monitors = number(main,
                             u"select (select count(*) from zhutijiankong)+"
                             u"(select count(*) from gegujiankong)"_s);
    Connection article = stores.article.open();
    counts.articles = number(article, u"select count(*) from wenzhang"_s);
    return counts;
}

}  // namespace guanchao
