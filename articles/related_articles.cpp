#include "articles/related_articles.h"

#include <cmath>
#include <limits>

#include "base/values.h"
#include "store/recordset.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines(Connection& store, const QString& condition, qint32 id, const QString& order) {
    QStringList texts;
    for (Recordset rows(store, u"select id,biaoti FROM wenzhang where "_s + condition +
                                   u" and id<>"_s + QString::number(id) + order);
         !rows.atEnd(); rows.moveNext()) {
        texts << rows.value(u"id").toText() + u"  "_s + rows.value(u"biaoti").toText();
    }
    return texts;
}

}  // namespace

RelatedArticles readRelatedArticles(Connection& store, const ArticleFields& fields, qint32 id) {
    RelatedArticles related;
    const auto read = [&](const QString& name, const QString& condition, const QString& order) {
        const Activity activity(u"读取"_s + name, u"文章照常可以阅读和修改。"_s);
        try {
            return lines(store, condition, id, order);
        } catch (const StoreError&) {
            if (!related.failure) {
                related.failure = std::current_exception();
            }
            return QStringList();
        }
    };
    // Of articles that are read as often the newest comes first, but on one day the oldest.
    const auto same = [&](const QString& name, const QString& column, const QString& box) {
        return read(name, column + u"="_s + quoted(trimBlanks(box)),
                    u"  order by cishu desc,id desc limit 200"_s);
    };
    related.sameDay = read(u"同日文章"_s, u"date(rq)="_s + quoted(dateText(packDate(fields.date))),
                           u" order by cishu desc,id limit 200"_s);
    related.sameAuthor = same(u"同作者文章"_s, u"zuozhe"_s, fields.author);
    related.sameCategory = same(u"同大类文章"_s, u"dalei"_s, fields.category);
    related.sameSubcategory = same(u"同小类文章"_s, u"xiaolei"_s, fields.subcategory);
    return related;
}

qint32 idOfLine(const QString& line) {
    const QString head = trimBlanks(line).section(u' ', 0, 0);
    const double id = roundToWhole(numericPrefix(head));
    if (!readsAsNumber(head) || std::abs(id) > std::numeric_limits<qint32>::max()) {
        throw OperationError(u"“"_s + head + u"”不是文章的编号。"_s);
    }
    return static_cast<qint32>(id);
}

}  // namespace guanchao
