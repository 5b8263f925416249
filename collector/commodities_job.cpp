#include "collector/commodities_job.h"

#include "base/values.h"
#include "collector/search_page.h"
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

WordCounts countWords(const SearchPage& page, const ScoreWeights& weights) {
    WordCounts counts;
    counts.zhangzi = page.count(u"涨"_s);
    counts.shengzi = page.count(u"升"_s);
    counts.dazhang = page.count(u"大涨"_s);
    counts.baozhang = page.count(u"暴涨"_s);
    counts.diezi = page.count(u"跌"_s);
    counts.jiangzi = page.count(u"降"_s);
    counts.dadie = page.count(u"大跌"_s);
    counts.baodie = page.count(u"暴跌"_s);
    counts.zongfen = score(counts, weights);
    return counts;
}

}  // namespace

CommoditiesJob::CommoditiesJob(const Stores& stores, const RunOrder& order,
                               const CollectorSettings& settings, const Service& search)
    : stores_(stores),
      shopguanzhudu_(order.shopguanzhudu),
      settings_(settings),
      address_(order.yinqingurl, search, settings.timeoutSeconds),
      writer_(stores.heat, order.day) {}

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
    return items;
}

// Without a limit in time: the very page that the window of the commodities opens.
std::optional<QString> CommoditiesJob::nextRequest(const Item& item, const Asked& asked) const {
    return asked.pages.isEmpty() ? std::optional(address_.path(withoutMarks(item.key) + u" 价格"_s,
                                                               settings_.allPeriod))
                                 : std::nullopt;
}

QString CommoditiesJob::faultOf(const Item&, const Asked&, const QByteArray& page) const {
    return SearchPage(page).results(settings_) ? QString() : nothingFound;
}

void CommoditiesJob::write(const Item& item, const Asked& asked) {
    const SearchPage page(asked.pages.first());
    writer_.writeCommodity(item.key, countWords(page, settings_.weights));
}

}  // namespace guanchao
