#include "collector/news_job.h"

#include "base/activity.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsJob::NewsJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
                 const QList<Service>& search, const Clock& clock)
    : stores_(stores), guanzhudu_(order.guanzhudu), writer_(stores.heat, order.day) {
    for (const Service& service : search) {
        searches_.push_back(newsSearch(order, settings, service, clock));
    }
    if (searches_.empty()) {
        throw OperationError(allOffWords(u"search"_s));
    }
}

std::unique_ptr<PageSource> NewsJob::source(HttpClient& http) const {
    QList<Service> services;
    for (const auto& it : searches_) {
        services << it->service();
    }
    return std::make_unique<WebPages>(http, services);
}

std::optional<QString> NewsJob::nextRequest(const Item& item, const Asked& asked) const {
    return search(asked).nextPath(wordsOf(item), asked.pages);
}

QString NewsJob::faultOf(const Item& item, const Asked& before, const QByteArray& page) const {
    return search(before).faultOf(wordsOf(item), before.pages.size(), page);
}

FoundNews NewsJob::found(const Item& item, const Asked& asked) const {
    return search(asked).find(wordsOf(item), asked.pages);
}

}  // namespace guanchao
