#include "collector/news_search.h"

#include "collector/headline_search.h"
#include "collector/page_search.h"

namespace guanchao {

std::unique_ptr<NewsSearch> newsSearch(const RunOrder& order, const CollectorSettings& settings,
                                       const Service& service, const Clock& clock) {
    if (service.kind == QStringLiteral("eastmoney")) {
        return std::make_unique<HeadlineSearch>(order, settings, service, clock);
    }
    return std::make_unique<PageSearch>(order, settings, service);
}

}  // namespace guanchao
