#include "collector/commodities_job.h"

#include "base/values.h"
#include "heat/url_encode.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

double score(const WordCounts& counts, const ScoreWeights& weights) {
    return counts.zhangzi * weights.zhangzi + counts.shengzi * weights.shengzi +
           counts.dazhang * weights.dazhang + counts.baozhang * weights.baozhang +
           counts.diezi * weights.diezi + counts.jiangzi * weights.jiangzi +
           counts.dadie * weights.dadie + counts.baodie * weights.baodie;
}

// Those within longer words count too.
WordCounts countWords(const QString& text, const ScoreWeights& weights) {
    const auto count = [&](const QString& word) { return static_cast<int>(text.count(word)); };
    WordCounts counts;
    counts.zhangzi = count(u"涨"_s);
    counts.shengzi = count(u"升"_s);
    counts.dazhang = count(u"大涨"_s);
    counts.baozhang = count(u"暴涨"_s);
    counts.diezi = count(u"跌"_s);
    counts.jiangzi = count(u"降"_s);
    counts.dadie = count(u"大跌"_s);
    counts.baodie = count(u"暴跌"_s);
    counts.zongfen = score(counts, weights);
    return counts;
}

}  // namespace

CommoditiesJob::CommoditiesJob(const Stores& stores, const RunOrder& order,
                               const CollectorSettings& settings, const QList<Service>& search,
                               const Clock& clock)
    : NewsJob(stores, order, settings, search, clock),
      shopguanzhudu_(order.shopguanzhudu),
      weights_(settings.weights) {}

QList<Item> CommoditiesJob::items() const {
    Connection connection = stores_.heat.open();
    QList<Item> items;
    for (Recordset commodities(connection, u"select shopname from shopname where guanzhudu>"_s +
                                               numberText(shopguanzhudu_) +
                                               u" order by guanzhudu desc,shopname"_s);
         !commodities.atEnd(); commodities.moveNext()) {
        const QString name = commodities.value(0).toText();
        items << Item{name, name};
    }
    lookUp(items, u"shophq"_s, u"shopname"_s);
    return items;
}

std::optional<QString> CommoditiesJob::nextRequest(const Item& item, const Asked& asked) const {
    return asked.pages.isEmpty() ? std::optional(search(asked).firstPath(wordsOf(item)))
                                 : std::nullopt;
}

QString CommoditiesJob::wordsOf(const Item& item) const {
    return withoutMarks(item.key) + u" 价格"_s;
}

void CommoditiesJob::write(const Item& item, const Asked& asked) {
    const NewsSearch& asker = search(asked);
    const QString text = asker.textOf(wordsOf(item), asked.pages.first());
    writer_.writeCommodity(item.key, countWords(text, weights_), asker.laiyuan());
}

}  // namespace guanchao
