#include "articles/article_lists.h"

#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList firstColumn(Connection& store, const QString& query) {
    QStringList texts;
    for (Recordset rows(store, query); !rows.atEnd(); rows.moveNext()) {
        texts << rows.value(0).toText();
    }
    return texts;
}

}  // namespace

ArticleLists readArticleLists(Connection& store) {
    return {firstColumn(store, u"select distinct dalei FROM wenzhang"_s),
            firstColumn(store, u"select distinct xiaolei FROM wenzhang"_s),
            firstColumn(store, u"select distinct zuozhe FROM wenzhang order by id asc"_s)};
}

QStringList subcategoriesOf(const Stores& stores, const QString& category) {
    const Activity activity(u"读取小类"_s);
    Connection store = stores.article.open();
    return firstColumn(store, u"select distinct xiaolei FROM wenzhang where dalei="_s +
                                  quoted(trimBlanks(category)));
}

}  // namespace guanchao
