#include "articles/article_removal.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString articleCountWords(const QList<qint32>& articles) {
    return QString::number(articles.size()) + u" 篇文章"_s;
}

void removeArticle(Connection& store, qint32 id, Globals& globals) {
    Transaction transaction(store);
    store.execute(u"delete from wenzhang  where id="_s + QString::number(id));
    transaction.commit();
    if (globals.dangqianwenzhang == id) {
        globals.dangqianwenzhang = 0;
    }
}

void removeArticles(const StoreFile& file, const QList<qint32>& ids, Removals& removals,
                    const std::function<void()>& meanwhile) {
    const QString areListed = u" where id in (select id from temp.listed)"_s;
    Connection store = file.open();
    store.execute(u"create temp table listed (id integer primary key)"_s);
    Removal removal(removals, store, file);
    Transaction transaction(store);
    for (const qint32 id : ids) {
        store.execute(u"insert or ignore into temp.listed values("_s + QString::number(id) + u')');
    }
    removal.keep({u"wenzhang"_s, {}}, areListed);
    meanwhile();
    store.execute(u"delete from main.wenzhang"_s + areListed, meanwhile);
    meanwhile();
    transaction.commit();
    removal.complete(articleWindowPlace, articleCountWords(ids));
}

}  // namespace guanchao
