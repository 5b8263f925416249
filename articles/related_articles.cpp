#include "articles/related_articles.h"

#include "store/recordset.h"
#include "store/store_error.h"
#include "store/values.h"

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
    const auto same = [&](const QString& column, const QString& box) {
        return lines(store, column + u"='"_s + trimBlanks(box) + u"'"_s, id,
                     u"  order by cishu desc limit 200"_s);
    };
    return {lines(store, u"date(rq)='"_s + dateText(packDate(fields.date)) + u"'"_s, id,
                  u" order by cishu desc limit 200"_s),
            same(u"zuozhe"_s, fields.author), same(u"dalei"_s, fields.category),
            same(u"xiaolei"_s, fields.subcategory)};
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
