#include "articles/article_query.h"

#include <algorithm>
#include <limits>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostOfAll = 1000;

const QString columns =
    u"select id,date(rq) as 日期,zuozhe as 作者,dalei as 大类,"
    u"xiaolei as 小类,biaoti as 标题  FROM wenzhang "_s;

QString equals(const QString& column, const QString& box) {
    const QString text = trimBlanks(box);
    return text.isEmpty() ? QString() : u" and "_s + column + u"="_s + quoted(text);
}

QString contains(const QString& column, const QString& box) {
    const QString text = trimBlanks(box);
    return text.isEmpty() ? QString()
                          : u" and "_s + column + u" like "_s + quoted(u'%' + text + u'%');
}

}  // namespace

QString ArticleQuery::statement() const {
    return columns + range() + u" order by date(rq) desc,id desc "_s +
           (all ? u" limit "_s + QString::number(mostOfAll) : limitClause());
}

QString ArticleQuery::countStatement() const {
    return u"select count(*) from wenzhang "_s + range();
}

// The store lists all below a limit under zero.
bool ArticleQuery::leavesOff(qint64 listed) const {
    return most() && *most() >= 0 && static_cast<double>(listed) >= *most();
}

QString ArticleQuery::range() const {
    return all ? QString() : u"where "_s + condition();
}

QString ArticleQuery::condition() const {
    QString words = u" date(rq)>="_s + quoted(dateText(packDate(first))) + u" and date(rq)<="_s +
                    quoted(dateText(packDate(last)));
    words += equals(u"zuozhe"_s, author);
    words += equals(u"dalei"_s, category);
    words += equals(u"xiaolei"_s, subcategory);
    words += contains(u"biaoti"_s, titleWord);
    for (const QString& word : contentWords) {
        words += contains(u"leirong"_s, word);
    }
    return words;
}

QString ArticleQuery::limitClause() const {
    return most() ? u" limit "_s + numberText(*most()) + u" "_s : QString();
}

// The store takes whole numbers without an exponent; no library holds more articles.
std::optional<double> ArticleQuery::most() const {
    const QString text = trimBlanks(limit);
    if (all) {
        return mostOfAll;
    }
    if (text.isEmpty()) {
        return {};
    }
    using Range = std::numeric_limits<qint32>;
    return std::clamp<double>(roundToWhole(numericPrefix(text)), Range::min(), Range::max());
}

}  // namespace guanchao
