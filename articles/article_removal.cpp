#include "articles/article_removal.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void removeArticle(Connection& store, qint32 id, Globals& globals) {
    Transaction transaction(store);
    store.execute(u"delete from wenzhang  where id="_s + QString::number(id));
    transaction.commit();
    if (globals.dangqianwenzhang == id) {
        globals.dangqianwenzhang = 0;
    }
}

}  // namespace guanchao
