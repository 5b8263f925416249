#include "collector/search_check.h"

#include <optional>

#include "collector/news_search.h"
#include "collector/search_page.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

Finding tellResults(const HttpReply& reply, const CollectorSettings& settings) {
    if (!reply.answered()) {
        return {false, failureWords(reply)};
    }
    const std::optional<qint64> results = SearchPage(reply.body).results(settings);
    return results ? Finding{true, u"相关结果 %1 个"_s.arg(*results)}
                   : Finding{false, u"网页里没有结果的数目"_s};
}

QCoro::Task<Finding> askPage(CheckDesk desk, Service service, QString path,
                             CollectorSettings settings, std::stop_token stop) {
    const HttpReply reply = co_await desk.http.get(service, path, stop);
    co_return tellResults(reply, settings);
}

}  // namespace

Check searchCheck(const Service& search, const QString& pages, const CollectorSettings& settings) {
    const RunOrder order = {.day = {}, .yinqingurl = pages};
    const NewsSearch news(order, settings, search);
    Service site = news.service();
    site.purpose = u"search"_s;
    const QString path = news.paths(u"白酒"_s).first();
    return {u"search"_s, {}, {site}, [=](CheckDesk desk, Service it, std::stop_token stop) {
                return askPage(desk, it, path, settings, stop);
            }};
}

}  // namespace guanchao
