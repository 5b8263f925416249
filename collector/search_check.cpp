#include "collector/search_check.h"

#include <QFileInfo>
#include <memory>

#include "collector/news_search.h"
#include "heat/collector_contract.h"
#include "store/prepared_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// One page of one search.
QCoro::Task<Finding> askSearch(CheckDesk desk, Service service, RunOrder order,
                               CollectorSettings settings, std::stop_token stop) {
    const QString words = u"白酒"_s;
    const std::unique_ptr<NewsSearch> search = newsSearch(order, settings, service, desk.clock);
    const QString path = search->nextPath(words, {}).value_or(QString());
    const HttpReply reply = co_await desk.http.get(service, path, stop);
    if (!reply.answered()) {
        co_return Finding{false, failureWords(reply)};
    }
    const std::optional<Fault> fault = search->faultOf(words, 0, reply.body);
    if (fault) {
        desk.http.complain(service, fault->words);
        co_return Finding{false, fault->words};
    }
    const NewsCounts counts = search->find(words, {reply.body}).counts;
    co_return Finding{
        true, u"一日新闻 %1%2 个"_s.arg(counts.note.onexian ? u"≥"_s : QString()).arg(counts.one)};
}

QString searchPages(const StoreFile& heat, const Clock& clock) {
    return QFileInfo::exists(heat.path) ? readRunOrder(heat, clock).yinqingurl : publicSearchPages;
}

}  // namespace

Check searchCheck(const Services& services, const StoreFile& heat, const QString& applicationFolder,
                  const Clock& clock) {
    const RunOrder order = {.day = {}, .yinqingurl = searchPages(heat, clock)};
    const CollectorSettings settings = readCollectorSettings(applicationFolder + u"caijiqi.ini"_s);
    QList<Service> sites;
    for (const Service& it : services.search) {
        sites << newsSearch(order, settings, it, clock)->service();
    }
    return {u"search"_s, {}, sites, [=](CheckDesk desk, Service it, std::stop_token stop) {
                return askSearch(desk, it, order, settings, stop);
            }};
}

}  // namespace guanchao
